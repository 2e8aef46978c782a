"""Changes the desktop's font, resolution and theme while windows of the gallery are open: each must then look as if
it had been opened so."""
import sys
import unittest

from desktop import Desktop, look_at_windows
from driver import Gallery

Gallery.BINARY = sys.argv.pop(1)
SMALL = 'Xft/DPI 98304\nGtk/FontName "Sans 10"\nNet/ThemeName "Adwaita"\n'
LARGE = 'Xft/DPI 147456\nGtk/FontName "DejaVu Serif 12"\nNet/ThemeName "HighContrastInverse"\n'
# It was opened with more room than its message came to need.
KEEPS_ROOM = {("page_search_dirs", SMALL)}


class Windows(unittest.TestCase):
    def test_look_as_if_opened_so_whatever_changes_while_they_are_open(self):
        desktop = Desktop(SMALL)
        self.addCleanup(desktop.end)
        opened, settings_of = {}, {}
        for settings in (LARGE, SMALL):
            desktop.change(settings)
            opened[settings], _ = look_at_windows(self)
        pictures = [dict(opened[settings]["message_warning"])["staticBitmap"][2] for settings in (SMALL, LARGE)]
        self.assertLess(*pictures, "a picture grows with the text beside it")

        def change(window):  # each time to the other ones
            settings_of[window] = SMALL if len(settings_of) % 2 else LARGE
            desktop.change(settings_of[window])

        changed, _ = look_at_windows(self, change, waits=True)
        for window, places in changed.items():
            settings = settings_of[window]
            if (window, settings) not in KEEPS_ROOM:
                with self.subTest(window=window, larger=settings == LARGE):
                    self.assertEqual(opened[settings][window], places)


if __name__ == "__main__":
    unittest.main()
