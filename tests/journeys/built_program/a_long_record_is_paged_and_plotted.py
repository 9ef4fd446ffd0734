from desk import Desk, Expect, Until
from desk.browsing import OpenRecord

rows = 100_000
first, last = 40_001, 65_000
surface = 583  # columns of the plot


def ExpectPage(first):
    Until(lambda: grid.Cells([2])[0][:3] == [str(first), stored[first - 1][1], stored[first - 1][2]], "the page comes")
    Expect(grid.RowCount(), 1002, "rows of the grid")
    Expect(grid.Cells([1001])[0], list(stored[first + 998]), "the last row of the page")


with Desk() as desk:
    desk.MakeRecord("Record1", [f"{row / rows:+.8E}" for row in range(1, rows + 1)])
    stored = desk.Rows()
    main = desk.Window("Form1")

    main["Command7"].Click()
    browser = desk.Window("Record_View_Form")
    grid = browser["MSFlexGrid1"]
    OpenRecord(browser, "Record1")
    ExpectPage(1)
    for page_first in [1001, 2001, 3001]:
        browser["next_DB"].Click()
        ExpectPage(page_first)
    browser["prev_DB"].Click()
    ExpectPage(2001)
    browser["Command4"].Click()
    browser.WaitGone()

    # 25000 rows are the most that one drawing takes.
    main["Command9"].Click()
    plot = desk.Window("Record_View_Draw")
    empty = plot["draw_pic"].Picture()
    trace = plot["color_box"].Picture().At(5, 5)
    plot["Combo_record"].Pick("Record1.mdb")
    plot["Combo_chan"].Pick("CH1")
    Until(lambda: plot["Data_RecordCount"].Caption() == str(rows), "it counts the rows")
    plot["draw_start"].Type(str(first))
    plot["draw_stop"].Type(str(last))
    plot["Command1"].Click()
    Until(lambda: plot["Slider1"].Range() == (first, first, last) and plot["Slider1"].Enabled(), "it is drawn")
    Until(lambda: {x for x, _ in plot["draw_pic"].Picture().Dots(trace) - empty.Dots(trace)} == set(range(surface)),
          "the trace goes from edge to edge")
    Until(lambda: plot["show_value"].Text() == stored[first - 1][2], "the first value")
    Expect(desk.Rows() == stored, True, "the record is as it was")
