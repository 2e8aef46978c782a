"""Owners of the clipboard as they are met in the wild: slow, gone, wrong."""
import select
import threading
import time

import Xlib.display
import Xlib.error
from Xlib import X, Xatom
from Xlib.protocol import event as protocol

TEXTS = {
    "text": "/usr/include\n/usr/lib\n".encode(),
    "bytes": b"\xff\xfe\x80/tmp/\xe2\x28\xa1\xf0\x28\x8c\x28 \xc0\xaf\x00 behind",
    "overrides": "exe\u202egnp.\u202d \u2066\u202b/\u0301\u0301\u0301\r\n\t\u2028".encode(),
    "long": b"/very/long" * 1500,  # the toolkit's own fields of one line are slow with several times that
    "late": b"/usr/late",  # when whoever asked for it may have gone
}
KINDS = [*TEXTS, "silent", "vanishes", "nothing", "numbers", "endless"]


class Owner(threading.Thread):
    """Owns the clipboard until somebody else does; of a kind that serves a text, or another one."""

    def __init__(self, kind):
        super().__init__(daemon=True)
        self.kind, self.speaks = kind, None
        self.owns, self.gave_text = threading.Event(), threading.Event()
        self.start()
        self.owns.wait(5)

    def run(self):
        self.display = Xlib.display.Display()
        self.display.set_error_handler(lambda *_: None)
        self.atom = self.display.intern_atom
        self.window = self.display.screen().root.create_window(0, 0, 1, 1, 0, X.CopyFromParent)
        for name in ("CLIPBOARD", "PRIMARY"):
            self.window.set_selection_owner(self.atom(name), X.CurrentTime)
        self.display.sync()
        self.owns.set()
        try:
            while True:
                event = self.display.next_event()
                if event.type == X.SelectionClear and event.atom == self.atom("CLIPBOARD"):
                    break
                if event.type == X.SelectionRequest and not self.serve(event):
                    break
        except (Xlib.error.ConnectionClosedError, Xlib.error.XError, select.error):
            pass
        self.display.close()

    def serve(self, request):
        """False when the owner goes."""
        property_ = request.property or request.target
        put = request.requestor.change_property
        if self.kind == "silent":  # for as long as a user waits; the toolkit would for half a minute, and opens no menu
            self.speaks = self.speaks or time.monotonic() + 5
            time.sleep(max(0, self.speaks - time.monotonic()))
        if request.target == self.atom("TARGETS"):
            targets = [self.atom("TARGETS"), self.atom("UTF8_STRING"), Xatom.STRING, self.atom("text/uri-list")]
            put(property_, Xatom.ATOM, 32, targets)
        elif self.kind in TEXTS:
            if self.kind == "late":
                time.sleep(1)
            put(property_, request.target, 8, TEXTS[self.kind])
        elif self.kind == "numbers":
            put(property_, Xatom.INTEGER, 32, [1, 2, 3])
        elif self.kind in ("nothing", "silent"):
            property_ = X.NONE
        else:  # in parts, of which the first comes
            put(property_, self.atom("INCR"), 32, [1000000])
        request.requestor.send_event(protocol.SelectionNotify(
            time=request.time, requestor=request.requestor, selection=request.selection, target=request.target,
            property=property_))
        if self.kind in ("vanishes", "endless") and request.target != self.atom("TARGETS"):
            self.display.sync()
            put(property_, request.target, 8, b"begun, ")
            self.display.sync()
            return self.kind == "endless"
        self.display.sync()
        if self.kind in TEXTS and request.target != self.atom("TARGETS"):
            self.gave_text.set()
        return True
