"""The gallery on machines that lack something, or where something does not answer: its windows open, answer and end."""
import json
import os
import subprocess
import sys
import tempfile
import unittest

sys.path.insert(0, os.path.join(os.path.dirname(__file__), "..", "gallery"))
from clipboard import Owner
from driver import Gallery  # noqa: E402  (the folder is known only now)

HANGING_DISK = JUMPING_CLOCK = None
WINDOWS = ["dlg.preferences", "pref.editor", "pref.result_saving", "panel.search_dir", "dlg.open_source", "log_walk",
           "message_error"]


class Machines(unittest.TestCase):
    def setUp(self):
        self.folder = tempfile.TemporaryDirectory()
        self.addCleanup(self.folder.cleanup)

    def open_and_close(self, window, *keys, data=None, environment=None, before=(), own_folder=True):
        """Each window opens, takes keys and ends by Escape within the limit, and nobody complains."""
        arguments = ["--show", window, *(["--config-dir", self.folder.name] if own_folder else []),
                     *(["--data", json.dumps(data)] if data else [])]
        gallery = Gallery(*before, Gallery.BINARY, *arguments, binary="env", environment=environment, seconds=30) \
            if before else Gallery(*arguments, environment=environment, seconds=30)
        gallery.expect("opened")
        for key in keys:
            if key.startswith("!"):
                while gallery.read("signal").get("name") != key[1:]:
                    pass
            else:
                gallery.type(key[1:]) if key.startswith("=") else gallery.press(key)
        self.close(gallery)

    def close(self, gallery):
        gallery.press("Escape")
        while gallery.read("result")["event"] != "result":
            pass
        complaints = gallery.process.stderr.read().decode()
        self.assertEqual(0, gallery.end(), complaints)
        self.assertNotRegex(complaints, "CRITICAL|G\\w+-WARNING|assert")

    def test_folders_that_hang_keep_nobody_waiting(self):
        hanging = {"LD_PRELOAD": HANGING_DISK, "HANGING_FOLDER": "/hanging", "VISUAL": "/hanging/editor",
                   "PATH": "/hanging/bin:" + os.environ["PATH"]}
        results = {"folder": "/hanging/results", "project_default_folder": "/hanging/projects"}
        for window, data, *keys in (
                ("pref.result_saving", results), ("pref.result_saving", None, "Tab", "ctrl+a", "=/hanging/a", "Tab", "=b"),
                ("panel.search_dir", {"directories": ["/hanging/a", "/hanging/b"]}), ("pref.editor", None, "Down", "Up"),
                ("dlg.open_source", None, "=/hanging/a.cpp", "Return"), ("dlg.preferences", None, "Down", "Down"),
                ("log_walk", None, *["shift+Tab"] * 4, "ctrl+a", "=/hanging", "alt+s", "!walk_started")):
            with self.subTest(window, keys=keys):
                self.open_and_close(window, *keys, data=data, environment=hanging)

    def test_what_a_program_expects_around_it_is_missing(self):
        subprocess.run(["localedef", "-i", "tr_TR", "-f", "UTF-8", os.path.join(self.folder.name, "tr_TR.UTF-8")], check=True)
        long_text = "/x" * 60000
        for name, environment in {
                "no message bus": {"DBUS_SESSION_BUS_ADDRESS": "unix:path=/nowhere", "AT_SPI_BUS_ADDRESS": "unix:path=/nowhere"},
                "unknown language": {"LC_ALL": "xx_YY.nonsense"},
                "dotless i": {"LC_ALL": "tr_TR.UTF-8", "LOCPATH": self.folder.name},
                "the time of day jumps": {"LD_PRELOAD": JUMPING_CLOCK},
                "long values": {"VISUAL": long_text, "EDITOR": long_text, "LANGUAGE": long_text},
                "names that are no text": {"VISUAL": "/\udcff\udcfe", "XDG_CONFIG_HOME": "/tmp/\udcff"},
        }.items():
            for window in WINDOWS:
                with self.subTest(name, window=window):
                    self.open_and_close(window, environment=environment)

    def test_without_a_home_or_files_to_open(self):
        for window in WINDOWS:
            with self.subTest(window):
                self.open_and_close(window, before=["-u", "HOME", "-u", "XDG_CONFIG_HOME", "-u", "USER"], own_folder=False)
                self.open_and_close(window, before=["prlimit", "--nofile=32"])

    def test_a_text_comes_when_its_chooser_has_gone(self):
        gallery = Gallery("--show", "dlg.open_source", "--config-dir", self.folder.name, seconds=60)
        gallery.expect("opened")
        gallery.press_to_open("alt+b")
        gallery.wait_until_at_rest()
        owner = Owner("late")
        gallery.press("ctrl+v")  # into the list of files
        gallery.press_to_open("Escape")
        self.assertTrue(owner.gave_text.wait(30))
        gallery.wait_until_at_rest()
        self.close(gallery)

    def test_the_display_goes(self):
        number = 90 + os.getpid() % 900
        display = subprocess.Popen(["Xvfb", f":{number}"], stderr=subprocess.DEVNULL)
        while not os.path.exists(f"/tmp/.X11-unix/X{number}"):
            self.assertIsNone(display.poll())
        gallery = Gallery("--show", "dlg.preferences", "--config-dir", self.folder.name,
                          environment={"DISPLAY": f":{number}"}, seconds=30)
        while gallery.read("opened")["event"] != "opened":
            pass
        display.kill()
        display.wait()
        self.assertGreater(gallery.process.wait(20), 0, "it ends, and not by a signal")
        gallery.end()
        self.assertEqual([], [name for name in os.listdir(self.folder.name) if name.startswith(".")])


if __name__ == "__main__":
    Gallery.BINARY, HANGING_DISK, JUMPING_CLOCK = sys.argv[1:4]
    unittest.main(argv=[sys.argv[0], *sys.argv[4:]])
