from desk import Desk, Expect, Until
from desk.browsing import AnswerDelete
from desk.contents import ExpectMessage


def DrawRange(first, last):
    plot["draw_start"].Type(first)
    plot["draw_stop"].Type(last)
    plot["Command1"].Click()


with Desk() as desk:
    desk.MakeRecord("Record1", ["+1.5", "+2.5"])
    desk.MakeRecord("Record2", [])
    desk.MakeRecord("RecordLong", ["+1.5"] * 25003)
    main = desk.Window("Form1")

    main["Command7"].Click()
    browser = desk.Window("Record_View_Form")
    browser["Command2"].Click()
    ExpectMessage(desk, "Please select a Record.")
    browser["List1"].Entry("Record2.mdb").Click()
    browser["Command2"].Click()
    ExpectMessage(desk, "The Record is NULL")
    AnswerDelete(desk, browser, "Record2", "No")
    Expect("Record2.mdb" in browser["List1"].Entries(), True, "it is still there")
    AnswerDelete(desk, browser, "Record2", "Yes")
    Until(lambda: sorted(browser["List1"].Entries()) == ["Record1.mdb", "RecordLong.mdb"], "it is gone from the list")
    Expect(desk.RecordFile("Record2").exists(), False, "its file")
    desk.RecordFile("Record1").rename(desk.folder / "kept")
    AnswerDelete(desk, browser, "Record1", "Yes")
    ExpectMessage(desk, 'There is no file "Record1.mdb" to delete.')
    Until(lambda: browser["List1"].Entries() == ["RecordLong.mdb"], "the one that had gone is no more listed")
    browser["Command4"].Click()
    browser.WaitGone()

    (desk.folder / "kept").rename(desk.RecordFile("Record1"))
    desk.MakeRecord("Record2", [])
    desk.RecordFile("RecordText").write_text("A note that somebody has put here.")
    main["Command9"].Click()
    plot = desk.Window("Record_View_Draw")
    plot["Command1"].Click()
    ExpectMessage(desk, "Please select a Record or Channel")
    plot["Combo_record"].Pick("RecordText.mdb")
    ExpectMessage(desk, "The record cannot be opened.\n\nRecordText.mdb: Unrecognized database format")
    plot["Combo_record"].Pick("Record2.mdb")
    ExpectMessage(desk, "The Record is NULL.")
    Expect(plot["Data_RecordCount"].Caption(), "0", "the count")
    plot["Combo_record"].Pick("Record1.mdb")
    Until(plot["draw_all"].Checked, "a short record is drawn whole")
    plot["Command1"].Click()
    ExpectMessage(desk, "Please select a Record or Channel")
    # What becomes of a record behind the back of the window.
    plot["Combo_chan"].Pick("CH1")
    with desk.Engine("Record1") as engine:
        engine.execute("update DATA set Ch1 = null where NUM = '2'")
    plot["Command1"].Click()
    ExpectMessage(desk, "The record cannot be drawn.\n\nRow 2 holds nothing for CH1.")
    with desk.Engine("Record1") as engine:
        engine.execute("update DATA set Ch1 = '+2.5' where NUM = '2'")
    plot["Command1"].Click()
    Until(lambda: plot["show_value"].Text() == "+1.5", "it is drawn")
    with desk.Engine("Record1") as engine:
        engine.execute("delete from DATA where NUM = '2'")
    plot["Slider1"].Click()
    ExpectMessage(desk, "The value cannot be read.\n\nRow 2 is not in the record.")
    with desk.Engine("Record1") as engine:
        engine.execute("delete from DATA")
    plot["Command1"].Click()
    ExpectMessage(desk, "The Record is NULL.")

    plot["Combo_record"].Pick("RecordLong.mdb")
    Until(plot["draw_limit"].Checked, "a long one in part")
    Expect((plot["Data_RecordCount"].Caption(), plot["draw_all"].Enabled()), ("25003", False), "a long record")
    DrawRange("1", "25003")
    ExpectMessage(desk, " The range should be set from 1 to 25000.")
    for first, last in [("1", "25002"), ("7", "7"), ("9", "8")]:
        DrawRange(first, last)
        ExpectMessage(desk, "Please setting a correct range.")
    plot["Combo_record"].Type("RecordNone.mdb")
    DrawRange("1", "2")
    ExpectMessage(desk, "The record cannot be drawn.\n\nCould not find file")
    plot["Command3"].Click()
    plot.WaitGone()
