"""Starts the gallery and drives it from outside, by its JSON lines and real keys, on the display that is there."""
import json
import os
import re
import subprocess
import threading
import time


class Gallery:
    """One run of the gallery; what it prints on standard output must be JSON, a line an event."""
    BINARY = None

    def __init__(self, *arguments, binary=None, environment=None, seconds=90):
        self.process = subprocess.Popen([binary or self.BINARY, *arguments], stdout=subprocess.PIPE,
                                        stderr=subprocess.PIPE, env=environment and {**os.environ, **environment})
        # A key that got lost must not keep everybody waiting: the line that is waited for is then missing.
        self.limit = threading.Timer(seconds, self.process.kill)
        self.limit.daemon = True
        self.limit.start()

    def expect(self, event):
        """The next line, which must be of this event. That a page was shown is passed over."""
        message = self.read(event)
        while message.get("name") == "page":
            message = self.read(event)
        assert message["event"] == event, message
        if event == "opened":
            self.wait_for_focus()
        return message

    def read(self, awaited):
        line = self.process.stdout.readline()
        if not line:
            raise AssertionError(f"no line of event '{awaited}': {self.process.communicate()[1].decode()}")
        return json.loads(line)

    def go_to_page(self, page):
        """Down to the next page of the preferences. Keys that come before it is shown go to the list of pages."""
        self.press("Down")
        while self.read(page).get("value") != page:
            pass

    def wait_for_focus(self):
        """A window is painted before the window manager gives it the focus; keys pressed meanwhile are lost."""
        self._wait_for_focus_other_than(None)

    def wait_for_window(self, title):
        """A window that opens by itself, and may be long in coming on a busy machine: keys go to it from now on."""
        for _ in range(1500):
            focus = subprocess.run(["xdotool", "getwindowfocus", "getwindowpid", "getwindowname"],
                                   capture_output=True, text=True).stdout.splitlines()
            if focus == [str(self.process.pid), title]:
                return self.wait_until_at_rest()
            time.sleep(0.02)
        raise AssertionError(f"no window '{title}' with the focus")

    def _wait_for_focus_other_than(self, window):
        for _ in range(500):
            focus = subprocess.run(["xdotool", "getwindowfocus", "getwindowpid", "getwindowfocus"],
                                   capture_output=True, text=True).stdout.split()
            if len(focus) == 2 and focus[0] == str(self.process.pid) and focus[1] != window:
                return
            time.sleep(0.02)
        raise AssertionError("the window did not get the focus")

    def wait_until_at_rest(self):
        """Until it has slept for longer than a button takes that was pressed by its letter (0.25 s): what was begun is
        done, and keys find their window."""
        used, quiet = None, 0
        while quiet < 12:
            time.sleep(0.025)
            with open(f"/proc/{self.process.pid}/stat", encoding="utf-8") as file:
                state = file.read().split()
            before, used = used, state[13:15]
            quiet = quiet + 1 if used == before and state[2] == "S" else 0  # not only waiting for its turn
        self.wait_for_focus()

    def press(self, *keys):
        # F1 to F9 by their places: with newer maps of the keyboard xdotool holds Alt for them.
        keys = [re.sub(r"\bF(\d)$", lambda key: str(66 + int(key[1])), each) for each in keys]
        subprocess.run(["xdotool", "key", "--clearmodifiers", *keys], check=True)

    def press_to_open(self, *keys):
        """Keys that open another window, or close one over another: returns when that has the focus."""
        before = subprocess.run(["xdotool", "getwindowfocus"], capture_output=True, text=True).stdout.strip()
        self.press(*keys)
        self._wait_for_focus_other_than(before)

    def type(self, text):
        subprocess.run(["xdotool", "type", "--clearmodifiers", text], check=True)

    def end(self):
        self.process.stdout.close()
        self.process.stderr.close()
        code = self.process.wait(20)
        self.limit.cancel()
        return code
