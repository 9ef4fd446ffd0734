from desk import VERSION, Desk, Expect, Until
from desk.run_controls import ExpectOn, idle, idle_in_run, in_run
from desk.runs import (ConfirmEnd, ExpectSent, ExpectWhole, Sent, WaitForPoll, begin, one_pass, row_of_readings,
                       same_readings_bench)

with Desk(same_readings_bench) as desk:
    main = desk.Window("Form1")
    desk.Connect()
    desk.AssignRecord()
    sent_before = len(desk.Sent())

    def ExpectBeside(title):
        """The window is on the screen, and the run goes on meanwhile."""
        WaitForPoll(desk)
        Expect(desk.Windows()[1:], [title], "windows beside the main one")

    def Close(window, button):
        window[button].Click()
        window.WaitGone()

    # Record assignment stands open from before Start.
    main["Command10"].Click()
    assignment = desk.Window("DB_SET")
    main["Command3"].Click()
    Until(lambda: len(desk.Rows()) >= 1, "a row is stored")
    ExpectOn(main, in_run, "in the run")
    ExpectBeside("")
    Expect(assignment["Combo1(0)"].Text(), "Record1", "assigned record")
    Close(assignment, "OK")

    main.Menu("About")
    about = desk.Window("about_form")
    ExpectBeside("About Orlane VANTREL")
    Expect(about["Label2"].Caption(), "version " + VERSION)
    Close(about, "Command1")

    # The browser shows the rows that are there when it opens the record that the run adds to.
    main["Command7"].Click()
    browser = desk.Window("Record_View_Form")
    browser["List1"].Entry("Record1.mdb").Click()
    rows = len(desk.Rows())
    browser["Command2"].Click()
    Until(lambda: browser["MSFlexGrid1"].Cell(2, 0).Caption() == "1", "the record is shown")
    shown = [tuple(row) for row in browser["MSFlexGrid1"].Cells()[2:]]
    Expect(len(shown) >= rows, True, "so many rows are shown")
    Expect(shown, desk.Rows()[:len(shown)], "rows on show")
    ExpectBeside("Record View")
    Close(browser, "Command4")

    # See Value grows with the run.
    main["Command6"].Click()
    values = desk.Window("DATA_Table")["MSFlexGrid1(0)"]
    cells = values.Cells()[2:]
    Expect([tuple(row) for row in cells], [row[:12] for row in desk.Rows()[:len(cells)]], "rows of See Value")
    ExpectBeside("DATA TABLE")
    Until(lambda: values.Cells()[2:][:len(cells) + 1] == [list(row[:12]) for row in desk.Rows()[:len(cells) + 1]],
          "See Value has the row behind them")
    desk.Keys("Escape")
    Until(lambda: desk.Windows() == ["VANTREL MAIN"], "See Value closes")
    ExpectOn(main, in_run, "behind these windows")

    # Record assignment is off in a run, until a change of Combo1 turns it on.
    main["Combo1"].Pick("Quick scanner")
    Until(main["Command10"].Enabled, "record assignment comes on")
    ExpectOn(main, idle_in_run, "after the change of Combo1")
    main["Command10"].Click()
    assignment = desk.Window("DB_SET")
    ExpectBeside("")
    Close(assignment, "OK")

    main["Command4"].Click()
    ConfirmEnd(desk)
    ExpectOn(main, idle, "after the end")
    ExpectWhole(desk.Rows(), Sent(desk).count("fetch?"))
    Expect(main["MSFlexGrid1(0)"].Cells()[1], row_of_readings, "live table")
    Expect(Sent(desk, sent_before)[:len(begin)], begin, "begin of the run")
    ExpectSent(Sent(desk, sent_before + len(begin)), rf"({one_pass} ?)+", "passes")
