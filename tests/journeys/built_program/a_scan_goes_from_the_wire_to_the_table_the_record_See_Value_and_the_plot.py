import datetime
import re

from desk import Desk, Expect, Until, quick_bench

readings = ["+2.00000000E+00", "-1.50000000E+00", "+3.00000000E+00"]
row_of_readings = readings[:2] + [readings[2] + "\n"] + [" "] * 7  # the last one keeps the end of the reply; others are off
bench = quick_bench + rf'  reply "fetch?" "{",".join(readings)}\n"' + "\n"

plot_columns = 160
row_height = 504.3 / 15  # of the plot, in pixels: one unit of value
zero_line = 8 * row_height


def ExpectTrace(picture, before, colour, value, scans, what):
    """One line at the height of the value, a step wide for each scan after the first, in the channel's colour."""
    Expect(before.Dots(colour), set(), f"{what} before the run")
    dots = picture.Dots(colour)
    end = (scans - 1) * picture.width / plot_columns
    columns = {x for x, _ in dots}
    Expect(columns, set(range(len(columns))), f"columns of {what} without a gap")
    Expect(abs(len(columns) - 1 - end) <= 1, True, f"{what} has {len(columns)} columns, and should end at {end}")
    off = {(x, y) for x, y in dots if x > 0 and abs(y - (zero_line - value * row_height)) > 1}
    Expect(off, set(), f"dots of {what} beside its height")


with Desk(bench) as desk:
    main = desk.Window("Form1")
    desk.Connect()
    desk.AssignRecord()
    plan = ["CH 1(DCV)", "CH 2(DCV)", "CH 3(DCV)"] + [f"CH {ch}(NONE)" for ch in range(4, 11)]
    Expect(main["MSFlexGrid1(0)"].Cells(), [plan, [""] * 10], "live table after Connect")
    empty_plot = main["draw_pic"].Picture()

    asked_before = len(desk.Sent())
    begin = datetime.datetime.now().replace(microsecond=0)
    main["Command3"].Click()
    Until(lambda: len(desk.Rows()) >= 3, "three rows are stored")
    main["Command4"].Click()
    desk.Message().Press("OK")
    end = datetime.datetime.now()

    # The wire: the plan read back, one count, then each pass its start, its polls and its fetch.
    sent = [text.removesuffix("\\n") for text in desk.Sent()[asked_before:]]
    Expect(sent[:10], [f"rout:scan:func? {ch}" for ch in range(1, 11)], "the plan is read back")
    Expect(sent[10], "rout:scan:count 3")
    run = " ".join(sent[11:])
    Expect(bool(re.fullmatch(r"(rout:SCAN( rout:scan:state\?)+ fetch\? ?)+", run)), True, f"passes: {run}")
    scans = sent.count("rout:SCAN")

    Expect(main["MSFlexGrid1(0)"].Cells(), [plan, row_of_readings], "live table")

    # The record: one row for each scan, numbered from 1, with its time and 20 columns of channels.
    rows = desk.Rows()
    Expect([row[0] for row in rows], [str(scan) for scan in range(1, scans + 1)], "numbers in the record")
    for row in rows:
        Expect(list(row[2:12]), row_of_readings, "readings in the record")
        Expect(begin <= datetime.datetime.strptime(row[1], "%Y-%m-%d %H:%M:%S") <= end, True, f"time {row[1]}")

    # The window that shows the latest scans holds the same rows.
    main["Command6"].Click()
    cells = desk.Window("DATA_Table")["MSFlexGrid1(0)"].Cells()
    Expect(cells[0], ["Scan"] * 2 + ["Channel"] * 10, "first heading")
    Expect(cells[1], ["Scan Cycle", "Time"] + [f"CH {ch}" for ch in range(1, 11)], "second heading")
    Expect(cells[2:], [list(row[:12]) for row in rows], "rows")
    desk.Keys("Escape")
    Until(lambda: desk.Windows() == ["VANTREL MAIN"], "the window closes")

    # The plot, with the reading cells as its legend.
    plot = main["draw_pic"].Picture()
    for ch, reading in enumerate(readings):
        colour = main["MSFlexGrid1(0)"].Cell(1, ch).Picture().At(80, 16)
        ExpectTrace(plot, empty_plot, colour, float(reading), scans, f"the trace of channel {ch + 1}")
