import ctypes

from desk import Desk, Expect, Until
from desk.browsing import AnswerDelete, Select


class _AnyEvent(ctypes.Structure):
    _fields_ = [("type", ctypes.c_int), ("serial", ctypes.c_ulong), ("send_event", ctypes.c_int),
                ("display", ctypes.c_void_p), ("window", ctypes.c_ulong)]


class _Event(ctypes.Union):
    _fields_ = [("any", _AnyEvent), ("room", ctypes.c_long * 24)]


class ScreenEvents:
    """The bells and the new windows of a screen, in the order in which its server deals with them."""

    _core_keyboard = 0x100
    _bell_mask = 1 << 8
    _substructure_mask = 1 << 19
    _create = 16

    def __init__(self, display):
        self._x = ctypes.CDLL("libX11.so.6")
        self._x.XOpenDisplay.restype = ctypes.c_void_p
        self._x.XDefaultRootWindow.restype = ctypes.c_ulong
        self._display = ctypes.c_void_p(self._x.XOpenDisplay(display.encode()))
        numbers = [ctypes.c_int() for _ in range(5)]
        numbers[3].value, numbers[4].value = 1, 0  # the version of the keyboard extension
        if not self._x.XkbQueryExtension(self._display, *map(ctypes.byref, numbers)):
            raise SystemExit("the display server has no keyboard extension")
        self._bell = numbers[1].value
        self._x.XkbSelectEvents(self._display, self._core_keyboard, ctypes.c_ulong(self._bell_mask),
                                ctypes.c_ulong(self._bell_mask))
        root = ctypes.c_ulong(self._x.XDefaultRootWindow(self._display))
        self._x.XSelectInput(self._display, root, ctypes.c_long(self._substructure_mask))
        self._x.XSync(self._display, 0)

    def SoFar(self):
        """"bell" and "window" for each since the last call."""
        self._x.XSync(self._display, 0)
        names = []
        event = _Event()
        while self._x.XPending(self._display):
            self._x.XNextEvent(self._display, ctypes.byref(event))
            if event.any.type == self._bell:
                names.append("bell")
            elif event.any.type == self._create:
                names.append("window")
        return names


with Desk() as desk:
    desk.MakeRecord("Record1", ["+1.5"])
    desk.Window("Form1")["Command7"].Click()
    browser = desk.Window("Record_View_Form")
    Select(browser, "Record1")
    events = ScreenEvents(desk.environment["DISPLAY"])

    browser["Command3"].Click()
    box = desk.Message()
    seen = events.SoFar()
    Expect(seen.count("bell"), 1, f"bells in {seen}")
    Expect(seen[0], "bell", f"first of {seen}")
    box.Press("No")
    AnswerDelete(desk, browser, "Record1", "Yes")
    Until(lambda: not desk.RecordFile("Record1").exists(), "the record is deleted")
