"""Drives the gallery from outside, by its JSON lines and real key presses, on the display that is there."""
import json
import os
import pathlib
import shutil
import subprocess
import sys
import tempfile
import time
import unittest

from driver import Gallery

Gallery.BINARY = sys.argv.pop(1)
MESSAGE = "dlg.error_warning_dialog"
SOURCES = pathlib.Path(__file__).parents[2] / "gallery" / "src"


def answer(window, *keys, **data):
    """The lines that a window tells until these keys, and texts behind "=", have ended it."""
    gallery = Gallery("--show", window, "--language", "en", "--data", json.dumps(data))
    gallery.expect("opened")
    for key in keys:
        gallery.wait_until_at_rest()
        gallery.type(key[1:]) if key.startswith("=") else gallery.press(key)
    lines = []
    while not lines or lines[-1]["event"] != "result":
        lines.append(gallery.read("result"))
    assert gallery.end() == 0
    return lines


def installed_copy(folder):
    """The gallery in a folder, where it finds its data beside itself."""
    os.makedirs(folder + "/bin")
    shutil.copy(Gallery.BINARY, folder + "/bin/gallery")
    shutil.copytree(os.path.join(os.path.dirname(Gallery.BINARY), "..", "share"), folder + "/share")
    return folder + "/bin/gallery"


class MessageWindows(unittest.TestCase):
    def test_keyboard_alone_answers(self):
        for expected, button_type, *keys in ((1, 1, "Return"), (2, 1, "Escape"), (2, 1, "Tab", "Return"),
                                             (2, 1, "alt+n"), (5, 5, "alt+r")):
            with self.subTest(keys=keys):
                lines = answer(MESSAGE, *keys, button_type=button_type, main_message="m")
                self.assertEqual(expected, lines[-1]["result"])

    def test_record_comes_back_with_what_the_user_did(self):
        box = {"label": "Never again", "checked": False}
        lines = answer(MESSAGE, "shift+Tab", "space", "Tab", "Return", button_type=3, main_message="Größe",
                       check_box=box)
        self.assertEqual({"object": MESSAGE, "event": "signal", "name": "check_box.commit", "value": True}, lines[0])
        self.assertEqual(3, lines[1]["result"])
        self.assertEqual("Größe", lines[1]["data"]["main_message"])
        self.assertTrue(lines[1]["data"]["check_box"]["checked"])

    def test_silenced_one_never_opens(self):
        gallery = Gallery("--show", MESSAGE, "--data", '{"check_box": {"label": "x", "checked": true}}')
        self.assertEqual(7, gallery.expect("result")["result"])
        self.assertEqual(0, gallery.end())


class Windows(unittest.TestCase):
    def test_each_tells_what_was_done_by_keyboard_alone(self):
        messages = [{"severity": 3, "text": "i"}, {"severity": 1, "text": "e"}]
        added = [{"path": path, "recursive": False} for path in ("/none", "/usr/bin", "/last")]
        for window, keys, data, signals, code, result in (
                ("dlg.example", "=ab Return", {}, [], 5100, {"name": "ab"}),
                ("dlg.example", "=ab Escape", {}, [], 5101, {"name": ""}),
                ("pref.example", "=ab Escape", {}, ["end"], 5101, {"name": ""}),
                ("advanced_panel_t", "Tab space Return Escape", {}, ["open_close", "open_close"], 5101, {}),
                ("caption_panel_t", "alt+r alt+a Escape", {"messages": messages}, ["removed", "added"], 5101, {"shown": 2}),
                ("panel.search_dir_tab.symbols", "F2 End =/bin Return alt+Down Down =/last alt+o",
                 {"dirs": ["/usr", "/none"]}, ["end"], 5100, {"binaries": added, "symbols": added, "sources": []}),
                ("pref.file_finder_pp", "Tab =/a Return Up space alt+d Down Tab =/b alt+o", {}, ["end"], 5100,
                 {"binaries": [{"path": "/a", "recursive": True}], "symbols": [{"path": "/b", "recursive": False}]}),
                ("dlg.ask", "alt+f End =b Return", {"filename": "/a"}, [], 5100, {"filename": "/ab"})):
            with self.subTest(window=window, keys=keys):
                *told, last = answer(window, *keys.split(), **data)
                self.assertEqual(signals, [line["name"] for line in told if line["name"] != "shown"])
                self.assertEqual((code, result), (last["result"], {key: last["data"][key] for key in result}))


