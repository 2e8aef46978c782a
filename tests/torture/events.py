"""What the monkey does: events that are made at random, and done, now or when they are read again from a file.

An event is a list of JSON values, its kind first, and says all that is needed to do it: windows by their place from the
topmost one, places in them by fractions.
"""
import json
import pathlib
import subprocess
import tempfile
import time

from clipboard import KINDS, Owner
from screen import ODD_LETTERS

KEYS = ["Tab", "Tab", "shift+Tab", "Return", "Escape", "space", "space", "Up", "Down", "Down", "Left", "Right", "Home",
        "End", "Page_Down", "Page_Up", "Delete", "BackSpace", "Insert", "F1", "F2", "F3", "F4", "F10", "Menu", "alt+F4",
        "ctrl+a", "ctrl+c", "ctrl+v", "ctrl+x", "ctrl+z", "ctrl+y", "ctrl+f", "ctrl+o", "ctrl+comma", "ctrl+n",
        "ctrl+Home", "ctrl+End", "ctrl+Tab", "ctrl+space", "ctrl+Return", "ctrl+Up", "ctrl+Down", "ctrl+plus",
        "ctrl+Left", "ctrl+Right", "ctrl+shift+End", "shift+Down", "shift+Up", "shift+End", "shift+F10", "shift+Insert",
        "alt+Up", "alt+Down",
        *("alt+" + letter for letter in "abcdefhklmnoprstuvwxy"), "a", "e", "slash", "x", "1", "0"]
TEXTS = ["/usr", "a", "/etc/passwd", "../..//x", "%s%n", "@@@", "<b>&amp;</b>", "\u202etxt.exe", "\u0301" * 8, "-1", "9" * 30,
         "long" * 50, "*?[", "{0, plural,", "' \" \\", ODD_LETTERS, "=SUM(A1)", "|/:*", "~", "$HOME", "(((((", "1000000"]
LANGUAGES = ["en", "de", "ja", "ar", "en_XA", "ar_XB"]
FONTS = ["Sans 10", "Sans 6", "DejaVu Serif 12", "Sans 18", "VL Gothic 11"]
THEMES = ["Adwaita", "Adwaita-dark", "HighContrast", "HighContrastInverse"]
PIXELS = [1, 2, 60, 200, 400, 700, 1200, 3000]
HOSTILE = ["\u202egnp.exe\u2066", "x" * 20000, "a\u0301" * 1000, "line\n" * 500, "\u0000\u0001\u007f", "<table>" * 200,
           "\u0627\u0644 /usr/\u3042" * 200]
PLAIN_DESKTOP = 'Xft/DPI 98304\nGtk/FontName "Sans 10"\nNet/ThemeName "Adwaita"\n'
MOST_WINDOWS = 9
# A window manager with one desktop and nothing of its own to open: what is pressed is meant for the gallery.
MANAGER = """<?xml version="1.0"?>
<openbox_config xmlns="http://openbox.org/3.4/rc">
  <focus><focusNew>yes</focusNew></focus>
  <desktops><number>1</number></desktops>
  <keyboard><keybind key="A-F4"><action name="Close"/></keybind></keyboard>
  <mouse>
    <context name="Client">
      <mousebind button="Left" action="Press"><action name="Focus"/><action name="Raise"/></mousebind>
      <mousebind button="Right" action="Press"><action name="Focus"/><action name="Raise"/></mousebind>
    </context>
  </mouse>
</openbox_config>
"""
# How often each kind, of all.
WEIGHTS = {"key": 560, "click": 200, "text": 40, "move": 40, "wheel": 40, "drag": 40, "resize": 30, "open": 30, "close": 8,
           "clipboard": 8, "hold": 3, "home": 1, "look": 2, "audit": 0.3, "manager": 0.3}


def make_launch(rng, names):
    return ["launch", {"show": rng.choice(names)[0] if rng.random() < 0.1 else "", "language": rng.choice(LANGUAGES),
                       "theme": rng.choice(["light", "dark"])}]


