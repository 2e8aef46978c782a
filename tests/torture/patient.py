"""The gallery that the monkey plays with: started, asked, looked at; what is wrong with it is raised as Trouble."""
import collections
import json
import os
import pathlib
import re
import resource
import shutil
import signal
import subprocess
import tempfile
import time

# What the toolkit prints about a machine, not about a window.
MACHINE = re.compile(r"dconf|accessibility bus|AT-SPI|portal|Unable to init|GVFS|org\.freedesktop\.Notifications")
SANITIZER = re.compile(r"Sanitizer|runtime error:")
# As the toolkit writes them; what the windows show is repeated in their own notes.
COMPLAINT = re.compile(SANITIZER.pattern + r"|CRITICAL|WARNING|[Aa]ssert|ASSERT|ERROR.*toolkit|\w:ERROR:")
CALLER = "  from "  # begins what libcomplaint_stacks.so adds to a complaint
TICKS = os.sysconf("SC_CLK_TCK")

# As in test.sh, and with a stack where the toolkit ends the program by itself.
SANITIZERS = {"G_SLICE": "always-malloc", "UBSAN_OPTIONS": "print_stacktrace=1",
              "ASAN_OPTIONS": "detect_leaks=1:malloc_context_size=3:quarantine_size_mb=32:verify_asan_link_order=0:handle_abort=1",
              "LSAN_OPTIONS": f"suppressions={pathlib.Path(__file__).parents[1]}/leaks.supp:print_suppressions=0"}


def keep_cores():
    resource.setrlimit(resource.RLIMIT_CORE, (resource.RLIM_INFINITY, resource.RLIM_INFINITY))


class Trouble(Exception):
    """What was found: of which kind, and what was said about it."""

    def __init__(self, kind, *said):
        super().__init__("\n    ".join([kind, *said]))
        self.kind, self.said = kind, said

    def key(self):
        """The same for what is most likely the same fault."""
        tells = self.kind in ("complaint", "sanitizer", "audit") or self.kind.startswith("ended")
        return self.kind, re.sub(r"0x[0-9a-f]+|\d+", "N", self.said[0] if tells and self.said else "")