class Commands(unittest.TestCase):
    def run_command(self, command, keys=(), until=None, folder="/"):
        """What the page tells of a command; `keys` are pressed once the processes `until` says run."""
        gallery = Gallery("--show", "log_command", "--language", "en", "--data",
                          json.dumps({"command": command, "folder": folder}))
        gallery.expect("opened")
        gallery.wait_until_at_rest()
        gallery.press("Return")
        ended = None
        if until:
            self.wait_for(lambda: self.count(until[0]) == until[1])
            gallery.press(*keys)
        if "Escape" not in keys:
            while (told := gallery.expect("signal"))["name"] != "command_finished":
                pass
            ended = told["value"]
            gallery.wait_until_at_rest()
            gallery.press("Escape")
        last = gallery.read("result")
        while last["event"] != "result":
            last = gallery.read("result")
        self.assertEqual(0, gallery.end())
        return ended, [(line["severity"], line["text"]) for line in last["data"]["entries"][-2 if ended else -1]["lines"]]

    @staticmethod
    def count(name):
        return len(subprocess.run(["pgrep", "-f", name], capture_output=True, text=True).stdout.split())

    def wait_for(self, condition):
        for _ in range(500):
            if condition():
                return
            time.sleep(0.02)
        self.fail("it did not happen")

    def test_the_product_is_built(self):
        build = pathlib.Path(Gallery.BINARY).resolve().parents[1]
        ended, lines = self.run_command(f"ninja -C {build} gen_helpers2 && ninja -C {build} -t commands gen_helpers2")
        self.assertEqual(0, ended["exit_code"])
        expected = subprocess.run(["ninja", "-C", str(build), "-t", "commands", "gen_helpers2"], capture_output=True, text=True)
        self.assertEqual(expected.stdout.splitlines(), [text for _, text in lines][-len(expected.stdout.splitlines()):])

    def test_whatever_is_printed_is_there(self):
        with tempfile.TemporaryDirectory() as folder:
            pathlib.Path(folder, "broken.cpp").write_text("int main()\n{\n\treturn one;\n}\n", encoding="utf-8")
            command = "g++ -fdiagnostics-color=always -c broken.cpp || (cat; ls /proc/self/fd | wc -l; " \
                      "seq 9000; head -c 300000 /dev/zero | tr '\\0' x; printf '\\na\\0b\\r\\n\\n1%%\\r2%%\\rend'; exit 7)"
            ended, lines = self.run_command(command, folder=folder)
        self.assertEqual({"exit_code": 7, "signal": 0, "canceled": False, "started": True}, ended)
        errors = [text for severity, text in lines if severity]
        self.assertRegex(errors[1], "broken.cpp:3:16:.*error")
        self.assertIn((4, errors[1]), lines)
        said = [text for severity, text in lines if not severity]
        # Three of its own, and that of the folder which it lists.
        self.assertEqual(["4"] + [str(i) for i in range(1, 9001)] +
                         ["x" * 300000, "a\u2400b", "", "1%", "2%", "end"], said)

    def test_stopping_one_stops_all_that_it_started(self):
        name = f"sleep 98{os.getpid()}"
        command = f"{name} & (trap '' TERM; {name}; {name}) & wait"
        ended, _ = self.run_command(command, ["Tab", "Tab", "Tab", "Tab", "Return"], ("^" + name, 2))
        self.assertTrue(ended["canceled"])
        self.assertEqual(0, self.count("^" + name))
        self.run_command(command, ["Escape"], ("^" + name, 2))
        self.wait_for(lambda: self.count("^" + name) == 0)


