from browsing import AnswerDelete
from contents import ExpectMessage
from desk import Desk, Expect, Until


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
    Expect((desk.folder / "db" / "Record2.mdb").exists(), False, "its file")
    browser["Command4"].Click()
    browser.WaitGone()

    desk.MakeRecord("Record2", [])
    main["Command9"].Click()
    plot = desk.Window("Record_View_Draw")
    plot["Command1"].Click()
    ExpectMessage(desk, "Please select a Record or Channel")
    plot["Combo_record"].Pick("Record2.mdb")
    ExpectMessage(desk, "The Record is NULL.")
    Expect(plot["Data_RecordCount"].Caption(), "0", "the count")
    plot["Combo_record"].Pick("Record1.mdb")
    Until(plot["draw_all"].Checked, "a short record is drawn whole")
    plot["Command1"].Click()
    ExpectMessage(desk, "Please select a Record or Channel")
    # A record that loses its rows after it was chosen.
    plot["Combo_chan"].Pick("CH1")
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
    plot["Command3"].Click()
    plot.WaitGone()