class Patient:
    SLOW = 1.0  # seconds of the GUI thread's work until an answer
    IDLE = 4.0  # seconds, in which it sleeps, until an answer
    BUSY_MACHINE = 60.0  # seconds until one, whatever the machine does
    ACTS = 0.4  # seconds until a button that was pressed by a key has acted: the toolkit shows it pressed for 0.25 s
    AHEAD = 24  # events that are done before the first of them has its answer
    GROWTH = 64 << 20
    judges_memory = True

    def __init__(self, binary, screen, known):
        self.binary, self.screen, self.known = os.path.abspath(binary), screen, known
        stacks = pathlib.Path(self.binary).parents[1] / "tests/torture/libcomplaint_stacks.so"
        self.preloads = {"LD_PRELOAD": str(stacks)} if stacks.exists() else {}

    def start(self, launch):
        self.folder = tempfile.TemporaryDirectory()
        self.said_file = open(self.folder.name + "/said", "w+b")
        self.told_file = open(self.folder.name + "/told", "w+b")
        self.said_to = self.told_to = 0
        options = ["--commands", "--config-dir", self.folder.name + "/config"]
        for name, value in launch.items():
            options += ["--" + name, value] if value else []
        programs = self.folder.name + "/bin"  # what a wild click starts must not be somebody's browser or editor
        os.mkdir(programs)
        for name in ("geany", "xdg-open", "code"):
            os.symlink("/bin/true", f"{programs}/{name}")
        self.process = subprocess.Popen([self.binary, *options], stdin=subprocess.PIPE, stdout=self.told_file,
                                        stderr=self.said_file, cwd=self.folder.name, preexec_fn=keep_cores,
                                        env={**self.preloads, **os.environ, **SANITIZERS, "PATH": programs, "HOME": self.folder.name})
        self.pid = self.process.pid
        self.asked = self.screen.answered
        self.screen.forget()
        self.warm = None
        self.homes = 0
        self.wait(lambda: self.screen.windows(self.pid), 60, "no window appeared")

    def stop(self):
        if self.process.poll() is None:
            self.process.send_signal(signal.SIGKILL)
        self.process.wait()
        self.process.stdin.close()
        self.said_file.close()
        self.told_file.close()
        self.folder.cleanup()

    def ended(self):
        return self.process.poll() is not None

    def wait(self, condition, seconds, otherwise):
        end = time.monotonic() + seconds
        while not condition():
            if self.ended():
                return
            if time.monotonic() > end:
                raise Trouble(otherwise)
            time.sleep(0.01)

    def command(self, line):
        try:
            os.write(self.process.stdin.fileno(), (line + "\n").encode())
        except BrokenPipeError:
            pass

    def told(self):
        """The lines of JSON since the last call."""
        text = os.pread(self.told_file.fileno(), 1 << 26, self.told_to)
        text = text[:text.rfind(b"\n") + 1]
        self.told_to += len(text)
        return [json.loads(line) for line in text.splitlines()]

    # How it is

    def work(self):
        """Seconds that the GUI thread has worked."""
        try:
            with open(f"/proc/{self.pid}/task/{self.pid}/stat", encoding="utf-8") as file:
                fields = file.read().rpartition(")")[2].split()
            return (int(fields[11]) + int(fields[12])) / TICKS
        except (OSError, IndexError):
            return 0.0

    def memory(self):
        with open(f"/proc/{self.pid}/statm", encoding="utf-8") as file:
            return int(file.read().split()[1]) * os.sysconf("SC_PAGE_SIZE")

    def largest(self):
        """The parts of its memory that take most of it."""
        parts = []
        with open(f"/proc/{self.pid}/smaps", encoding="utf-8") as file:
            for line in file:
                if re.match(r"[0-9a-f]+-", line):
                    name = line.rstrip()
                elif line.startswith("Rss:"):
                    parts.append((int(line.split()[1]), name))
        return [f"{size} kB {name}" for size, name in sorted(parts, reverse=True)[:12]]

    def look(self):
        """At what it has printed, and whether it crashed."""
        size = os.fstat(self.said_file.fileno()).st_size
        code = self.process.poll()
        if size > self.said_to or code:
            if b"Sanitizer" in os.pread(self.said_file.fileno(), size - self.said_to, self.said_to):
                self.process.wait(60)  # the report is long, and its last word
                size = os.fstat(self.said_file.fileno()).st_size
            said = os.pread(self.said_file.fileno(), size - self.said_to, self.said_to)
            said = said if code else said[:said.rfind(b"\n") + 1]
            self.said_to += len(said)
            text = said.decode("utf-8", "replace")
            text = re.sub(r"\((\S+):\d+\): (.*) \*\*: [\d:.]+:", r"\2:", text)  # without who and when
            lines, keeps = [], False
            for line in text.splitlines():
                if not line.startswith(CALLER):
                    keeps = line and not MACHINE.search(line) and not self.known(line)
                if keeps:
                    lines.append(line)
            first = next((at for at, line in enumerate(lines) if COMPLAINT.search(line) and not line.startswith(CALLER)), None)
            if first is not None:
                said = list(dict.fromkeys(lines[first:first + 100]))
                if any(map(SANITIZER.search, said)):
                    raise Trouble("sanitizer", *said)
                if not code:
                    raise Trouble("complaint", *said)
        if code:
            last_words = os.pread(self.said_file.fileno(), 4096, max(0, size - 4096)).decode("utf-8", "replace")
            raise Trouble(f"ended with {code}", *self.stack(), *last_words.splitlines()[-20:])

    def stack(self):
        """The functions that it crashed in, or is in, where a debugger is installed."""
        cores = [f"{self.folder.name}/{name}" for name in os.listdir(self.folder.name) if name.startswith("core")]
        if not shutil.which("gdb") or not cores and self.ended():
            return []
        what = [self.binary, cores[0]] if cores else ["-p", str(self.pid)]
        # Where nobody has all keys and clicks, the toolkit would complain of the questions.
        grab = "set $grab = ((void*(*)())gtk_grab_get_current)()"
        kind = '$grab ? ((char*(*)(void*))g_type_name_from_instance)($grab) : "the focus"'
        window = '$grab ? ((char*(*)(void*))gtk_window_get_title)(((void*(*)(void*))gtk_widget_get_toplevel)($grab)) : "any"'
        said = subprocess.run(["gdb", "-batch", "-ex", "bt 60", "-ex", grab, "-ex", f'printf "#60 keys and clicks go to %s\\n", {kind}',
                               "-ex", f'printf "#60 of %s\\n", {window}', *what],
                              capture_output=True, text=True).stdout
        return re.findall(r"^#\d+ +(?:0x\w+ in )?(.*)", said, re.MULTILINE)

    def who_is_there(self, windows):
        focus = getattr(self.screen.display.get_input_focus().focus, "id", 0)
        return [f"the focus has {focus:x}", *(f"{window.id:x}: {self.screen.title(window)}" for window, _ in windows)]

    def follow(self, ahead=None):
        """Asks for a sign of life, and waits until all but the last questions have been answered."""
        ahead = self.AHEAD if ahead is None else ahead
        self.asked += 1
        asked = self.ask()
        answered, since, repeated, work = self.screen.answered, time.monotonic(), 0, self.work()
        patience = self.IDLE
        while self.asked - self.screen.answered > ahead and not self.ended():
            self.look()
            self.screen.listen()
            if self.screen.answered > answered:
                answered, since, repeated, work = self.screen.answered, time.monotonic(), 0, self.work()
                patience = self.IDLE
                continue
            time.sleep(0.001)
            worked, waited = self.work() - work, time.monotonic() - since
            if waited > 0.3 * (repeated + 1):
                repeated += 1
                self.screen.changed = True
            if self.screen.changed:  # the window that was asked may have gone
                asked = self.ask()
            if worked > self.SLOW:
                stack = self.stack()
                if not any(map(self.known, stack)):
                    raise Trouble("no answer for 1 s", *stack)
                since, repeated, work = time.monotonic(), 0, self.work()
            if waited > patience and worked < 0.1 * waited or waited > self.BUSY_MACHINE:
                stack = self.stack()
                if waited > self.BUSY_MACHINE or not any(map(self.known, stack)):
                    raise Trouble("no answer while it sleeps" if asked else "it runs and shows no window", *stack)
                patience = waited + self.IDLE
        self.look()

    def ask(self):
        windows = self.screen.managed(self.pid)
        for window in windows[:1]:
            self.screen.ping(window, self.asked)
        if self.asked % 16 == 0:
            self.screen.give_focus(windows)
        return bool(windows)

    def rest(self):
        """True once it sleeps and has for a while; false when it does not come to that."""
        quiet, used = 0, None
        for _ in range(100):
            time.sleep(0.02)
            before, used = used, self.work()
            quiet = quiet + 1 if used == before else 0
            if quiet == 10:
                return True
        return False

    # What is done between the events

    def attempts(self):
        """(how often, the windows), until that is too often: fewer than before must come, or more than ever.

        What was to be opened while there was always another key to answer comes once there is none: dozens of windows.
        """
        attempt, least, most = 0, 0, -1
        while attempt < 119:
            self.screen.changed = True
            windows = self.screen.windows(self.pid)
            attempt += 1
            if not least <= len(windows) <= most:
                attempt, least, most = 1, len(windows), max(most, len(windows))
            yield attempt, windows

    def go_home(self):
        """Closes all but one window; then it must not have grown."""
        tried = collections.deque(maxlen=24)
        for attempt, windows in self.attempts():
            managed = [window for window, is_managed in windows if is_managed]
            tried.append(f"{attempt}: {[self.screen.title(window) for window, _ in windows]}")
            # A tool tip stays where the pointer is; a menu has gone by then.
            if self.ended() or len(managed) <= 1 and (len(windows) <= 1 or attempt > 20):
                break
            if attempt % 10 == 9:
                self.discard()
            elif attempt % 2 and (len(managed) < len(windows) or attempt % 4 == 3):
                self.screen.give_focus(managed)
                self.screen.key("Escape")
            elif managed:
                self.screen.close(managed[attempt // 2 % len(managed)])
            self.follow(0)
        else:
            raise Trouble("windows cannot be closed", *self.stack(), *self.who_is_there(windows), *tried)
        self.homes += 1
        if self.judges_memory and not self.ended() and self.rest():
            now = self.memory()
            if self.homes <= 2:
                self.warm = max(self.warm or 0, now)
            elif now > self.warm + self.GROWTH:
                raise Trouble(f"grew from {self.warm >> 20} to {now >> 20} MB", *self.largest())

    def discard(self):
        """Who wants to close a window is asked whether to save: by the button beside it that is discarded."""
        for _ in range(3):  # a question that is open already goes by the first Escape, and a search is emptied by it
            before = len(self.screen.managed(self.pid))
            self.press_and_wait("Escape")
            if len(self.screen.managed(self.pid)) > before:
                return self.press_and_wait("Tab", "space")

    def press_and_wait(self, *keys):
        self.screen.give_focus(self.screen.managed(self.pid)[:1])  # no window manager may be there to do it
        for key in keys:
            self.screen.key(key)
        end = time.monotonic() + self.ACTS
        while time.monotonic() < end and not self.ended():
            self.follow(0)
            time.sleep(0.02)
        self.screen.changed = True

    def audit(self, name, data):
        """Opens a window as anybody finds it, and has it audited at rest."""
        self.go_home()
        if self.ended() or not self.rest():
            return
        self.told()
        self.command(f"open {name} {json.dumps(data)}")
        self.wait_for_line(lambda line: line["event"] == "opened")
        self.screen.changed = True
        # The window manager gives the focus to what a user asked for, and nobody asked for this.
        self.screen.give_focus(self.screen.managed(self.pid)[:1])
        self.follow(0)
        if self.ended() or not self.rest():
            return
        found = set()
        for _ in range(3):  # what lasts counts
            self.command("audit")
            lines = self.wait_for_line(lambda line: line.get("name") == "audited")
            texts = {f"{line['kind']} {line['control']}: {line['detail']}" for line in lines if line["event"] == "finding"}
            found = {text for text in texts if not self.known(text) and "Tab was not tried" not in text}
            # A menu that was asked for before and came late lies over what is looked at, as a tool tip does.
            self.screen.changed = True
            if not found or not all(is_managed for _, is_managed in self.screen.windows(self.pid)):
                return
        raise Trouble("audit", *sorted(found))

    def wait_for_line(self, is_it):
        """The lines up to it; or those that come in a long while."""
        lines, end = [], time.monotonic() + 20
        while not self.ended() and time.monotonic() < end and not any(map(is_it, lines)):
            self.follow(0)
            lines += self.told()
            time.sleep(0.01)
        return lines

    def close(self):
        """Closes everything, and waits for its end."""
        for attempt, seen in self.attempts():
            if self.ended():
                break
            windows = self.screen.managed(self.pid)
            if windows:
                self.screen.give_focus(windows)
                if attempt % 2:
                    self.screen.key("Escape")
                elif attempt % 4 == 2:
                    self.discard()
                else:
                    self.screen.close(windows[attempt // 8 % len(windows)])
            self.follow(0)
            time.sleep(min(0.02 * attempt, 0.2))
        else:
            raise Trouble("it cannot be closed", *self.stack(), *self.who_is_there(seen))
        self.look()