class Editors(unittest.TestCase):
    """The registered editor is a real one, of the package geany; a program of its name, first in PATH, records."""
    EDITOR = "geany.desktop"

    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = folder.name
        self.note = self.folder + "/note"
        self.source = self.folder + "/a b.cpp"
        with open(self.source, "w", encoding="utf-8"):
            pass
        self.stand_in("for a; do echo \"$a\"; done > $0.part; mv $0.part " + self.note)
        self.environment = {"PATH": self.folder + ":" + os.environ["PATH"], "VISUAL": "code --wait"}

    def stand_in(self, script):
        with open(self.folder + "/geany", "w", encoding="utf-8") as file:
            file.write("#!/bin/sh\n" + script + "\n")
        os.chmod(self.folder + "/geany", 0o755)

    def wait_for_note(self, words):
        for _ in range(200):
            if os.path.exists(self.note):
                break
            time.sleep(0.02)
        with open(self.note, encoding="utf-8") as file:
            self.assertEqual(sorted(words), sorted(file.read().splitlines()))

    def start(self, window, data=None):
        gallery = Gallery("--show", window, "--language", "en", "--config-dir", self.folder + "/config",
                          *(["--data", json.dumps(data)] if data else []), environment=self.environment)
        gallery.expect("opened")
        return gallery

    def choose(self, *keys, ending="Return"):
        """What the preferences hold for C and C++ after these keys in the list of editors."""
        gallery = self.start("dlg.preferences")
        gallery.go_to_page("pref.editor")
        gallery.press("alt+e", *keys)
        gallery.press("alt+o" if ending == "Return" else ending)
        if ending == "Return":
            self.assertIs(True, gallery.expect("signal")["value"])
        result = gallery.expect("result")
        self.assertEqual(0, gallery.end())
        return result["data"]["pref.editor"]["languages"][0]

    def test_the_chosen_one_is_kept_and_opens_the_file_at_the_line(self):
        found = self.choose("Home", ending="Escape")
        names = [editor["name"] for editor in found["editors"]]
        self.assertIn(self.EDITOR, names)
        self.assertEqual("code --wait", found["editors"][-1]["command_line"])
        self.assertFalse(os.path.exists(self.folder + "/config"))
        chosen = self.choose("End", "Home", *["Down"] * names.index(self.EDITOR))
        self.assertEqual(self.EDITOR, chosen["selected_editor"])
        with open(self.folder + "/config/preferences.xml", encoding="utf-8") as file:
            self.assertIn(self.EDITOR, file.read())

        gallery = self.start("dlg.open_source")
        gallery.type(self.source)
        gallery.press("alt+l", "ctrl+a")
        gallery.type("42")
        gallery.press("Return")
        started = gallery.expect("signal")
        self.assertEqual(("started", self.EDITOR), (started["name"], started["value"]))
        self.wait_for_note(["+42", self.source])
        gallery.press("Escape")
        self.assertEqual({"file": self.source, "line": 42, "editor": self.EDITOR}, gallery.expect("result")["data"])
        self.assertEqual(0, gallery.end())

        os.remove(self.note)
        gallery = Gallery("--language", "en", "--config-dir", self.folder + "/config", environment=self.environment)
        gallery.expect("opened")
        gallery.wait_for_window("Usage data")
        gallery.press_to_open("Escape")
        gallery.wait_until_at_rest()
        gallery.press("End", "ctrl+u")
        shown = gallery.expect("signal")
        self.assertEqual("code_shown", shown["name"])
        self.wait_for_note([shown["value"], "+1"])
        self.assertTrue(os.path.samefile(shown["value"], SOURCES / "search_dirs_windows.cpp"))
        self.stand_in("exit 3")
        gallery.press_to_open("alt+c")
        self.assertEqual("code_shown", gallery.expect("signal")["name"])
        self.assertEqual("code_failed", gallery.expect("signal")["name"])
        gallery.press_to_open("Escape")
        gallery.press("ctrl+q")
        self.assertEqual(0, gallery.end())