class Maker:
    """Makes the events of one launch.

    Who does everything equally often comes to three certain things in a row once in a million: in half of the launches a few
    keys and one kind of event come far more often.
    """

    def __init__(self, rng, names):
        self.rng, self.names = rng, names
        weights = dict(WEIGHTS)
        self.keys = KEYS
        if rng.random() < 0.5:
            self.keys = KEYS + 12 * rng.sample(KEYS, 8)
            weights[rng.choice(["click", "drag", "wheel", "resize"])] *= 4
        self.kinds, self.weights = list(weights), list(weights.values())

    def make(self, windows):
        """The next event, with this number of windows on the screen."""
        event = self.make_any(windows)
        # With its last window the launch ends: that is done, but not all the time.
        ends = event == ["key", "alt+F4"] or event[0] == "close"
        return ["key", "Tab"] if ends and windows < 2 and self.rng.random() < 0.9 else event

    def make_any(self, windows):
        rng = self.rng
        kind = rng.choices(self.kinds, self.weights)[0]
        at = [rng.randint(0, 2) if rng.random() < 0.3 else 0, round(rng.random(), 3), round(rng.random(), 3)]
        if kind == "key":
            return [kind, rng.choice(self.keys)]
        if kind == "text":
            return [kind, rng.choice(TEXTS)]
        if kind == "click":
            return [kind, *at, rng.choice([1, 1, 1, 1, 1, 2, 3]), rng.choice([1, 1, 1, 2, 3])]
        if kind == "wheel":
            return [kind, *at, rng.choice([4, 5, 6, 7]), rng.randint(1, 8)]
        if kind == "move":
            return [kind, *at]
        if kind == "drag":
            return [kind, *at, round(rng.uniform(-0.2, 1.2), 3), round(rng.uniform(-0.2, 1.2), 3)]
        if kind == "resize":
            return [kind, at[0], rng.choice(PIXELS), rng.choice(PIXELS)]
        if kind == "open" and windows < MOST_WINDOWS:
            name, data = rng.choice(self.names)
            if rng.random() < 0.1:
                name, data = "dlg.error_warning_dialog", {
                    "main_message": rng.choice(HOSTILE), "supplemental_message": rng.choice(HOSTILE),
                    "button_type": rng.randint(0, 6), "icon_type": rng.randint(0, 4)}
            return [kind, name, data]
        if kind == "close":
            return [kind, at[0]]
        if kind == "clipboard":
            return [kind, rng.choice(KINDS)]
        if kind == "hold":
            return [kind, rng.randint(1, 12)]
        if kind == "look":
            return [kind, (f'Xft/DPI {rng.choice([96, 96, 120, 144, 192]) * 1024}\nGtk/FontName "{rng.choice(FONTS)}"\n'
                           f'Net/ThemeName "{rng.choice(THEMES)}"\n')]
        if kind == "audit":
            return [kind, *rng.choice(self.names)]
        if kind == "manager":
            return [kind, rng.choice(["dies", "starts", "starts"])]
        return [kind if kind != "open" else "home"]


class Doer:
    """Does events to a gallery on a screen."""

    def __init__(self, screen, desktop):
        self.screen, self.desktop = screen, desktop
        self.manager_process, self.look = None, PLAIN_DESKTOP
        self.held = 0  # for how many events more another program holds the pointer
        self.folder = tempfile.TemporaryDirectory()
        self.manager_file = pathlib.Path(self.folder.name, "rc.xml")
        self.manager_file.write_text(MANAGER, "utf-8")
        self.manage("starts")

    def end(self):
        self.manage("dies")
        self.desktop.end()
        self.folder.cleanup()

    def reset(self):
        """The desktop is what it was at first."""
        self.let_go()
        self.manage("starts")
        if self.look != PLAIN_DESKTOP:
            self.do(None, ["look", PLAIN_DESKTOP])

    def let_go(self):
        self.held = 0
        self.screen.let_go()

    def do(self, gallery, event):
        kind, *values = event
        if self.held == 1:
            self.let_go()
        self.held = max(0, self.held - 1)
        getattr(self, "do_" + kind)(gallery, *values)

    def point(self, gallery, index, across, down):
        """On the screen; None where no window is."""
        windows = self.screen.windows(gallery.pid)
        place = self.screen.place(windows[index % len(windows)][0]) if windows else None
        return place and (place[0] + int(across * place[2]), place[1] + int(down * place[3]))

    def go_to(self, gallery, *at):
        point = self.point(gallery, *at)
        if point:
            self.screen.move(*point)
        return point

    def do_key(self, gallery, chord):
        self.screen.key(chord)

    def do_text(self, gallery, text):
        for letter in text:  # in a long line the toolkit takes its time for each
            self.screen.type(letter)
            gallery.follow()

    def do_click(self, gallery, index, across, down, button, times):
        if self.go_to(gallery, index, across, down):
            self.screen.click(button, times)

    def do_wheel(self, gallery, index, across, down, button, times):
        self.do_click(gallery, index, across, down, button, times)

    def do_move(self, gallery, *at):
        self.go_to(gallery, *at)

    def do_drag(self, gallery, index, across, down, to_across, to_down):
        start = self.point(gallery, index, across, down)
        end = self.point(gallery, index, to_across, to_down)
        if start and end:
            self.screen.drag(start, end)

    def do_resize(self, gallery, index, width, height):
        windows = self.screen.managed(gallery.pid)
        if windows:
            self.screen.resize(windows[index % len(windows)], width, height)

    def do_close(self, gallery, index):
        windows = self.screen.managed(gallery.pid)
        if windows:
            self.screen.close(windows[index % len(windows)])

    def do_open(self, gallery, name, data):
        gallery.command(f"open {name} {json.dumps(data)}")

    def do_clipboard(self, gallery, kind):
        Owner(kind)
        self.do_key(gallery, "ctrl+v")

    def do_hold(self, gallery, events):
        """As somebody who drags something elsewhere: menus do not come up, and clicks go nowhere."""
        self.held = events + 1
        self.screen.hold()

    def do_look(self, gallery, settings):
        self.look = settings
        self.desktop.change(settings)

    def do_home(self, gallery):
        gallery.go_home()

    def do_audit(self, gallery, name, data):
        self.manage("starts")
        gallery.audit(name, data)

    def do_manager(self, gallery, what):
        self.manage(what)

    def manage(self, what):
        alive = self.manager_process and self.manager_process.poll() is None
        if what == "starts" and not alive:
            self.screen.forget_manager()
            end = time.monotonic() + 10
            self.manager_process = subprocess.Popen(["openbox", "--replace", "--config-file", self.manager_file], stdout=subprocess.DEVNULL,
                                                    stderr=subprocess.DEVNULL)
            # A window that asks to be shown while one manager follows another is forgotten by both.
            while not self.screen.has_manager() and time.monotonic() < end:
                time.sleep(0.02)
        elif what == "dies" and alive:
            self.manager_process.kill()
            self.manager_process.wait()
