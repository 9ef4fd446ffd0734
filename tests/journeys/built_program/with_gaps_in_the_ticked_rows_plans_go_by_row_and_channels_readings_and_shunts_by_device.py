from desk import Desk, Expect
from desk.four_scanners import alpha, bench, bravo_of_10, charlie, off
from desk.scans import Current, ExpectScans, LiveTable, ReadBack, Row, Run, SeeValue, SetCurrent, WritePlan

discovery = ["rout:state?\\n", "cal:sec:serial?\\n", "*IDN?"]
poll = "rout:scan:state?"
alpha = alpha[:1] + ["DCI"] + alpha[2:]

with Desk(bench) as desk:
    main = desk.Window("Form1")

    # The first row, with a current channel.
    Expect(desk.Connect(0), [], "rows that come up ticked")
    main.Menu("set_sc")
    dialog = desk.Window("Set_Dev")
    SetCurrent(desk, dialog, 1, "DCI", "4", "0.5")
    Expect(dialog["ch(1)"].ToolTip(), "R=4, I= 0.5")
    WritePlan(desk, dialog)
    Expect(main["MSFlexGrid1(0)"].Cells(), LiveTable(alpha), "live table after SET")

    # The second row alone: an instrument of 20 channels, of which the 10 are used that the first row has.
    asked_before = len(desk.Sent(0))
    Expect(desk.Connect(1), [0], "rows that come up ticked")
    Expect([desk.Sent(0)[asked_before:]] + [desk.Sent(place)[3:] for place in (2, 3)], [discovery] * 3,
           "to the others nothing but the search is sent")
    Expect(main["SSTab1"].Tabs(), [("Bravo 20", True)])
    Expect(main["Combo1"].Entries(), ["Bravo 20"])
    Expect(main["MSFlexGrid1(0)"].Cells(), LiveTable(bravo_of_10), "live table after Connect")

    main.Menu("set_sc")
    dialog = desk.Window("Set_Dev")
    SetCurrent(desk, dialog, 3, "DCI", "5", "2")
    Expect(dialog["ch(3)"].ToolTip(), "R=1, I= 0", "the tool tip goes by row, the shunt by device")
    dialog["Combo_Scan_model"].Pick("STEP")
    WritePlan(desk, dialog)
    plan = bravo_of_10[:3] + ["DCI"] + bravo_of_10[4:]
    # The full read-back looks for the master by device, and finds none there.
    Expect(main["MSFlexGrid1(0)"].Cells(), LiveTable(plan[:6] + ["ACV"] + plan[7:]), "live table after SET")
    desk.AssignRecord("Record1")

    run = Run(desk, 1, last_place=1)
    Expect(run.Sent(), ReadBack(1, plan) + ["1 rout:scan:count 7"] +
           ["1 rout:SCAN:STEP", f"1 {poll}", "1 fetch?"] * run.Passes(), "wire")
    # Seven readings are a row, but the plan of row 0 has room for five: the others are its beginning.
    alone = [Row(10, ch1=f, ch2=Current(g, 4, 0.5)) for a, b, c, d, e, f, g in run.Readings(1)]
    ExpectScans(desk, [("Bravo 20", plan, alone)], {0: ("Record1", alone)})

    # The first and the third row: plans go by row, but device 1 cuts by the second row, which has a current channel.
    Expect(desk.Connect(0, 2), [1], "rows that come up ticked")
    Expect(main["SSTab1"].Tabs(), [("Alpha 10", True), ("Charlie 10", False)])
    Expect(main["Combo1"].Entries(), ["Alpha 10", "Charlie 10"])
    charlie_of_20 = charlie + off * 10
    for dev, names in enumerate((alpha, charlie_of_20)):
        Expect(main[f"MSFlexGrid1({dev})"].Cells(), LiveTable(names), f"live table {dev} after Connect")
    Expect(SeeValue(desk, 2)[0], [("Alpha 10", True), ("Charlie 10", False)], "tabs of See Value")
    desk.AssignRecords({1: "Record2"})

    run = Run(desk, 1, last_place=2)
    Expect(run.Sent(), ReadBack(0, alpha) + ReadBack(2, charlie_of_20) + ["0 rout:scan:count 5"] +
           ["0 rout:SCAN", f"0 {poll}", "0 fetch?", f"2 {poll}", "2 fetch?"] * run.Passes(), "wire")
    first = [Row(10, ch1=a, ch2=Current(b, 4, 0.5), ch3=c, ch5=d, ch7=e) for a, b, c, d, e in run.Readings(0)]
    second = [Row(20, ch1=a, ch2=b, ch4=Current(c, 1, 0), ch5=d, ch6=e, ch9=f)
              for a, b, c, d, e, f in run.Readings(2)]
    ExpectScans(desk, [("Alpha 10", alpha, first), ("Charlie 10", charlie_of_20, second)],
                {0: ("Record1", alone + first), 1: ("Record2", second)})
