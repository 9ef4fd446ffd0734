"""The built program on a screen, an accessibility bus and in a folder of its own, for a test that reads what a user sees.

Called as TEST PROGRAM BENCH_FOLDER. What the program shows is read from the accessibility bus, as a screen reader does it;
what the user does are events of the X server. Windows, controls and menu entries go by their names in src/windows: the
accessible children of a window stand in the order in which window-places tells its controls.

    with Desk(bench) as desk:
        main = desk.Window("Form1")
        desk.Connect()
        main["Command3"].Click()
        box = desk.Message()            # box.title, box.text, box.buttons
        box.Press("OK")
        Expect(main.Enabled("Command3"), {"Command3": True})

Everything that a Desk starts ends with it. Waiting is asking again until it is so, Until(...).
"""

import contextlib
import os
import pathlib
import re
import shutil
import signal
import sqlite3
import subprocess
import sys
import tempfile
import time

from gi.repository import GLib

from desk import accessibility as a11y

VERSION = re.search(r"project\(vantrel VERSION (\S+)",
                    pathlib.Path(__file__).parents[4].joinpath("CMakeLists.txt").read_text()).group(1)
_name_of_the_test = pathlib.Path(sys.argv[0]).stem

quick_bench = pathlib.Path(__file__).parents[1].joinpath("quick.bench").read_text()


class Failure(Exception):
    """What a user sees is not what it should be."""


def Expect(seen, expected, what=""):
    """Fails unless both are equal. Of two dicts, only the entries that differ are told."""
    if seen == expected:
        return
    if isinstance(seen, dict) and isinstance(expected, dict):
        differ = [key for key in seen.keys() | expected.keys() if seen.get(key) != expected.get(key)]
        seen, expected = ({key: side.get(key) for key in sorted(differ)} for side in (seen, expected))
    raise Failure(f"{what}\n  seen:     {seen!r}\n  expected: {expected!r}")


def Until(condition, what, seconds=a11y.hang_on, pause=0.02):
    """Asks again until `condition` holds, and gives its value; fails if it does not hold in time."""
    end = time.monotonic() + seconds
    while True:
        value = condition()
        if value:
            return value
        if time.monotonic() > end:
            raise Failure(f"not within {seconds} s: {what}")
        time.sleep(pause)


def _StateOf(process):
    """Letter of its state: S when it waits for something to do, T when it is stopped."""
    return pathlib.Path(f"/proc/{process.pid}/stat").read_text().rsplit(")", 1)[1].split()[0]


# ---- Windows


class _Design:
    """What a window consists of: its caption, and its controls and menu entries in their order."""

    def __init__(self, caption):
        self.caption = caption
        self.controls = []  # names, in order
        self.in_frames = {}  # names by the frame that they stand in
        self.on_tabs = {}  # names by the tab strip that they stand on, page by page
        self.menus = []  # (name, names of its entries, separators included)

    def AddControl(self, name, window, parent):
        strip, is_page, page = parent.partition("[")
        if parent == window:
            self.controls.append(name)
        elif is_page:
            pages = self.on_tabs.setdefault(strip, [])
            while len(pages) <= int(page.rstrip("]")):
                pages.append([])
            pages[-1].append(name)
        else:
            self.in_frames.setdefault(parent, []).append(name)


def _DesignsOf(program):
    """What the windows of a program consist of, by their names: window-places beside it tells."""
    told = subprocess.run([program.with_name("window-places")], stdout=subprocess.PIPE, text=True, check=True).stdout
    designs = {}
    for kind, window, *fields in (line.split("\t") for line in told.splitlines()):
        if kind == "window":
            designs[window] = _Design(fields[2])
        elif kind == "control":
            designs[window].AddControl(fields[0], window, fields[1])
        elif kind == "menu":
            designs[window].menus.append((fields[0], []))
        elif kind == "entry":
            designs[window].menus[-1][1].append(fields[0])
    return designs


