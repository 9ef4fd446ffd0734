from desk import Desk, Expect
from desk.four_scanners import alpha, bench, bravo, charlie, delta, delta_of_10
from desk.scans import ExpectScans, LiveTable, ReadBack, Row, Run, SetRead

poll = "rout:scan:state?"


def Alpha(a=" ", b=" ", c=" ", d=" ", e=" "):
    return Row(10, ch1=a, ch2=b, ch3=c, ch5=d, ch7=e)


def Bravo(a, b=" ", c=" ", d=" ", e=" ", f=" ", g=" ", h=" ", i=" ", j=" ", k=" "):
    return Row(20, ch1=a, ch2=b, ch4=c, ch5=d, ch6=e, ch7=f, ch9=g, ch10=h, ch11=i, ch14=j, ch20=k)


def Charlie(a, b, c, d, e, f):
    return Row(10, ch1=a, ch2=b, ch3=c, ch5=d, ch6=e, ch10=f)


def Delta(a, b, c, d, e, f):
    return Row(20, ch1=a, ch3=b, ch5=c, ch6=d, ch13=e, ch20=f)


def ExpectDevices(desk, devices):
    """Devices of these serials have the tabs, and live tables of these functions."""
    main = desk.Window("Form1")
    Expect(main["SSTab1"].Tabs(), [(serial, dev == 0) for dev, (serial, _) in enumerate(devices)])
    Expect(main["Combo1"].Entries(), [serial for serial, _ in devices])
    for dev, (serial, names) in enumerate(devices):
        Expect(main[f"MSFlexGrid1({dev})"].Cells(), LiveTable(names), f"live table of {serial} after Connect")


with Desk(bench) as desk:
    # Three, the last one behind a gap: it is taken for one of 10 channels like the third row.
    Expect(desk.Connect(0, 1, 3), [], "rows that come up ticked")
    ExpectDevices(desk, [("Alpha 10", alpha), ("Bravo 20", bravo), ("Delta 20", delta_of_10)])
    desk.AssignRecords({0: "Record1", 1: "Record2", 2: "Record3"})

    run = Run(desk, 1, last_place=3)
    Expect(run.Sent(), ReadBack(0, alpha) + ReadBack(1, bravo) + ReadBack(3, delta_of_10) + ["0 rout:scan:count 5"] +
           ["0 rout:SCAN", f"0 {poll}", "0 fetch?", f"1 {poll}", f"1 {poll}", "1 fetch?", f"3 {poll}", "3 fetch?"] *
           run.Passes(), "wire")
    rows = [[Alpha(*readings) for readings in run.Readings(0)], [Bravo(*readings) for readings in run.Readings(1)],
            # Row 2 was never read, so readings stand side by side.
            [Row(10, ch1=a, ch2=b, ch3=c) for a, b, c in run.Readings(3)]]
    ExpectScans(desk, [("Alpha 10", alpha, rows[0]), ("Bravo 20", bravo, rows[1]), ("Delta 20", delta_of_10, rows[2])],
                {dev: (f"Record{dev + 1}", rows[dev]) for dev in range(3)})

    # All four, in a one-shot run: it sweeps over all of them and takes 12 readings of each.
    Expect(desk.Connect(0, 1, 2, 3), [0, 1, 3], "rows that come up ticked")
    devices = [("Alpha 10", alpha), ("Bravo 20", bravo), ("Charlie 10", charlie), ("Delta 20", delta)]
    ExpectDevices(desk, devices)
    desk.AssignRecords({3: "Record4"})
    SetRead(desk, number="12", counted=True)

    run = Run(desk)
    sweep = [f"{dev} {poll}" for dev in range(4)]
    Expect(run.Sent(), [message for dev, (_, names) in enumerate(devices) for message in ReadBack(dev, names)] +
           ["0 rout:scan:count 12", "0 rout:SCAN"] + sweep + sweep + sweep[:1] + ["0 fetch?"] +
           sweep[:2] + ["1 fetch?"] + sweep[:3] + ["2 fetch?"] + sweep + ["3 fetch?"], "wire")
    (a,), (b,), (c,), (d,) = (run.Readings(dev) for dev in range(4))
    shot = [[Alpha(*a[:5]), Alpha(*a[5:10]), Alpha(*a[10:])], [Bravo(*b[:11]), Bravo(*b[11:])],
            [Charlie(*c[:6]), Charlie(*c[6:])], [Delta(*d[:6]), Delta(*d[6:])]]
    ExpectScans(desk, [(*device, shot[dev]) for dev, device in enumerate(devices)],
                {dev: (f"Record{dev + 1}", (rows[dev] if dev < 3 else []) + shot[dev]) for dev in range(4)})
