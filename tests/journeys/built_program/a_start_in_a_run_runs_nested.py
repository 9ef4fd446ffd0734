from desk import Desk, Expect, Until
from desk.run_controls import ExpectOn, idle, idle_in_run, in_run
from desk.runs import (ConfirmEnd, ExpectEnded, ExpectSent, ExpectWhole, Sent, Set, begin, one_pass, poll, row_of_readings,
                       same_readings_bench)

with Desk(same_readings_bench) as desk:
    main = desk.Window("Form1")
    desk.Connect()
    desk.AssignRecord()
    Set(desk, per_scan_interval=True, PerSan="Up")  # an hour between two passes
    start, stop = main["Command3"].Middle(), main["Command4"].Middle()

    def ExpectNestedRun(sent_before, passes):
        """The wire of a run of its own, that is now in its interval."""
        Until(lambda: len(desk.Rows()) == passes, "the nested run stores its row")
        desk.WaitForSilence()
        sent = Sent(desk, sent_before)
        Expect(sent[:11], begin, "the nested run begins as any other")
        ExpectSent(sent[11:], one_pass, "one pass")
        ExpectOn(main, in_run, "in the nested run")

    main["Command3"].Click()
    Until(lambda: len(desk.Rows()) == 1, "a row is stored")
    desk.WaitForSilence()
    ExpectOn(main, in_run, "in the interval")

    # Start comes on with a change of Combo1, and with Stop, which the run sees only when its handlers have returned.
    main["Combo1"].Pick("Quick scanner")
    Until(main["Command3"].Enabled, "Start comes on")
    ExpectOn(main, idle_in_run, "after the change of Combo1")
    sent_before = len(desk.Sent())
    main["Command3"].Click()
    ExpectNestedRun(sent_before, 2)
    sent_before = len(desk.Sent())
    desk.XDo("mousemove", *map(str, stop), "click", "1", "mousemove", *map(str, start), "click", "1")
    ExpectNestedRun(sent_before, 3)

    # Stop ends the innermost run; those around it find the flag up and end too, each with its message, and send nothing.
    sent = desk.Sent()
    main["Command4"].Click()
    for run in range(3):
        ConfirmEnd(desk)
    ExpectOn(main, idle, "after the end")
    desk.WaitForSilence()
    Expect(desk.Windows(), ["VANTREL MAIN"], "windows")
    Expect(desk.Sent(), sent, "sent behind Stop")
    ExpectWhole(desk.Rows(), 3)
    Expect(main["MSFlexGrid1(0)"].Cells()[1], row_of_readings, "live table")

    # Nothing is left of it: the next run goes on in the record.
    Set(desk, per_scan_interval=True)  # its tick goes
    main["Command3"].Click()
    Until(lambda: len(desk.Rows()) >= 4, "a row is stored")

    # In a poll, a nested run takes the target that the outer one waits for: that one polls on without an end.
    rows = len(desk.Rows())
    with desk.Held(poll):
        desk.ClickAt(*stop)
        desk.ClickAt(*start)
    Until(lambda: len(desk.Rows()) > rows and not main["Command3"].Enabled(), "the nested run stores rows")
    main["Command4"].Click()
    ConfirmEnd(desk)
    rows = desk.Rows()
    ExpectWhole(rows, len(rows))
    sent_before = len(desk.Sent())
    Until(lambda: len(desk.Sent()) > sent_before + 6, "the outer run polls")
    main["Command4"].Click()
    sent_now = len(desk.Sent())
    Until(lambda: len(desk.Sent()) > sent_now + 3, "the outer run polls on behind Stop")
    Expect(set(Sent(desk, sent_before)), {poll}, "sent by the outer run")
    Expect(desk.Windows(), ["VANTREL MAIN"], "windows")
    Expect(desk.Rows(), rows, "record")
    ExpectOn(main, idle, "while it polls")

    main.Menu("exit_item")
    ExpectEnded(desk)
