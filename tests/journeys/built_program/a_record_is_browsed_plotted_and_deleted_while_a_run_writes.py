from desk import Desk, Expect, Until, quick_bench
from desk.browsing import AnswerDelete, OpenRecord
from desk.contents import ExpectMessage
from desk.runs import ExpectSound

surface = 583  # columns of the plot
scanner = quick_bench[quick_bench.index("instrument"):]
two_scanners = "pace 1\npause 1\n" + scanner + scanner.replace("::7::", "::8::")


def Run(rows):
    """Starts a run and waits until Record1 has this many rows."""
    main["Command3"].Click()
    WaitRows(rows)


def Stop():
    main["Command4"].Click()
    ExpectMessage(desk, "End of Job.")


def WaitRows(count):
    return Until(lambda: len(desk.Rows()) >= count and desk.Rows(), f"{count} rows are stored")


def ExpectGoesOn():
    WaitRows(len(desk.Rows()) + 1)


def OpenBrowser():
    main["Command7"].Click()
    return desk.Window("Record_View_Form")


def CloseBrowser():
    """It may lie over the buttons of the main window."""
    browser["Command4"].Click()
    browser.WaitGone()


def Page():
    """The rows on show."""
    return [tuple(cells) for cells in browser["MSFlexGrid1"].Cells()[2:]]


def ExpectNumbered(rows):
    Expect([row[0] for row in rows], [str(num) for num in range(1, len(rows) + 1)], "numbers")


def WithoutNumbers(rows):
    return [row[1:] for row in rows]


with Desk(two_scanners) as desk:
    main = desk.Window("Form1")
    desk.MakeRecord("Record2", ["+1.5", "+2.5"])
    desk.Connect(0, 1)
    desk.AssignRecord("Record1")
    Run(rows=2)

    # The record that is written, on show: as far as it is written.
    browser = OpenBrowser()
    OpenRecord(browser, "Record1")
    first = Page()
    Expect(desk.Rows()[:len(first)], first, "the page")
    WaitRows(len(first) + 2)
    OpenRecord(browser, "Record1")
    second = Page()
    Expect(len(second) >= len(first) + 2, True, "the page has grown")
    ExpectNumbered(second)
    Expect(desk.Rows()[:len(second)], second, "the page")

    # The numbers behind a hole move up under the run, which goes on behind them.
    with desk.Engine("Record1") as engine:
        engine.execute("delete from DATA where NUM = '2'")
    OpenRecord(browser, "Record1")
    ExpectNumbered(Page())
    Expect(WithoutNumbers(Page())[:len(second) - 1], WithoutNumbers(second[:1] + second[2:]), "rows behind the hole")
    ExpectGoesOn()

    # An idle record goes, and the run goes on.
    AnswerDelete(desk, browser, "Record2", "Yes")
    Until(lambda: browser["List1"].Entries() == ["Record1.mdb"], "it is gone from the list")
    Expect(desk.RecordFile("Record2").exists(), False, "its file")
    ExpectGoesOn()
    CloseBrowser()

    # The plot and its cursor; the run waits for the modal dialog and then goes on.
    main["Command9"].Click()
    plot = desk.Window("Record_View_Draw")
    plot["Combo_record"].Pick("Record1.mdb")
    plot["Combo_chan"].Pick("CH2")
    rows = desk.Rows()
    Until(lambda: plot["Data_RecordCount"].Caption() == str(len(rows)), "it counts all rows")
    empty = plot["draw_pic"].Picture()
    trace = plot["color_box"].Picture().At(5, 5)
    plot["Command1"].Click()
    Until(lambda: plot["Slider1"].Range() == (1, 1, len(rows)) and plot["Slider1"].Enabled(), "it is drawn")
    Until(lambda: {x for x, _ in plot["draw_pic"].Picture().Dots(trace) - empty.Dots(trace)} == set(range(surface)),
          "the trace goes from edge to edge")
    ExpectNumbered(desk.Rows())
    Expect((plot["Text1"].Text(), plot["show_value"].Text()), ("1", rows[0][3]), "the first value")
    plot["Slider1"].Click()
    desk.Keys("End")
    Until(lambda: plot["Text1"].Text() == str(len(rows)), "the cursor is at the last row")
    Expect(plot["show_value"].Text(), rows[-1][3], "the last value")
    plot["Command3"].Click()
    plot.WaitGone()
    ExpectGoesOn()
    Stop()

    # All rows of the run are there but the one that was taken out; one look numbers them.
    scans = desk.Sent(0).count("fetch?\\n")
    browser = OpenBrowser()
    before = desk.Rows()
    Expect(len(before), scans - 1, "rows of the run")
    OpenRecord(browser, "Record1")
    ExpectNumbered(Page())
    Expect(WithoutNumbers(Page()), WithoutNumbers(before), "rows of the run")
    Expect(desk.Rows(), Page(), "the record")

    # A record that is assigned goes; the next run makes it anew.
    AnswerDelete(desk, browser, "Record1", "Yes")
    Until(lambda: browser["List1"].Entries() == [], "it is gone from the list")
    Expect(desk.RecordFile("Record1").exists(), False, "its file")
    CloseBrowser()
    Run(rows=2)
    ExpectNumbered(desk.Rows())

    # The record that is written does not: the program ends, and every row is there.
    browser = OpenBrowser()
    AnswerDelete(desk, browser, "Record1", "Yes")
    ExpectMessage(desk, "Run-time error '70':\n\nPermission denied")
    Expect(desk.WaitEnd(), 1, "exit status")
    ExpectNumbered(desk.Rows())
    Expect(len(desk.Rows()), desk.Sent(0).count("fetch?\\n") - scans, "rows of the second run")
    ExpectSound(desk)
