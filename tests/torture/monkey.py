"""A monkey at the keyboard, the mouse and the desktop: opens windows of the gallery and does at random what can be done.

Found is: a crash, a sanitizer's report, an assertion, a complaint of the toolkit, no answer for 1 s, a process without a
window, windows that cannot be closed, growth by 64 MB, what an audit finds. Each event is written to a file before it is
done. A failure is done again with fewer events, and the shortest file that still fails is kept.

usage: monkey.py GALLERY [--seed N] [--launches N | --minutes M] [--events N] [--found FOLDER] [--whole]
       monkey.py GALLERY --replay FILE... [--found FOLDER] [--whole]

--whole leaves out the search for the shortest sequence.
"""
import argparse
import collections
import json
import pathlib
import random
import subprocess
import sys
import tempfile
import time

sys.path.insert(0, str(pathlib.Path(__file__).parents[1] / "gallery"))
from desktop import Desktop  # noqa: E402
from events import PLAIN_DESKTOP, Doer, Maker, make_launch
from known import is_known
from patient import Patient, Trouble
from screen import Screen
from shrink import shrink

# What counts also when it does not happen again: the rest may come of a machine that is busy with other things.
CERTAIN = ("ended", "sanitizer")


class Monkey:
    def __init__(self, options):
        self.options = options
        self.found = pathlib.Path(options.found or tempfile.mkdtemp(prefix="monkey"))
        self.found.mkdir(parents=True, exist_ok=True)
        self.screen = Screen()
        self.doer = Doer(self.screen, Desktop(PLAIN_DESKTOP))
        self.patient = Patient(options.gallery, self.screen, is_known)
        if "asan" in options.gallery:  # it is several times as slow, and keeps what was freed
            self.patient.SLOW *= 8
            self.patient.ACTS *= 4
            self.patient.IDLE *= 8  # while leaks are looked for at its end, another task works
            self.patient.judges_memory = False
        self.counts = collections.Counter()
        self.failed = False

    def list_windows(self):
        self.patient.start({"language": "en"})
        self.patient.command("list")
        names = []

        def told():
            names.extend(line["value"] for line in self.patient.told() if line.get("name") == "windows")
            return names
        self.patient.wait(told, 20, "it does not list its windows")
        self.patient.stop()
        return names[0]

    def play(self, launch, events, ahead=None):
        """Trouble with these events, or None; and those that were done."""
        done = [launch]
        self.doer.reset()
        patient = self.patient
        log = self.found / "last.events"
        with open(log, "w", encoding="utf-8") as file:
            try:
                patient.start(launch[1])
                for event in events:
                    done.append(event)
                    print(json.dumps(event), file=file, flush=True)
                    self.doer.do(patient, event)
                    self.counts["events"] += 1
                    patient.follow(ahead)
                    if patient.ended():
                        break
                self.doer.let_go()
                patient.look()
                if not patient.ended():
                    patient.close()
            except Trouble as trouble:
                subprocess.run(["import", "-window", "root", self.found / "last.png"], check=False)
                return trouble, done
            finally:
                patient.stop()
        return None, done

    def made(self, rng, names):
        maker = Maker(rng, names)
        for _ in range(self.options.events):
            yield maker.make(len(self.screen.managed(self.patient.pid)))

    def found_trouble(self, trouble, done, name):
        """Keeps the shortest sequence that ends in the same."""
        launch, *events = done
        picture = self.found / "last.png"
        if picture.exists():
            picture.rename(self.found / f"{name}.png")

        def fails(part):
            # What came of the haste needs it, what came of each event alone needs the other.
            for ahead in (pace, Patient.AHEAD - pace):
                again, _ = self.play(launch, part, ahead)
                if again is not None and again.key() == trouble.key():
                    return True
            return False
        before, pace = self.counts["events"], Patient.AHEAD
        again = fails(events)
        short = shrink(events, fails) if again and not self.options.whole else events
        self.failed |= again or trouble.kind.startswith(CERTAIN)
        self.counts["events"] = before
        path = self.found / f"{name}.events"
        path.write_text("".join(json.dumps(event) + "\n" for event in [launch, *short]), "utf-8")
        (self.found / f"{name}.txt").write_text(str(trouble) + "\n", "utf-8")
        print(f"{path}: {len(short)} of {len(events)} events{'' if again else ', did not happen again'}: {str(trouble)[:300]}",
              flush=True)

    def run(self):
        options = self.options
        names = self.list_windows()
        begun, reported = time.monotonic(), time.monotonic()
        seen = collections.Counter()
        while self.counts["launches"] < options.launches:
            if options.minutes and time.monotonic() > begun + 60 * options.minutes:
                break
            rng = random.Random(f"{options.seed}/{self.counts['launches']}")
            trouble, done = self.play(make_launch(rng, names), self.made(rng, names))
            self.counts["launches"] += 1
            if trouble:
                self.counts["findings"] += 1
                seen[trouble.key()] += 1
                if seen[trouble.key()] <= 2:
                    self.found_trouble(trouble, done, f"{options.seed}-{self.counts['launches']}")
            if time.monotonic() > reported + 60:
                reported = time.monotonic()
                self.report(reported - begun)
        self.report(time.monotonic() - begun)
        for (kind, said), count in seen.items():
            print(f"  {count} times: {kind} {said}")
        return 1 if self.failed else 0

    def report(self, seconds):
        events = self.counts["events"]
        print(f"{self.counts['launches']} launches, {events} events ({events / seconds:.0f} a second), "
              f"{self.counts['findings']} with trouble", flush=True)

    def replay(self):
        failed = 0
        for file in self.options.replay:
            launch, *events = [json.loads(line) for line in open(file, encoding="utf-8")]
            for ahead in (0, Patient.AHEAD, 0, Patient.AHEAD):
                trouble, _ = self.play(launch, events, ahead)
                if trouble:
                    break
            print(f"{file}: {trouble or 'nothing found'}")
            if trouble and not self.options.whole:
                self.found_trouble(trouble, [launch, *events], pathlib.Path(file).stem)
            failed += trouble is not None
        return 1 if failed else 0


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("gallery")
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("--launches", type=int, default=1 << 30)
    parser.add_argument("--minutes", type=float)
    parser.add_argument("--events", type=int, default=3000, help="in one launch, at most")
    parser.add_argument("--found", help="the folder for what is found")
    parser.add_argument("--whole", action="store_true", help="do not look for the shortest sequence")
    parser.add_argument("--replay", nargs="+", metavar="FILE")
    monkey = Monkey(parser.parse_args())
    try:
        return monkey.replay() if monkey.options.replay else monkey.run()
    finally:
        monkey.doer.end()


if __name__ == "__main__":
    sys.exit(main())