class FreshProduct(unittest.TestCase):
    """Every page of the preferences, set by keyboard alone, and found again."""

    def contents(self, folder):
        return {file.name: file.read_bytes() for file in pathlib.Path(folder).iterdir()}

    def run_once(self, folder, *keys_and_texts):
        gallery = Gallery("--show", "dlg.preferences", "--language", "en", "--config-dir", folder,
                          environment={"VISUAL": "code --wait"})
        gallery.expect("opened")
        for keys, text in keys_and_texts:
            for key in keys:
                if "." in key:  # a page, which can be operated once it is told to be shown
                    gallery.press("ctrl+f", "Down")
                    gallery.go_to_page(key)
                else:
                    gallery.press(key)
            gallery.type(text)
        return gallery

    def test_what_is_set_is_there_at_the_next_start(self):
        with tempfile.TemporaryDirectory() as folder:
            gallery = self.run_once(
                folder, (["alt+t", "ctrl+a"], "run_@@"), (["alt+f", "Tab", "ctrl+a"], os.environ["HOME"] + "/a|b"),
                (["pref.editor", "alt+e", "End", "Up"], ""),  # the editor of the environment, above Browse
                (["panel.search_dir_tab.binaries", "Tab"], "/opt/bin"), (["Return"], "/opt/lib"), (["Return"], ""),
                (["panel.search_dir_tab.sources", "Tab"], "/opt/src"), (["Return"], ""),
                (["panel.search_dir_tab.others", "Tab"], "/opt/other"), (["Return"], ""),
                (["panel.experimental", "Tab", "space"], ""),
                (["pref.optin", "alt+n"], ""))
            gallery.press_to_open("Return")
            self.assertIs(True, gallery.expect("signal")["value"], "saved")
            gallery.press("Escape")  # no restart
            data = gallery.expect("result")["data"]
            self.assertEqual(0, gallery.end())

            kept = self.contents(folder)
            gallery = self.run_once(folder, (["alt+y"], ""))  # on the page that was seen last
            gallery.press_to_open("Escape")
            gallery.press("alt+d")  # and not saved
            found = gallery.expect("result")
            self.assertEqual((5101, data), (found["result"], found["data"]))
            self.assertEqual(0, gallery.end())
            self.assertEqual(kept, self.contents(folder), "cancelled, not kept")
            self.assertEqual("run_@@", data["pref.result_saving"]["name_template"])
            self.assertEqual(os.environ["HOME"] + "/ab", data["pref.result_saving"]["folder"])
            chosen = data["pref.editor"]["languages"][0]
            self.assertEqual("code --wait", {editor["name"]: editor for editor in chosen["editors"]}[
                chosen["selected_editor"]]["command_line"])
            self.assertEqual([True, False], [each["enabled"] for each in data["panel.experimental"]["features"]])
            self.assertEqual({"consent": 2}, data["pref.optin"])
            for path in ("/opt/bin", "/opt/lib", "/opt/src", "/opt/other"):
                self.assertIn(path.encode(), kept["search_directories.xml"])

    def test_what_is_exported_is_imported_elsewhere(self):
        with tempfile.TemporaryDirectory() as folder, tempfile.TemporaryDirectory() as other:
            file = folder + "/all.xml"
            gallery = self.run_once(
                folder, (["alt+t", "ctrl+a"], "run_@@"),
                (["pref.editor", "panel.search_dir_tab.binaries", "panel.search_dir_tab.sources", "Tab"], "/opt/src"),
                (["Return", "panel.search_dir_tab.others", "panel.experimental", "pref.optin", "pref.silenced_messages",
                  "pref.sampling", "alt+n"],
                 "moved"))
            self.choose_in_menu(gallery, "e", file)
            while not os.path.exists(file):
                time.sleep(0.02)
            gallery.press("alt+o")
            self.assertIs(True, gallery.expect("signal")["value"], "saved")
            exported = gallery.expect("result")["data"]
            self.assertEqual(0, gallery.end())

            gallery = self.run_once(other)
            self.choose_in_menu(gallery, "i", file, opens=True)
            gallery.wait_until_at_rest()
            gallery.press_to_open("alt+i")
            gallery.wait_until_at_rest()
            self.assertFalse(os.path.exists(other + "/preferences.xml"), "nothing is written before OK")
            gallery.press("alt+o")
            self.assertIs(True, gallery.expect("signal")["value"], "saved")
            self.assertEqual(exported, gallery.expect("result")["data"])
            self.assertEqual(0, gallery.end())
            for name in ("preferences.xml", "search_directories.xml"):
                for text in ("run_@@", "moved", "/opt/src"):
                    self.assertEqual(text.encode() in self.contents(folder)[name], text.encode() in self.contents(other)[name])

    def choose_in_menu(self, gallery, letter, file, opens=False):
        gallery.wait_until_at_rest()
        gallery.press("alt+m")
        gallery.wait_until_at_rest()
        gallery.press_to_open(letter)
        gallery.press("ctrl+a")
        gallery.type(file)
        gallery.press_to_open("Return")
        if opens:  # another window comes when this one has gone
            gallery.wait_for_window("Import settings")

    def test_what_earlier_versions_kept_is_there(self):
        for version in (pathlib.Path(__file__).parent.parent / "old_versions").glob("*/"):
            with self.subTest(version.name), tempfile.TemporaryDirectory() as folder:
                shutil.copytree(version, folder, dirs_exist_ok=True)
                kept = self.contents(folder)
                gallery = self.run_once(folder, (["Escape"], ""))
                data = gallery.expect("result")["data"]
                self.assertEqual(0, gallery.end())
                self.assertEqual(kept, self.contents(folder), "nothing is taken for damaged, nothing rewritten")
                results = data["pref.result_saving"]
                self.assertEqual(("run_@@", "/home/user/results"), (results["name_template"], results["folder"]))
                chosen = data["pref.editor"]["languages"][0]
                self.assertEqual("vorbex_env_var_editor_name", chosen["selected_editor"])
                self.assertEqual([True, False], [each["enabled"] for each in data["panel.experimental"]["features"]])
                self.assertEqual({"consent": 2}, data["pref.optin"])
                paths = [[each["path"] for each in data[page]] for page in data if "search_dir" in page]
                self.assertEqual([["/opt/bin", "/opt/lib"], ["/opt/other"], ["/opt/src"]], paths)


