from desk import Desk, Expect, Until
from desk.run_controls import ExpectOn, all_off, idle

with Desk() as desk:
    main = desk.Window("Form1")
    desk.Connect()
    ExpectOn(main, idle, "with a device")

    main.Menu("Connected_to_Instrument")
    connect = desk.Window("Connect")
    row = connect["Check1(0)"]
    Expect(row.Checked(), True, "the instrument of the last time is ticked")
    row.Click()
    Until(lambda: not row.Checked(), "its tick goes")
    connect["Command2"].Click()
    connect.WaitGone()

    Until(lambda: not main["Command3"].Enabled(), "Start goes off")
    ExpectOn(main, all_off, "without a device")
    Expect(main["SSTab1"].Tabs(), [(f"Deviec {dev}", dev == 0) for dev in range(4)], "tabs")
    Expect(main["MSFlexGrid1(0)"].Cells(), [[""] * 10] * 4, "live table")
    Expect(main["Combo1"].Text(), "")