class _Window:
    """A window on the screen. window["Command3"] is its control or menu entry of that name."""

    def __init__(self, desk, node, design):
        self._desk, self._node = desk, node
        bus = desk.bus
        children = bus.Children(node)
        client = next(child for child, role in zip(children, bus.Roles(children)) if role == "filler")
        self._nodes = dict(zip(design.controls, bus.Children(client)))
        for frame, names in design.in_frames.items():
            self._nodes.update(zip(names, bus.Children(self._nodes[frame])))
        for tabs, pages in design.on_tabs.items():
            for names, page in zip(pages, bus.Children(bus.Children(self._nodes[tabs])[0])):
                self._nodes.update(zip(names, bus.Children(page)))
        self._menu_of = {}
        if design.menus:
            self._FindMenus(children, design)

    def _FindMenus(self, children, design):
        bus = self._desk.bus
        bar = next(child for child, role in zip(children, bus.Roles(children)) if role == "menu bar")
        for (menu, entries), top in zip(design.menus, bus.Children(bar)):
            self._nodes[menu] = top
            self._menu_of[menu] = None
            if entries:
                popup, = bus.Children(top)
                self._nodes.update(zip(entries, bus.Children(popup)))
                self._menu_of.update((entry, menu) for entry in entries)

    def __getitem__(self, name):
        return Control(self._desk, self._nodes[name], name)

    def Names(self):
        """Of all controls and menu entries."""
        return list(self._nodes)

    def _Tell(self, ask, names):
        names = names or self.Names()
        return dict(zip(names, ask([self._nodes[name] for name in names])))

    def Captions(self, *names):
        """What a screen reader calls each of these, or of all: the caption if it has one."""
        return self._Tell(self._desk.bus.Names, names)

    def ToolTips(self, *names):
        return self._Tell(self._desk.bus.Descriptions, names)

    def Enabled(self, *names):
        return self._Tell(lambda nodes: [bool(s >> a11y.enabled & 1) for s in self._desk.bus.States(nodes)], names)

    def Checked(self, *names):
        return self._Tell(lambda nodes: [bool(s >> a11y.checked & 1) for s in self._desk.bus.States(nodes)], names)

    def Roles(self, *names):
        return self._Tell(self._desk.bus.Roles, names)

    def Visible(self, *names):
        return self._Tell(lambda nodes: [bool(s >> a11y.showing & 1) for s in self._desk.bus.States(nodes)], names)

    def Menu(self, name):
        """Picks a menu entry, with the mouse."""
        if self._menu_of[name]:
            self.OpenMenuOf(name)
        self[name].Click()

    def OpenMenuOf(self, name):
        """Opens the menu in which a menu entry stands."""
        menu = self._menu_of[name]
        self[menu].Click()
        Until(lambda: self.Visible(name)[name], f"the menu {menu} opens")

    def Title(self):
        return self._desk.bus.Names([self._node])[0]

    def TitleBar(self):
        """What the window manager has for this window, which is the active one."""
        return self._desk.ActiveTitle()

    def Box(self):
        return self._desk.bus.Box(self._node)

    def WaitGone(self):
        self._desk.WaitGone(self._node, "the window")


