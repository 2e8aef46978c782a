"""Compares what a screen reader says of the gallery with transcripts, on the display that is there.

usage: test_speech.py GALLERY [--write] JOURNEY...

A journey is a text file:

    # why
    open --show dlg.clipboard --data '{"text": "abc"}'
    opened: Copy a text dialog. | abc
    Tab: Wrap long lines check box checked.
    type two words:

"open" starts the gallery with these options; "type" types a text; any other step is a key as xdotool names it. Behind
the colon stands what is said, a bar between utterances; lines that begin with a space continue it. What is broken off
before anybody could hear it is left out. A step ends once every process on the display has slept for a while. --write
writes down what is said now, to be reviewed.
"""
import json
import os
import pathlib
import re
import shlex
import subprocess
import sys
import tempfile
import textwrap
import time

HERE = pathlib.Path(__file__).parent
sys.path.insert(0, str(HERE.parent / "gallery"))
from driver import Gallery  # noqa: E402

PATIENCE = 30  # seconds
REST = 0.35  # seconds; beyond the longest of the timers that a key may start
HOME = os.environ["HOME"]  # with_display.sh makes one for everything on its display


def threads():
    """The folders in /proc of all threads on the display but ours."""
    mark = f"\0HOME={HOME}\0".encode()
    for folder in pathlib.Path("/proc").glob("[0-9]*"):
        try:
            if int(folder.name) != os.getpid() and mark in b"\0" + (folder / "environ").read_bytes():
                yield from (folder / "task").iterdir()
        except OSError:
            pass  # another user's, or gone


def steps_done():
    """How often each thread has gone to sleep; and the names of those that have not."""
    done, awake = {}, []
    for thread in threads():
        try:
            status = dict(re.findall(r"^(\w+):\t(.*)$", (thread / "status").read_text(), re.MULTILINE))
        except OSError:
            continue
        if status["Name"] != "Xvfb":  # which looks around now and then
            done[thread] = status["voluntary_ctxt_switches"], status["nonvoluntary_ctxt_switches"]
        if status["State"][0] not in "SZ":
            awake.append(status["Name"])
    return done, awake


def wait_until_all_sleep():
    """Messages on their way keep their receiver awake: when no thread ran for a while, nothing is left to be done."""
    end = time.monotonic() + PATIENCE
    before, awake = steps_done()
    while time.monotonic() < end:
        time.sleep(REST)
        now, awake = steps_done()
        if now == before and not awake:
            return
        awake = awake or [(thread / "comm").read_text().strip() for thread in now if now[thread] != before.get(thread)]
        before = now
    raise AssertionError(f"no rest: {awake}")


class Reader:
    def __init__(self):
        with open(HOME + "/reader.log", "w", encoding="utf-8") as log:
            self.process = subprocess.Popen([sys.executable, "-B", HERE / "voice.py"], stdout=subprocess.PIPE,
                                            stderr=log)
        os.set_blocking(self.process.stdout.fileno(), False)
        self.wait_until_said()  # its greeting

    def said(self):
        """What was said since the last call."""
        heard = []
        for line in (self.process.stdout.read() or b"").decode().splitlines():
            text = json.loads(line)
            if text is None:
                heard.clear()
            elif text.strip():
                heard.append(" ".join(text.replace(HOME, "$HOME").split()))
        return heard

    def wait_until_said(self):
        end = time.monotonic() + PATIENCE
        heard = []
        while not heard and time.monotonic() < end:
            time.sleep(0.02)
            heard = self.said()
            if self.process.poll() is not None:
                raise AssertionError("no reader: " + pathlib.Path(HOME + "/reader.log").read_text(encoding="utf-8"))
        wait_until_all_sleep()
        return heard + self.said()

    def end(self):
        self.process.kill()
        self.process.wait()


def opening(reader):
    """What is said from the window's title on. Whether a field is heard to be filled before its window is active
    depends on how early the reader found the program, as does whether it ends the title like a sentence."""
    said = reader.wait_until_said()
    title = subprocess.run(["xdotool", "getactivewindow", "getwindowname"], capture_output=True, text=True).stdout
    at = next((i for i, text in enumerate(said) if title.strip() in text), 0)
    return [text if i or text.endswith(".") else text + "." for i, text in enumerate(said[at:])]


def take(step, reader, gallery):
    """What is said of a step."""
    if step == "opened":
        return opening(reader)
    gallery.wait_for_focus()
    if step.startswith("type "):
        gallery.type(step[5:])
    elif step == "ctrl+a":
        # The reader looks at the last key to tell why a selection changed: if it was slow to look, that would be Ctrl.
        subprocess.run(["xdotool", "keydown", step], check=True)
        wait_until_all_sleep()
        subprocess.run(["xdotool", "keyup", step], check=True)
    else:
        gallery.press(step)
    wait_until_all_sleep()
    if gallery.process.poll() not in (None, 0):
        raise AssertionError(f"{step}: the gallery ended with {gallery.process.poll()}")
    return reader.said()


def parse(text):
    """The lines, each a list of the step and what is said; None for what is no step."""
    lines = []
    for line in text.splitlines():
        if line[:1].isspace() and line.strip():
            lines[-1][1] += " " + line.strip()
        elif re.match(r"#|open\b|\s*$", line):
            lines.append([line, None])
        else:
            step, _, said = line.partition(":")
            lines.append([step, said.strip()])
    return lines


def written(step, said):
    """A line or more of a journey."""
    if said is None:
        return step
    return "\n".join(textwrap.wrap(f"{step}: {said}", 118, subsequent_indent="    ", break_long_words=False,
                                   break_on_hyphens=False)) if said else step + ":"


def run(journey, reader, write):
    """Whether all was said as it is written."""
    lines = parse(journey.read_text(encoding="utf-8"))
    gallery, transcript, differs = None, [], False

    def end():
        if gallery:
            gallery.process.terminate()
            gallery.end()
            wait_until_all_sleep()
            reader.said()

    try:
        for number, (step, expected) in enumerate(lines):
            if re.match(r"open\b", step):
                end()
                arguments = [each.replace("$HOME", HOME) for each in shlex.split(step)[1:]]
                folder = tempfile.mkdtemp(dir=HOME)
                gallery = Gallery("--language", "en", "--config-dir", folder, *arguments, seconds=280)
                gallery.expect("opened")
            if expected is None:
                transcript.append(step)
                continue
            said = " | ".join(take(step, reader, gallery))
            lines[number][1] = said
            if said != expected and not differs and not write:
                differs = True
                transcript.append(">>> " + written(step, expected) + "    <-- expected")
            transcript.append(written(step, said))
    except AssertionError as error:
        differs = True
        transcript.append(f">>> {error}")
    finally:
        end()
    if differs:
        print(f"{journey.name}:", *transcript, sep="\n", flush=True)
    elif write:
        journey.write_text("\n".join(written(*line) for line in lines) + "\n", encoding="utf-8")
    return not differs


def main():
    arguments = [each for each in sys.argv[1:] if each != "--write"]
    if len(arguments) < 2:
        sys.exit(__doc__)
    Gallery.BINARY = arguments[0]
    reader = Reader()
    try:
        good = [run(pathlib.Path(name), reader, "--write" in sys.argv) for name in arguments[1:]]
    finally:
        reader.end()
    sys.exit(0 if all(good) else 1)


if __name__ == "__main__":
    main()
