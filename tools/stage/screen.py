"""Looking at a display and working its pointer and keys."""

import os
import time

from PIL import Image
from Xlib import X, XK, Xutil, error
from Xlib import display as xdisplay
from Xlib.ext import res, xtest
from Xlib.protocol import event

from stage import processes

LEFT_BUTTON = 1
WHEEL_UP = 4
WHEEL_DOWN = 5
# wine shows a window, and then another one in its place.
UNDER_WINE = "ZANTO_WINE" in os.environ
WINE_SETTLES_SECONDS = 1
UNMANAGED_PLACE = 16  # pixels from the screen's top left corner


class Screen:
    """A connection to a display, real or virtual. A context manager.

    Positions are pixels from a window's top left corner.
    """

    def __init__(self, name):
        self.display = xdisplay.Display(name)
        self.root = self.display.screen().root
        self.display.res_query_version()  # requests of an extension come after the question for its version

    def __enter__(self):
        return self

    def __exit__(self, *_exception):
        self.display.close()

    def find_window(self, process_id, seconds=60):
        """Waits for the visible window of that process. Where no window manager has placed it, it is moved
        away from the screen's edge, over which it would hang."""
        window = processes.wait_until(lambda: self.window_of(process_id), seconds, "the game's window", 0.05)
        while UNDER_WINE:
            time.sleep(WINE_SETTLES_SECONDS)
            first, window = window, self.window_of(process_id)
            if window is not None and window == first and self.size(window) != (1, 1):
                break
        if window.query_tree().parent == self.root:
            window.configure(x=UNMANAGED_PLACE, y=UNMANAGED_PLACE)
            self.display.sync()
        return window

    def window_of(self, process_id):
        """The topmost visible window that belongs to that process, or None."""
        pending = [self.root]
        while pending:
            window = pending.pop()
            try:
                if self._owner(window) == process_id and self.exists(window):
                    return window
                pending += window.query_tree().children
            except (error.BadWindow, error.BadDrawable, error.BadValue):
                continue  # it went away while it was looked at
        return None

    def _owner(self, window):
        """The process that made the window, as the server knows it; None for the server's own."""
        owners = self.display.res_query_client_ids(
            [{"client": window.id, "mask": res.LocalClientPIDMask}]).ids
        return owners[0].value[0] if owners else None

    def exists(self, window):
        try:
            return window.get_attributes().map_state == X.IsViewable
        except (error.BadWindow, error.BadDrawable):
            return False

    def size(self, window):
        geometry = window.get_geometry()
        return geometry.width, geometry.height

    def move(self, window, x, y):
        """Puts the pointer at a place in the window."""
        place = window.translate_coords(self.root, 0, 0)
        # translate_coords gives where the root's origin lies as seen from the window.
        xtest.fake_input(self.display, X.MotionNotify, x=round(x) - place.x, y=round(y) - place.y)
        self.display.sync()

    def button(self, down, number=LEFT_BUTTON):
        xtest.fake_input(self.display, X.ButtonPress if down else X.ButtonRelease, number)
        self.display.sync()

    def click(self, window, x, y, number=LEFT_BUTTON):
        self.move(window, x, y)
        self.button(True, number)
        self.button(False, number)

    def key(self, window, character):
        """Types one letter into the window, with Shift for a capital."""
        self.focus(window)
        shift = self.display.keysym_to_keycode(XK.XK_Shift_L) if character.isupper() else None
        code = self.display.keysym_to_keycode(XK.string_to_keysym(character))
        if shift:
            xtest.fake_input(self.display, X.KeyPress, shift)
        xtest.fake_input(self.display, X.KeyPress, code)
        xtest.fake_input(self.display, X.KeyRelease, code)
        if shift:
            xtest.fake_input(self.display, X.KeyRelease, shift)
        self.display.sync()

    def focus(self, window):
        """Sends keys to the window, as a window manager would."""
        window.set_input_focus(X.RevertToPointerRoot, X.CurrentTime)
        self.display.sync()

    def press_close_button(self, window):
        """What a window manager sends when the window's close button is pressed."""
        protocols = self.display.intern_atom("WM_PROTOCOLS")
        delete = self.display.intern_atom("WM_DELETE_WINDOW")
        window.send_event(event.ClientMessage(window=window, client_type=protocols,
                                              data=(32, [delete, X.CurrentTime, 0, 0, 0])))
        self.display.sync()

    def is_managed(self):
        """Whether a window manager takes windows. One that has only announced itself may forget them for ever."""
        probe = self.root.create_window(0, 0, 100, 100, 0, X.CopyFromParent)
        probe.map()
        try:
            processes.wait_until(lambda: probe.query_tree().parent != self.root, 0.2, "a window's frame")
        except processes.TimedOut:
            return False
        finally:
            probe.destroy()
            self.display.sync()
        return True

    def minimise(self, window):
        """Asks the window manager for it."""
        change = event.ClientMessage(window=window, client_type=self.display.intern_atom("WM_CHANGE_STATE"),
                                     data=(32, [Xutil.IconicState, 0, 0, 0, 0]))
        self.root.send_event(change, event_mask=X.SubstructureRedirectMask | X.SubstructureNotifyMask)
        self.display.sync()
        processes.wait_until(lambda: not self.exists(window), 20, "the window to go")

    def restore(self, window):
        window.map()
        self.display.sync()
        # Window managers map it outside the screen first.
        processes.wait_until(lambda: self.exists(window) and self._in_sight(window), 20, "the window to come back")

    def _in_sight(self, window):
        place = window.translate_coords(self.root, 0, 0)
        width, height = self.size(window)
        whole = self.root.get_geometry()
        return 0 <= -place.x <= whole.width - width and 0 <= -place.y <= whole.height - height

    def resize(self, window, width, height):
        window.configure(width=width, height=height)
        self.display.sync()
        processes.wait_until(lambda: self.size(window) == (width, height), 20, "the window's new size")

    def picture(self, window):
        """What the window shows, as an RGB image."""
        width, height = self.size(window)
        content = window.get_image(0, 0, width, height, X.ZPixmap, 0xFFFFFFFF)
        return Image.frombytes("RGB", (width, height), content.data, "raw", "BGRX")