class Control:
    def __init__(self, desk, node, name):
        self._desk, self._bus, self._node, self.name = desk, desk.bus, node, name

    def _State(self, bit):
        return bool(self._bus.States([self._node])[0] >> bit & 1)

    def Caption(self):
        return self._bus.Names([self._node])[0]

    def ToolTip(self):
        return self._bus.Descriptions([self._node])[0]

    def Enabled(self):
        return self._State(a11y.enabled)

    def Visible(self):
        return self._State(a11y.showing)

    def Checked(self):
        return self._State(a11y.checked)

    def HasFocus(self):
        return self._State(a11y.focused)

    def Box(self):
        """Left, top, width and height in pixels of the screen."""
        return self._bus.Box(self._node)

    def Middle(self):
        """Where a click lands on it."""
        left, top, width, height = self.Box()
        return left + width // 2, top + height // 2

    def Click(self):
        self._desk.ClickAt(*self.Middle())

    def Part(self, caption):
        """A control within this one, as the "Up" of an up-down."""
        parts = self._bus.Children(self._node)
        return Control(self._desk, parts[self._bus.Names(parts).index(caption)], f"{self.name}.{caption}")

    # Fields: of text boxes, combo boxes and pickers

    def Text(self):
        for node in [self._node] + self._bus.Children(self._node):
            try:
                return self._bus.Texts([node])[0]
            except GLib.Error:
                pass  # no field
        raise Failure(f"{self.name} has no text")

    def Focus(self):
        """Clicks into the field if it does not have the focus. Keys that follow are not to overtake the click, which goes
        through the window manager."""
        if not self.HasFocus():
            left, top, _, height = self.Box()
            self._desk.ClickAt(left + 8, top + height // 2)
            Until(self.HasFocus, f"{self.name} gets the focus")

    def Type(self, text):
        """Puts a text in place of what the field holds."""
        self.Focus()
        self._desk.Keys("ctrl+a")
        self._desk.XDo("type", "--delay", "10", "--", text)

    def Entries(self):
        """Of a list box, or of the list of a combo box."""
        return self._bus.Names([row[0] for row in self._bus.Cells(self._List())])

    def _List(self):
        return self._node if self._bus.Roles([self._node]) == ["list"] else self._bus.Children(self._node)[0]

    def Pick(self, entry):
        """Picks an entry, by its text, from the list of a combo box."""
        place = self.Entries().index(entry)
        left, top, width, height = self.Box()
        self._desk.ClickAt(left + width - 7, top + height // 2)
        popup = self._bus.Children(self._node)[0]
        Until(lambda: self._bus.States([popup])[0] >> a11y.showing & 1, f"the list of {self.name} opens")
        self._desk.Keys("Home", *["Down"] * place, "Return")
        # An open list would swallow the next click.
        Until(lambda: not self._bus.States([popup])[0] >> a11y.showing & 1, f"the list of {self.name} closes")

    # List boxes

    def Entry(self, text):
        """An entry as a control: Box, Click."""
        nodes = [row[0] for row in self._bus.Cells(self._node)]
        return Control(self._desk, nodes[self._bus.Names(nodes).index(text)], f"{self.name}[{text}]")

    def Selected(self):
        """Texts of the selected entries; None while the list changes."""
        try:
            rows = [row[0] for row in self._bus.Cells(self._node)]
            return [name for name, state in zip(self._bus.Names(rows), self._bus.States(rows))
                    if state >> a11y.selected & 1]
        except GLib.Error:
            return None

    # Sliders

    def Range(self):
        """Value, minimum and maximum."""
        return tuple(self._bus.Values(self._node))

    # Tab strips

    def Tabs(self):
        """(caption, is current) of the tabs that are seen."""
        current = 1 << a11y.focused | 1 << a11y.selected  # either, depending on the release of Qt
        return [(name, bool(state & current)) for name, state, is_seen in self._AllTabs() if is_seen]

    def HiddenTabs(self):
        """Captions of the other tabs."""
        return [name for name, _, is_seen in self._AllTabs() if not is_seen]

    def _AllTabs(self):
        nodes = self._bus.Children(self._bus.Children(self._node)[-1])
        nodes = [node for node, role in zip(nodes, self._bus.Roles(nodes)) if role == "page tab"]
        is_seen = [self._bus.Box(node)[2] > 0 for node in nodes]  # a hidden one has no size
        return zip(self._bus.Names(nodes), self._bus.States(nodes), is_seen)

    # Grids

    def RowCount(self):
        """Of all rows, fixed ones and those out of sight included."""
        return self._bus.Size(self._node)[0]

    def Cells(self, rows=None):
        """The texts, row by row: of all rows, or of these, by their number from 0."""
        cells = self._bus.Cells(self._node, rows)
        texts = iter(self._bus.Names([node for row in cells for node in row]))
        return [[next(texts) for _ in row] for row in cells]

    def Cell(self, row, column):
        """A cell as a control: Box, Click, Picture."""
        return Control(self._desk, self._bus.Cells(self._node, [row])[0][column], f"{self.name}[{row}][{column}]")

    # Looks

    def Picture(self):
        return Picture(self._desk, *self.Box())


class Picture:
    """A part of the screen as it looks now."""

    def __init__(self, desk, left, top, width, height):
        self.width, self.height = width, height
        self._bytes = subprocess.run(
            ["import", "-silent", "-window", "root", "-crop", f"{width}x{height}+{left}+{top}", "-depth", "8", "rgb:-"],
            env=desk.environment, stdout=subprocess.PIPE, check=True).stdout

    def __eq__(self, other):
        return (self.width, self._bytes) == (other.width, other._bytes)

    def At(self, x, y):
        """Red, green and blue."""
        place = 3 * (y * self.width + x)
        return tuple(self._bytes[place:place + 3])

    def Dots(self, colour):
        """(x, y) of the pixels of this colour."""
        pixels = zip(*[iter(self._bytes)] * 3)
        return {(i % self.width, i // self.width) for i, pixel in enumerate(pixels) if pixel == colour}


class _Message:
    """A message box."""

    def __init__(self, desk, node):
        self._desk, self._node = desk, node
        bus = desk.bus
        self.title = bus.Names([node])[0]
        self.title_bar = desk.ActiveTitle()
        parts = list(self._Parts(node))
        seen = [part for part, state in zip(parts, bus.States(parts)) if state >> a11y.showing & 1]
        names, roles = bus.Names(seen), bus.Roles(seen)
        self.text, = (name for name, role in zip(names, roles) if role == "label")
        self._buttons = {name: part for part, name, role in zip(seen, names, roles) if role == "push button"}
        self.buttons = list(self._buttons)

    def _Parts(self, node):
        for child in self._desk.bus.Children(node):
            yield child
            yield from self._Parts(child)

    def Press(self, button):
        Control(self._desk, self._buttons[button], button).Click()
        self.WaitGone()

    def WaitGone(self):
        self._desk.WaitGone(self._node, "the message box")


class _Dialog:
    """A dialog of the toolkit, with nothing in it that a test knows but where the keys go."""

    def __init__(self, desk, node):
        self._desk, self._node = desk, node

    def WaitGone(self):
        self._desk.WaitGone(self._node, "the dialog")


# ---- The desk


class Desk:
    def __init__(self, bench=quick_bench, environment=None, with_library=True):
        """The instruments on the bench are found through a VISA library, unless the desk is to have none."""
        self._program_file, self._bench_folder = (pathlib.Path(argument) for argument in sys.argv[1:3])
        self._designs = _DesignsOf(self._program_file)
        self._bench = bench
        self._has_library = with_library
        self._started = []  # processes, in the order of starting
        self._runtime = pathlib.Path(tempfile.mkdtemp())  # of the screen and the buses
        # The program finds its records beside itself: here it has a folder of its own, on the same disk for a link to do.
        self.folder = pathlib.Path(tempfile.mkdtemp(prefix="desk.", dir=".")).resolve()
        self.wire_file = self.folder / "wire"
        self._calls_file = self.folder / "calls"
        self.environment = {**os.environ, **(environment or {})}

    def __enter__(self):
        signal.signal(signal.SIGTERM, lambda *_: sys.exit(143))
        try:
            self._StartScreen()
            self._StartBus()
            self._PutProgram()
            self._StartProgram()
            self.Window("Form1")
        except BaseException:
            self.__exit__(*sys.exc_info())
            raise
        return self

    def __exit__(self, fault, *_):
        if fault and "DISPLAY" in self.environment:
            subprocess.run(["import", "-silent", "-window", "root", _name_of_the_test + ".png"], env=self.environment)
        self._CleanUp()

    def _CleanUp(self):
        for process in reversed(self._started):
            process.terminate()
            try:
                process.wait(timeout=5)
            except subprocess.TimeoutExpired:
                process.kill()
                process.wait()
        shutil.rmtree(self.folder, ignore_errors=True)
        shutil.rmtree(self._runtime, ignore_errors=True)

    def _Start(self, *command, **options):
        log = open(self._runtime / (pathlib.Path(command[0]).name + ".log"), "w")
        process = subprocess.Popen(command, env=self.environment, stdin=subprocess.DEVNULL, stdout=log, stderr=log,
                                   **options)
        self._started.append(process)
        return process

    def _StartTelling(self, *command):
        """Starts a program that tells a line on the file descriptor whose number ends its command; gives that line."""
        reads, writes = os.pipe()
        self._Start(*command[:-1], command[-1] + str(writes), pass_fds=[writes])
        os.close(writes)
        with os.fdopen(reads) as told:
            line = told.readline().strip()
        if not line:
            raise Failure(f"{command[0]} does not start")
        return line

    def _StartScreen(self):
        for name in ("DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM", "QT_SCALE_FACTOR"):
            self.environment.pop(name, None)
        screen = self._StartTelling("Xvfb", "-screen", "0", "1600x900x24", "-nolisten", "tcp", "-noreset", "-displayfd", "")
        self.environment.update(DISPLAY=":" + screen, XDG_RUNTIME_DIR=str(self._runtime))
        # A window that comes while the window manager still starts does not become the active one.
        runs = self._runtime / "openbox.runs"
        self._Start("openbox", "--startup", f"touch {runs}")
        Until(runs.exists, "openbox manages the windows")

    def _StartBus(self):
        socket = f"--address=unix:path={self._runtime}/session"
        address = self._StartTelling("dbus-daemon", "--session", "--nofork", "--nopidfile", socket, "--print-address=")
        self.environment.update(DBUS_SESSION_BUS_ADDRESS=address, QT_LINUX_ACCESSIBILITY_ALWAYS_ON="1")
        self.bus = a11y.Bus(address)

    def _PutProgram(self):
        (self.folder / "db").mkdir()
        try:
            os.link(self._program_file, self.folder / "vantrel")
        except OSError:
            shutil.copy2(self._program_file, self.folder / "vantrel")
        (self.folder / "desk.bench").write_text(self._bench)
        self.put_there = {"vantrel", "desk.bench", self.wire_file.name, self._calls_file.name}
        path = [str(self._bench_folder)] * self._has_library + self.environment.get("LD_LIBRARY_PATH", "").split(":")
        self.environment.update(LD_LIBRARY_PATH=":".join(filter(None, path)), VANTREL_BENCH=str(self.folder / "desk.bench"),
                                VANTREL_BENCH_LOG=str(self.wire_file), VANTREL_BENCH_CALLS=str(self._calls_file))

    def _StartProgram(self, *words):
        self.program = self._Start(str(self.folder / "vantrel"), *words)
        self._root = Until(self.bus.Root, "the program is on the accessibility bus")

    def Kill(self):
        """Ends the program without a chance for it to do anything more."""
        self.program.kill()
        self.program.wait()

    def Restart(self, *words):
        """Starts the program, which has ended, once more, with these words behind its name. It comes up with its main
        window, or a message box before it."""
        Until(lambda: not self.bus.Root(), "the old program leaves the accessibility bus")
        self._StartProgram(*words)

    # What is on the screen

    def WindowNodes(self):
        if self.program.poll() is not None:
            log = (self._runtime / "vantrel.log").read_text()
            raise Failure(f"the program has ended with status {self.program.returncode}: {log}")
        return self.bus.Children(self._root)

    def IsOnScreen(self, node):
        """Whether a window is; one that is only hidden stays on the bus."""
        if self.program.poll() is not None:
            return False
        try:
            return node in self.bus.Children(self._root) and self.bus.States([node])[0] >> a11y.showing & 1
        except GLib.Error:
            return False  # it has gone between the two questions

    def WaitGone(self, node, what):
        """Waits until this window has gone and another one has the keys: what lay under it takes clicks from then on."""
        Until(lambda: not self.IsOnScreen(node), f"{what} goes")
        Until(lambda: self.program.poll() is not None or self._HasActive(), f"another window takes the place of {what}")

    def _HasActive(self):
        try:
            return any(state >> a11y.active & 1 for state in self.bus.States(self.bus.Children(self._root)))
        except GLib.Error:
            return False  # one has gone between the two questions

    def _Up(self, fits):
        """The window that `fits`, once it is active and at rest; None before."""
        nodes = self.WindowNodes()
        try:
            for node, state in zip(nodes, self.bus.States(nodes)):
                if not state >> a11y.active & 1 or not fits(node):
                    continue
                box = self.bus.Box(node)
                time.sleep(0.02)
                if box == self.bus.Box(node):
                    return node
        except GLib.Error:
            pass  # one has gone meanwhile
        return None

    def Window(self, name):
        """Waits for a window, by its name, until it is up."""
        design = self._designs[name]

        def Fits(node):
            if self.bus.Names([node])[0].strip() != design.caption:
                return False
            children = self.bus.Children(node)
            fillers = [child for child, role in zip(children, self.bus.Roles(children)) if role == "filler"]
            return len(fillers) == 1 and len(self.bus.Children(fillers[0])) == len(design.controls)

        return _Window(self, Until(lambda: self._Up(Fits), f"the window {name} comes"), design)

    def Message(self):
        """Waits for a message box."""
        return _Message(self, Until(lambda: self._Up(self._IsMessage), "a message box comes"))

    def Dialog(self, title):
        """Waits for a dialog of the toolkit, for a file or a colour. Keys go to it."""
        return _Dialog(self, Until(lambda: self._Up(lambda node: self.bus.Names([node])[0] == title), f"{title} comes"))

    def _IsMessage(self, node):
        return self.bus.Roles([node])[0].startswith("alert")

    def Windows(self):
        """Titles of all windows on the screen, message boxes included."""
        return Until(self._Titles, "the windows on the screen stay")

    def _Titles(self):
        nodes = self.WindowNodes()
        try:
            return [name for name, state in zip(self.bus.Names(nodes), self.bus.States(nodes))
                    if state >> a11y.showing & 1]
        except GLib.Error:
            return None  # one has gone meanwhile

    def ActiveTitle(self):
        """What the title bar of the active window shows."""
        told = subprocess.run(["xdotool", "getwindowfocus", "getwindowname"], env=self.environment, capture_output=True,
                              text=True, check=True).stdout
        return told.removesuffix("\n")

    # Hands

    def XDo(self, *arguments):
        subprocess.run(["xdotool", *arguments], env=self.environment, check=True)

    def ClickAt(self, x, y):
        self.XDo("mousemove", str(x), str(y), "click", "1")

    def Keys(self, *keys):
        self.XDo("key", "--delay", "30", *keys)

    def CloseRequest(self):
        """Asks the active window to close, as its close box does."""
        self.Keys("alt+F4")

    @contextlib.contextmanager
    def Held(self, message, dev=0):
        """Holds the program right behind this message to the instrument at place `dev`; events that come meanwhile, as
        by ClickAt, come to it when it goes on, at the first yield behind that message. The accessibility bus does not
        answer meanwhile."""
        Until(lambda: self._Hold((dev, ">", message + "\\n")), f"the program is held behind {message}")
        try:
            yield
            Until(lambda: all(_StateOf(process) == "S" for process in self._started if process is not self.program),
                  "the events are with the program")
        finally:
            self.program.send_signal(signal.SIGCONT)

    def _Hold(self, last):
        if self.Wire()[-1:] != [last]:
            return False
        self.program.send_signal(signal.SIGSTOP)
        Until(lambda: _StateOf(self.program) == "T", "the program stands still")
        if self.Wire()[-1:] == [last]:
            return True
        self.program.send_signal(signal.SIGCONT)  # too late: it has gone on
        return False

    # Whole steps

    def Connect(self, *rows):
        """Ticks these rows of the Connect dialog and no others, or the first one, and waits until the devices are there.
        Gives the rows that came up ticked."""
        self.Window("Form1").Menu("Connected_to_Instrument")
        connect = self.Window("Connect")
        boxes = [f"Check1({row})" for row in range(len(connect["MSFlexGrid1"].Cells()) - 1)]
        ticked = list(connect.Checked(*boxes).values()) if boxes else []
        for row, box in enumerate(boxes):
            wanted = row in (rows or [0])
            if ticked[row] != wanted:
                connect[box].Click()
                Until(lambda: connect[box].Checked() == wanted, f"the tick of row {row} changes")
        connect["Command2"].Click()
        connect.WaitGone()
        Until(lambda: self.Window("Form1")["Command3"].Enabled(), "Start is on")
        return [row for row, tick in enumerate(ticked) if tick]

    def AssignRecord(self, record="Record1", dev=0):
        """Sets the record of a device."""
        self.AssignRecords({dev: record})

    def AssignRecords(self, records):
        """Sets the records of devices, {dev: record}."""
        self.Window("Form1")["Command10"].Click()
        dialog = self.Window("DB_SET")
        for dev, record in records.items():
            dialog[f"Combo1({dev})"].Pick(record)
            Until(lambda: dialog[f"Combo1({dev})"].Text() == record, f"device {dev} has {record}")
        dialog["OK"].Click()
        dialog.WaitGone()

    # What it leaves behind

    def Wire(self):
        """Every exchange so far, as (place of the instrument, ">" to it or "<" from it, the text as the log quotes it)."""
        lines = self.wire_file.read_text().splitlines() if self.wire_file.exists() else []
        return [(int(place), arrow, text[1:-1]) for place, arrow, text in (line.split(" ", 2) for line in lines)]

    def Sent(self, dev=0):
        """What was sent to the instrument at this place."""
        return [text for place, arrow, text in self.Wire() if place == dev and arrow == ">"]

    def MakeRecord(self, record, readings, first=1):
        """A record as the program leaves one, with a row for each of these readings, which are those of channel 1, or of
        as many channels as there are in a tuple. The rows are numbered from `first`."""
        columns = ["NUM", "Time"] + [f"Ch{ch}" for ch in range(1, 21)]

        def Row(num, reading):
            channels = (reading,) if isinstance(reading, str) else reading
            return (str(num), "2024-05-06 07:08:09", *channels, *[" "] * (20 - len(channels)))

        with self.Engine(record) as engine:
            engine.execute(f"create table DATA ({', '.join(column + ' TEXT' for column in columns)})")
            engine.executemany(f"insert into DATA values ({', '.join('?' * len(columns))})",
                               (Row(num, reading) for num, reading in enumerate(readings, first)))

    @contextlib.contextmanager
    def Engine(self, record):
        """A record file in another hand, for one commit."""
        with contextlib.closing(sqlite3.connect(self.RecordFile(record))) as engine, engine:
            yield engine

    def RecordFile(self, record):
        return self.folder / "db" / f"{record}.mdb"

    def WaitForSilence(self):
        """Waits until nothing goes over the wire any more: a poll would do so every quarter of a second."""
        seen, since = None, 0

        def IsSilent():
            nonlocal seen, since
            wire = self.wire_file.stat().st_size
            if wire != seen:
                seen, since = wire, time.monotonic()
            return time.monotonic() - since > 0.6

        Until(IsSilent, "the wire falls silent")

    def Calls(self):
        """Every call of the VISA library so far, as (text, status)."""
        return [(text, int(status, 16)) for text, status in
                (line.rsplit(" ", 1) for line in self._calls_file.read_text().splitlines())]

    def Rows(self, record="Record1"):
        """Rows of a record file, in stored order."""
        file = self.RecordFile(record)
        if not file.exists():
            return []
        engine = sqlite3.connect(f"{file.as_uri()}?mode=ro", uri=True)
        try:
            return engine.execute("select * from DATA order by rowid").fetchall()
        except sqlite3.OperationalError:
            return []  # not made yet, or being written
        finally:
            engine.close()

    def WaitEnd(self):
        """The exit status, once the program has ended by itself."""
        try:
            return self.program.wait(a11y.hang_on)
        except subprocess.TimeoutExpired:
            raise Failure("the program does not end") from None