class FirstStart(unittest.TestCase):
    def test_consent_is_asked_once_and_a_feature_takes_effect_by_a_restart(self):
        with tempfile.TemporaryDirectory() as folder:
            gallery = Gallery("--language", "en", "--config-dir", folder)
            gallery.expect("opened")
            gallery.wait_for_window("Usage data")
            gallery.press("alt+y")
            gallery.press_to_open("Return")
            gallery.wait_until_at_rest()
            with open(folder + "/preferences.xml", encoding="utf-8") as file:
                self.assertIn('<int name="consent">1</int>', file.read())
            gallery.press_to_open("ctrl+comma")
            self.assertEqual("dlg.preferences", gallery.expect("opened")["object"])
            gallery.press("ctrl+f")
            gallery.type("object names")
            gallery.press("Return", "space")
            gallery.press_to_open("Return")
            self.assertIs(True, gallery.expect("signal")["value"], "saved")
            gallery.press("Return")  # restart now
            self.assertEqual("restart", gallery.expect("signal")["name"])
            self.assertEqual(5100, gallery.expect("result")["result"])
            self.assertEqual("gallery", gallery.expect("opened")["object"])  # and nothing is asked
            self.assertTrue(os.path.exists(folder + "/usage_data.json"))
            gallery.wait_until_at_rest()
            gallery.press("ctrl+q")
            self.assertEqual(0, gallery.end())


class AnotherLanguage(unittest.TestCase):
    def test_a_language_is_offered_and_audited_once_its_files_are_there(self):
        with tempfile.TemporaryDirectory() as folder:
            binary = installed_copy(folder)
            for domain, sources in (("commondlg", "resources"), ("gallery", "gallery")):
                source = pathlib.Path(__file__).parents[2] / sources / "catalogs" / "en.po"
                text = source.read_text(encoding="utf-8").replace('"{prod_name} Component Gallery"', '"Galerie"')
                text = text.replace('"English"', '"français"').replace('"&Wrap long lines"', '"a.raw.key"')
                folder_of_language = pathlib.Path(folder, "share/locale/fr/LC_MESSAGES")
                folder_of_language.mkdir(parents=True, exist_ok=True)
                subprocess.run(["msgfmt", "-o", folder_of_language / (domain + ".mo"), "-"], input=text.encode(),
                               check=True)
            said = subprocess.run([binary, "--audit", "--show", "dlg.clipboard", "--theme", "light"],
                                  stdout=subprocess.PIPE, text=True, env={**os.environ, "GDK_DPI_SCALE": "1"})
            findings = [line for line in map(json.loads, said.stdout.splitlines()) if line["event"] == "finding"]
            self.assertEqual([("fr", "raw_key")], [(line["language"], line["kind"]) for line in findings])

            gallery = Gallery("--language", "de", "--config-dir", folder, binary=binary)
            gallery.expect("opened")
            gallery.wait_for_window("Nutzungsdaten")
            gallery.press_to_open("Escape")
            gallery.wait_until_at_rest()
            gallery.press("alt+a", "p", "End", "Up", "Return")  # the last but one, behind English
            gallery.wait_for_window("Galerie")
            gallery.press("ctrl+q")
            self.assertEqual(0, gallery.end())


class BadInput(unittest.TestCase):
    def test_what_cannot_be_shown_is_said(self):
        gallery = Gallery("--show", "dlg.nothing")
        self.assertEqual("dlg.nothing", gallery.expect("error")["object"])
        self.assertEqual(2, gallery.end())
        for arguments in (["--data", "{"], ["--data", "[]"], ["--theme", "pink"], ["--nonsense"], ["--show"]):
            with self.subTest(arguments=arguments):
                gallery = Gallery(*arguments)
                self.assertIn(b"usage:", gallery.process.stderr.read())
                self.assertEqual(2, gallery.end())

    def test_missing_archive_is_told_with_the_place_it_was_looked_for(self):
        with tempfile.TemporaryDirectory() as folder:
            binary = installed_copy(folder)
            os.unlink(folder + "/share/commondlg3/gallery.dat")
            gallery = Gallery("--show", "dlg.example", binary=binary)
            self.assertIn(folder + "/share/commondlg3/gallery.dat", gallery.expect("error")["message"])
            self.assertEqual(MESSAGE, gallery.expect("opened")["object"])
            gallery.press("Escape")
            self.assertEqual(0, gallery.expect("result")["result"])
            self.assertEqual(0, gallery.end())


if __name__ == "__main__":
    unittest.main()
