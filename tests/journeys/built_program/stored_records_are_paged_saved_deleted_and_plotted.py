from desk import Desk, Expect, Until
from desk.browsing import AnswerDelete, AskToSave, Csv, Select

rows = 2500
first, last = 501, 2000  # of the plot: from -1.498 to +1.5
surface, row_height = (583, 334), 33.4  # of the plot, in pixels
step = 585 / (last - first)  # of a row


def Reading(row):
    return (row - 1250) / 500


def Readings(row):
    """Of all channels: the first two rise and fall, and the last one ends the reply."""
    return (f"{Reading(row):+.8E}", f"{-Reading(row):+.8E}", " ", "+9.90000000E+37", *[" "] * 15, f"+{row}.5\n")


def ExpectPage(numbers):
    """The first and the last rows of the page, and some between, are those of the record; there is no other row."""
    Until(lambda: Shown([2])[0][0] == str(numbers[0]), "the page comes")
    Expect(grid.RowCount(), len(numbers) + 2, "rows of the grid")
    places = [0, 1, len(numbers) // 2, len(numbers) - 1]
    Expect(Shown([place + 2 for place in places]), [stored[numbers[place] - 1] for place in places], "rows on show")


def Shown(rows):
    return [tuple(row) for row in grid.Cells(rows)]


def ExpectTurns(back, forward):
    Expect(browser.Enabled("prev_DB", "next_DB"), {"prev_DB": back, "next_DB": forward}, "the paging buttons")


def PickColour(name, colour):
    plot["color_box"].Click()
    dialog = desk.Dialog("Color")
    desk.Keys("alt+h", "ctrl+a")
    desk.XDo("type", "--delay", "10", name)
    desk.Keys("Return")
    dialog.WaitGone()
    Until(lambda: plot["color_box"].Picture().At(5, 5) == colour, f"the colour is {name}")


def Draw(channel):
    plot["Combo_chan"].Pick(channel)
    plot["Command1"].Click()


def Trace(colour, sign):
    """Columns that have the line of sign times the reading, in this colour; nothing else has it but the left edge, which
    the pen reaches from the zero line."""
    dots = plot["draw_pic"].Picture().Dots(colour)
    off = {(x, y) for x, y in dots if x and abs(y - (surface[1] / 2 - sign * Reading(first + x / step) * row_height)) > 1.5}
    Expect(off, set(), "dots beside the line")
    return {x for x, _ in dots}


def DragToTheEnd(slider):
    """Takes the thumb, which is at the start."""
    left, top, width, height = slider.Box()
    desk.XDo("mousemove", str(left + 6), str(top + height // 2), "mousedown", "1")
    desk.XDo("mousemove", str(left + width), str(top + height // 2), "mouseup", "1")


def ExpectCursor(row, column):
    Until(lambda: plot["Text1"].Text() == str(row), f"the cursor is at row {row}")
    Expect((plot["Slider1"].Range()[0], plot["show_value"].Text()), (row, stored[row - 1][column]), "the cursor")


with Desk() as desk:
    desk.MakeRecord("Record1", [Readings(row) for row in range(1, rows + 1)])
    desk.MakeRecord("Record2", ["+1.5", "+2.5"])
    stored = desk.Rows()
    main = desk.Window("Form1")

    # Pages, forward and back, with the mouse and the keys.
    main["Command7"].Click()
    browser = desk.Window("Record_View_Form")
    grid = browser["MSFlexGrid1"]
    Expect(sorted(browser["List1"].Entries()), ["Record1.mdb", "Record2.mdb"], "the list")
    Select(browser, "Record1")
    desk.Keys("Tab", "Tab", "space")
    ExpectPage(range(1, 1001))
    ExpectTurns(back=False, forward=True)
    browser["next_DB"].Click()
    ExpectPage(range(1001, 2001))
    ExpectTurns(back=True, forward=True)
    file = desk.folder / "page.csv"
    AskToSave(desk, browser, file).WaitGone()
    page = file.read_bytes()
    browser["next_DB"].Click()
    ExpectPage(range(2001, 2501))
    ExpectTurns(back=True, forward=False)
    browser["prev_DB"].Click()
    ExpectPage(range(1001, 2001))
    desk.Keys("space")
    ExpectPage(range(1, 1001))
    ExpectTurns(back=False, forward=True)

    Expect(page == Csv(stored[1000:2000]), True, "the file is the second page")

    # Only Yes deletes.
    AnswerDelete(desk, browser, "Record2", "No")
    Expect("Record2.mdb" in browser["List1"].Entries(), True, "it is still there")
    Expect(len(desk.Rows("Record2")), 2, "rows")
    AnswerDelete(desk, browser, "Record2", "Yes")
    Until(lambda: browser["List1"].Entries() == ["Record1.mdb"], "it is gone from the list")
    Expect(desk.RecordFile("Record2").exists(), False, "its file")
    browser["Command4"].Click()
    browser.WaitGone()

    # One channel of a range over another, in two colours.
    main["Command9"].Click()
    plot = desk.Window("Record_View_Draw")
    empty = plot["draw_pic"].Picture()
    plot["Combo_record"].Pick("Record1.mdb")
    Until(lambda: plot["Data_RecordCount"].Caption() == str(rows), "it counts the rows")
    plot["draw_limit"].Focus()
    Until(plot["draw_limit"].Checked, "a part is to be drawn")
    plot["draw_start"].Type(str(first))
    plot["draw_stop"].Type(str(last))
    red, green = (255, 0, 0), (0, 192, 0)
    PickColour("#ff0000", red)
    Draw("CH1")
    Until(lambda: Trace(red, 1) == set(range(surface[0])), "the first trace is there")
    ExpectCursor(first, 2)
    PickColour("#00c000", green)
    Draw("CH2")
    Until(lambda: Trace(green, -1) == set(range(surface[0])), "the second trace is there")
    hidden = set(range(surface[0])) - Trace(red, 1)
    Expect(all(abs(x - surface[0] / 2) < 20 for x in hidden), True, f"the first one still stands: {sorted(hidden)}")

    # The cursor reads what is stored of the channel that was drawn last.
    Until(plot["Slider1"].Enabled, "the slider is on")
    Expect(plot["Slider1"].Range(), (first, first, last), "value, minimum and maximum of the slider")
    plot["Combo_chan"].Pick("CH20")
    DragToTheEnd(plot["Slider1"])
    ExpectCursor(last, 3)
    for key, row in [("Left", last - 1), ("Home", first), ("Right", first + 1)]:
        desk.Keys(key)
        ExpectCursor(row, 3)
    plot["Slider1"].Click()
    Until(lambda: plot["Text1"].Text() != str(first + 1), "a click moves the cursor")
    ExpectCursor(int(plot["Slider1"].Range()[0]), 3)

    # Clean takes the traces and nothing else.
    plot["Command2"].Click()
    Until(lambda: plot["draw_pic"].Picture() == empty, "the plot is empty")
    Expect(plot["Slider1"].Range()[1:], (first, last), "the slider")
    Expect(desk.Rows(), stored, "the record")
