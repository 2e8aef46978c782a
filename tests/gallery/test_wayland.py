"""Opens every window of the gallery under Wayland: they must be what they are under X, and the toolkit content."""
import json
import os
import subprocess
import sys
import unittest

from desktop import Desktop, look_at_windows
from driver import Gallery

Gallery.BINARY = sys.argv.pop(1)


# As high as the screen lets them be.
FILL_SCREEN = {"message_long", "message_long_word"}


class WaylandGallery(Gallery):
    def wait_for_focus(self):
        """Nobody outside knows which window has it: it is given before the window comes to rest."""


def inside(places):
    """Without the window itself, to which under Wayland its frame and shadow belong."""
    left, top = places[1][1][:2]
    return [(name, x - left, y - top, width, height) for name, (x, y, width, height) in places[1:]]


class Windows(unittest.TestCase):
    def test_are_those_of_x(self):
        here, results = look_at_windows(self)
        # The font that is used where no daemon tells another.
        desktop = Desktop('Gtk/FontName "Cantarell 11"\nXft/DPI 98304\n')
        self.addCleanup(desktop.end)
        there, results_there = look_at_windows(self, environment={"GDK_BACKEND": "x11"})
        self.assertEqual(results_there, results)
        for window, places in there.items():
            if window in FILL_SCREEN:
                continue
            with self.subTest(window=window):
                self.assertEqual(inside(places), inside(here[window]))

    def test_take_keys_and_the_clipboard(self):
        gallery = WaylandGallery("--show", "dlg.ask", "--language", "en")
        gallery.expect("opened")
        gallery.wait_until_at_rest()
        gallery.type("/tmp/typed")
        gallery.press("ctrl+a", "ctrl+c", "Right", "ctrl+v", "Return")
        result = gallery.expect("result")
        self.assertEqual((5100, "/tmp/typed/tmp/typed"), (result["result"], result["data"]["filename"]))
        self.assertEqual(0, gallery.end())


@unittest.skipUnless(os.environ.get("WAYLAND_SHELL") == "kiosk-shell.so", "where a window is, nobody outside knows")
class Mouse(unittest.TestCase):
    def test_drags_a_row(self):
        dirs = ["/usr/include", "/usr/lib", "/usr/share"]
        gallery = WaylandGallery("--show", "panel.search_dir_tab", "--language", "en",
                                 "--data", json.dumps({"dirs": dirs}))
        gallery.expect("opened")
        gallery.wait_until_at_rest()
        windows = subprocess.run(["xdotool", "search", "--class", "weston"], capture_output=True, text=True).stdout
        screen = windows.split()[-1]
        # The compositor counts from where it first sees the pointer.
        subprocess.run(["xdotool", "mousemove", "--window", screen, "0", "0", "sleep", "0.3",
                        "mousemove", "--window", screen, "80", "140", "sleep", "0.3", "mousedown", "1",
                        *["mousemove_relative", "1", "8", "sleep", "0.05"] * 8, "mouseup", "1"], check=True)
        gallery.wait_until_at_rest()
        gallery.press("alt+o")
        self.assertEqual(5100, gallery.expect("signal")["value"])
        found = [each["path"] for each in gallery.expect("result")["data"]["dirs"]]
        self.assertEqual(sorted(dirs), sorted(found))
        self.assertNotEqual(dirs, found)
        self.assertEqual(0, gallery.end())


if __name__ == "__main__":
    assert "WAYLAND_DISPLAY" in os.environ, "run it by scripts/with_wayland.sh"
    subprocess.run(["xdotool", "search", "--sync", "--class", "weston", "windowfocus"], check=True)
    unittest.main()