class PoliteScreen(Screen):
    """A display that somebody else is working at: events go to the window alone, pointer and focus stay theirs."""

    def __init__(self, name):
        super().__init__(name)
        self.window = None
        self.place = (0, 0)
        self.held = 0  # the state bits of the buttons that are down

    def _event(self, kind, detail, state):
        x, y = self.place
        fields = {"time": X.CurrentTime, "root": self.root, "window": self.window, "child": X.NONE,
                  "root_x": x, "root_y": y, "event_x": x, "event_y": y, "state": state, "same_screen": 1,
                  "detail": detail}
        self.window.send_event(kind(**fields))
        self.display.sync()

    def move(self, window, x, y):
        self.window = window
        self.place = (round(x), round(y))
        self._event(event.MotionNotify, 0, self.held)

    def button(self, down, number=LEFT_BUTTON):
        bit = X.Button1Mask << (number - 1)
        self._event(event.ButtonPress if down else event.ButtonRelease, number, self.held)
        self.held = self.held | bit if down else self.held & ~bit

    def key(self, window, character):
        self.window = window
        code = self.display.keysym_to_keycode(XK.string_to_keysym(character))
        state = X.ShiftMask if character.isupper() else 0
        self._event(event.KeyPress, code, state)
        self._event(event.KeyRelease, code, state)

    def focus(self, window):
        pass  # the keys come without it


def usable(name):
    """Whether there is a display of that name that lets one in."""
    if not name:
        return False
    try:
        xdisplay.Display(name).close()
    except Exception:  # whatever keeps one out: no server, no authority, no protocol that is spoken here
        return False
    return True
