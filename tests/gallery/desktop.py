"""The settings of a desktop, told to the programs on it, and what the gallery's windows look like there."""
import json
import os
import pathlib
import select
import signal
import subprocess
import tempfile

from driver import Gallery


class Desktop:
    """The desktop's settings, as its settings daemon tells them to every program."""

    def __init__(self, settings):
        self.file = pathlib.Path(tempfile.mkdtemp()) / "xsettingsd.conf"
        self.file.write_text(settings, "utf-8")
        self.daemon = subprocess.Popen(["xsettingsd", "-c", self.file], stderr=subprocess.PIPE,
                                       preexec_fn=lambda: signal.signal(signal.SIGHUP, signal.SIG_IGN))
        self.said = ""
        while "Took ownership" not in self.said:
            self.listen()

    def listen(self):
        """Some of what the daemon says, if it has anything to say."""
        if select.select([self.daemon.stderr], [], [], 0.2)[0]:
            said = os.read(self.daemon.stderr.fileno(), 10000).decode()
            assert said, "the settings daemon has ended"
            self.said += said

    def change(self, settings):
        self.file.write_text(settings, "utf-8")
        self.said = ""
        while "Loaded" not in self.said:  # it misses a signal that comes while it goes to sleep
            self.daemon.send_signal(signal.SIGHUP)
            self.listen()

    def end(self):
        self.daemon.terminate()
        self.daemon.communicate()


def look_at_windows(test, between=lambda places: None, waits=False, environment=None):
    """Where everything is in each window, once it is open or, if it waits, once its look has changed; and how the windows
    ended. The test fails where an audit or the toolkit complains."""
    gallery = Gallery("--places", "changed" if waits else "opened", "--language", "en", environment=environment,
                      seconds=200)
    places, findings, results = {}, [], []
    for line in gallery.process.stdout:
        message = json.loads(line)
        if message["event"] == "places":
            places[message["object"]] = message["places"]
        elif message["event"] == "finding":
            findings.append(message)
        elif message["event"] == "result":
            results.append((message["object"], message["result"]))
        elif message.get("name") == "waiting":
            between(message["object"])
    complaints = gallery.process.stderr.read().decode()
    test.assertEqual((0, []), (gallery.end(), findings))
    test.assertNotRegex(complaints, "WARNING|CRITICAL")
    test.assertGreater(len(places), 40)
    return places, results
