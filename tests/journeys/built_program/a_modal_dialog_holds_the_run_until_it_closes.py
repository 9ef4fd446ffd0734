from desk import Desk, Expect, Until
from desk.run_controls import ExpectOn, idle, idle_in_run, in_run
from desk.runs import (ConfirmEnd, ExpectSent, ExpectWhole, Sent, WaitForPoll, begin, one_pass, row_of_readings,
                       same_readings_bench)

with Desk(same_readings_bench) as desk:
    main = desk.Window("Form1")
    desk.Connect()
    desk.AssignRecord()
    sent_before = len(desk.Sent())
    main["Command3"].Click()
    Until(lambda: len(desk.Rows()) >= 2, "rows are stored")
    stop = main["Command4"].Middle()

    def ExpectHeld(name, title, look, close):
        """The dialog is up, looks as it should, and holds the run; its main window takes no click; the run goes on when
        it closes."""
        dialog = desk.Window(name)
        Expect(desk.Windows(), ["VANTREL MAIN", title], f"windows with {name}")
        rows = desk.Rows()
        look(dialog)
        desk.ClickAt(*stop)
        desk.WaitForSilence()
        Expect(desk.Rows(), rows, f"record with {name}")
        Expect(main["exit_item"].Enabled(), False, f"Exit with {name}, behind a click on Stop")
        dialog[close].Click()
        dialog.WaitGone()
        WaitForPoll(desk)

    def LookAtAllSettings(dialog):
        Expect(dialog["SSTab1"].Tabs(), [("Quick scanner", True)], "tabs")
        cells = dialog["MSFlexGrid1(0)"].Cells()
        Expect(cells[:2], [["channel", "color", "Division", "Offset"], ["CH 1", "", "1", "0"]], "draw settings")

    def LookAtRecords(dialog):
        Expect(dialog["List1"].Entries(), ["Record1.mdb"], "records")
        dialog["List1"].Entry("Record1.mdb").Click()
        dialog["Command2"].Click()
        Until(lambda: len(dialog["MSFlexGrid1"].Cells()) > 3, "the record is shown")
        Expect([tuple(row) for row in dialog["MSFlexGrid1"].Cells()[2:]], desk.Rows(), "rows on show")

    def LookAtRecordPlot(dialog):
        dialog["Combo_record"].Pick("Record1.mdb")
        Until(lambda: dialog["Data_RecordCount"].Caption() == str(len(desk.Rows())), "the rows are counted")
        dialog["Combo_chan"].Pick("CH1")
        dialog["Command1"].Click()
        Until(lambda: "2.00000000E+00" in dialog["show_value"].Text(), "the value at the slider is shown")

    def LookAtRecordList(dialog):
        Expect(dialog["Combo_record"].Entries(), ["Record1.mdb"], "records")

    def LookAtPlan(dialog):
        Expect((dialog["Combo1_dev"].Text(), dialog["ch(0)"].Text(), dialog["ch(9)"].Text()),
               ("Quick scanner", "DCV", "NONE"), "plan")

    def LookAtSchedule(dialog):
        Expect(dialog.Checked("at_time", "per_scan_interval", "stop_after_n_scan"),
               {"at_time": False, "per_scan_interval": False, "stop_after_n_scan": False}, "schedule")

    def LookAtOneSetting(dialog):
        Expect((dialog["Combo_dev"].Text(), dialog["Combo_chan"].Text(), dialog["division_text"].Text()),
               ("Quick scanner", "Ch 1", "1"), "draw settings")

    ExpectOn(main, in_run, "in the run")
    main["Command8"].Click()
    ExpectHeld("Form2", "", LookAtAllSettings, "Command1")
    main.Menu("Record_View")
    ExpectHeld("Record_View_Form", "Record View", LookAtRecords, "Command4")
    main.Menu("Record_Draw")
    ExpectHeld("Record_View_Draw", "Record Draw", LookAtRecordPlot, "Command3")
    main["Command9"].Click()
    ExpectHeld("Record_View_Draw", "Record Draw", LookAtRecordList, "Command3")
    ExpectOn(main, in_run, "behind these dialogs")

    # The set-up dialogs are off in a run, until a change of Combo1 turns them on.
    main["Combo1"].Pick("Quick scanner")
    Until(main["Command3"].Enabled, "Start comes on")
    main.Menu("set_sc")
    ExpectHeld("Set_Dev", "Set Device", LookAtPlan, "Command2")
    main.Menu("set_read")
    ExpectHeld("Form4", "Set Read", LookAtSchedule, "Command1")
    main.Menu("set_draw")
    ExpectHeld("Form3", "Set Draw", LookAtOneSetting, "Command1")
    ExpectOn(main, idle_in_run, "behind the set-up dialogs")

    main["Command4"].Click()
    ConfirmEnd(desk)
    ExpectOn(main, idle, "after the end")
    ExpectWhole(desk.Rows(), Sent(desk).count("fetch?"))
    Expect(main["MSFlexGrid1(0)"].Cells()[1], row_of_readings, "live table")
    Expect(Sent(desk, sent_before)[:len(begin)], begin, "begin of the run")
    # What the plan's dialog asked stands inside a poll, and disturbs no pass.
    asked = {"ROUTe:SCAN:TIMER?"} | {f"rout:scan:func? {ch}" for ch in range(1, 11)}
    run = Sent(desk, sent_before + len(begin))
    Expect(run.count("ROUTe:SCAN:TIMER?"), 3, "the dialog reads the plan three times")
    ExpectSent([message for message in run if message not in asked], rf"({one_pass} ?)+", "passes")
