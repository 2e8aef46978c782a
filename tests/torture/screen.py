"""Hands and eyes on an X display: windows of a process, keys, mouse, sizes, and whether a window answers."""
import Xlib.display
import Xlib.error
from Xlib import X, XK
from Xlib.ext import xtest
from Xlib.protocol import event as protocol

# Letters that no keyboard of the display has: they get the keys that are free.
ODD_LETTERS = "\u202e\u0301\u200b\u2028\U0001f600\u0627\u3042\uffff"
# The clients that ask know each other by these.
PING, PROTOCOLS, DELETE, MANAGER = "_NET_WM_PING", "WM_PROTOCOLS", "WM_DELETE_WINDOW", "_NET_SUPPORTING_WM_CHECK"


class Screen:
    def __init__(self):
        self.display = Xlib.display.Display()
        self.display.set_error_handler(lambda *_: None)  # about windows that went meanwhile
        self.root = self.display.screen().root
        self.root.change_attributes(event_mask=X.SubstructureNotifyMask)
        self.atoms = {name: self.display.intern_atom(name)
                      for name in (PING, PROTOCOLS, DELETE, MANAGER, "_NET_WM_NAME", "_NET_WM_PID", "_NET_CLIENT_LIST_STACKING")}
        self.changed, self.answered, self.seen, self.owners, self.known = True, 0, [], {}, {}
        self.keys_of = {}
        free = [8 + at for at, row in enumerate(self.display.get_keyboard_mapping(8, 248)) if not any(row)]
        for code, letter in zip(reversed(free), ODD_LETTERS):
            keysym = 0x1000000 + ord(letter)
            self.display.change_keyboard_mapping(code, [(keysym, keysym)])
            self.keys_of[letter] = (code, False)
        self.display.sync()

    # What is there

    def listen(self):
        """Takes note of what the windows have told."""
        while self.display.pending_events():
            event = self.display.next_event()
            if event.type != X.ClientMessage:
                self.changed = True
                self.known.pop(getattr(getattr(event, "window", None), "id", None), None)
            elif event.client_type == self.atoms[PROTOCOLS] and event.data[1][0] == self.atoms[PING]:
                self.answered = max(self.answered, event.data[1][1])

    def windows(self, pid):
        """Those of the process that can be seen, the topmost first: (window, whether a window manager places it)."""
        self.listen()
        if self.changed:
            try:
                self.seen = self._look(pid)
                self.changed = False
            except Xlib.error.XError:  # of an earlier request, about what has gone
                pass
        return self.seen

    def forget(self):
        """Identifiers are used again by what comes next."""
        self.owners.clear()
        self.known.clear()

    def _look(self, pid):
        clients = self.root.get_full_property(self.atoms["_NET_CLIENT_LIST_STACKING"], X.AnyPropertyType)
        tops = [self.display.create_resource_object("window", client) for client in clients.value] if clients else []
        looks = {window: self._look_at(window) for window in tops}
        for window in self.root.query_tree().children:  # what nobody manages; frames are nobody's
            if window.id not in self.known:
                self.known[window.id] = self._look_at(window)
            looks.setdefault(window, self.known[window.id])
        return [pair for pair in reversed(looks.values()) if self.owners.get(pair[0].id) == pid and pair[1] is not None]

    def managed(self, pid):
        return [window for window, is_managed in self.windows(pid) if is_managed]

    def has_manager(self):
        """Whether a window manager has told that it works; what an earlier one told must have been forgotten."""
        return self.root.get_full_property(self.atoms[MANAGER], X.AnyPropertyType) is not None

    def forget_manager(self):
        self.root.delete_property(self.atoms[MANAGER])
        self.display.sync()

    def _look_at(self, window):
        """(window, whether a window manager places it, or None where it cannot be seen); its owner is kept."""
        try:
            if self.owners.get(window.id, 0) is None:
                return window, None
            attributes = window.get_attributes()
            if attributes.map_state != X.IsViewable:
                return window, None
            if window.id not in self.owners:  # it is told before a window is shown
                owner = window.get_full_property(self.atoms["_NET_WM_PID"], X.AnyPropertyType)
                self.owners[window.id] = owner and owner.value[0]
            return window, not attributes.override_redirect
        except Xlib.error.XError:
            return window, None

    def place(self, window):
        """(x, y, width, height) on the screen, or None once it has gone."""
        try:
            geometry = window.get_geometry()
            at = window.translate_coords(self.root, 0, 0)
            return -at.x, -at.y, geometry.width, geometry.height
        except Xlib.error.XError:
            return None

    def title(self, window):
        try:
            name = window.get_full_property(self.atoms["_NET_WM_NAME"], X.AnyPropertyType)
            return name and name.value.decode("utf-8", "replace")
        except Xlib.error.XError:
            return None

    # What hands do

    def give_focus(self, windows):
        """To the first of them, unless one has it: with nobody to give it, keys would go nowhere."""
        focus = self.display.get_input_focus().focus
        if windows and getattr(focus, "id", 0) not in {window.id for window in windows}:
            windows[0].set_input_focus(X.RevertToParent, X.CurrentTime)

    def _code(self, name):
        if name not in self.keys_of:
            keysym = XK.string_to_keysym(name) or ord(name)
            codes = [(code, bool(index)) for code, index in self.display.keysym_to_keycodes(keysym) if index < 2]
            self.keys_of[name] = min(codes, key=lambda pair: pair[1], default=(0, False))
        return self.keys_of[name]

    def _fake(self, kind, detail, **at):
        xtest.fake_input(self.display, kind, detail, **at)

    def key(self, chord):
        """As "ctrl+shift+Tab"."""
        names = {"ctrl": "Control_L", "shift": "Shift_L", "alt": "Alt_L"}
        *modifiers, last = [names.get(name, name) for name in chord.split("+")]
        code, shift = self._code(last)
        if not code:
            return
        held = [self._code(name)[0] for name in modifiers + ["Shift_L"] * (shift and "Shift_L" not in modifiers)]
        for modifier in held:
            self._fake(X.KeyPress, modifier)
        self._fake(X.KeyPress, code)
        self._fake(X.KeyRelease, code)
        for modifier in reversed(held):
            self._fake(X.KeyRelease, modifier)

    def type(self, text):
        for letter in text:
            self.key({"+": "plus", " ": "space", "\n": "Return"}.get(letter, letter))

    def move(self, x, y):
        x, y = (max(-0x8000, min(at, 0x7fff)) for at in (x, y))  # beside a very large window: as far as there is
        self._fake(X.MotionNotify, 0, x=x, y=y)

    def click(self, button, times=1):
        for _ in range(times):
            self._fake(X.ButtonPress, button)
            self._fake(X.ButtonRelease, button)

    def drag(self, start, end):
        self.move(*start)
        self._fake(X.ButtonPress, 1)
        for step in range(1, 9):
            self.move(*(round(a + (b - a) * step / 8) for a, b in zip(start, end)))
        self._fake(X.ButtonRelease, 1)

    def hold(self):
        """Takes the pointer, as another program."""
        self.root.grab_pointer(False, 0, X.GrabModeAsync, X.GrabModeAsync, X.NONE, X.NONE, X.CurrentTime)

    def let_go(self):
        self.display.ungrab_pointer(X.CurrentTime)

    def resize(self, window, width, height):
        window.configure(width=width, height=height)

    def send(self, window, what, serial=0):
        data = (32, [self.atoms[what], serial, window.id, 0, 0])
        window.send_event(protocol.ClientMessage(window=window, client_type=self.atoms[PROTOCOLS], data=data))

    def close(self, window):
        self.send(window, DELETE)

    def ping(self, window, serial):
        self.send(window, PING, serial)
        self.display.flush()
