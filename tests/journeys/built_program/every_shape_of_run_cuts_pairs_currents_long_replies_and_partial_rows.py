from datetime import datetime

from desk import Desk, Expect
from desk.scans import Current, LiveTable, Row, Run, SetCurrent, SetRead, WritePlan

names = ["4W", "DCI", "ACI", "NONE", "4W,TEMP", "NONE", "DCV", "2W", "NONE", "NONE"]


def Readings(fetch, count, width=0):
    """Readings that differ from each other, with blanks before them up to this width."""
    return [f"{'+-'[i % 2]}{fetch}.{i:03}00000E+00".rjust(width) for i in range(count)]


def Pieces(readings):
    """Lengths of the pieces in which the reply with these is read."""
    length = len(",".join(readings)) + 1
    return [1024, length - 1024] if length > 1024 else [length]


def Dci(reading):
    return Current(reading, 4, 0.5)


def Aci(reading):
    return Current(reading, 2, -1)


def Full(r):
    """The row of six readings, the last of which ends the reply."""
    return [Row(10, ch1=r[0], ch2=Dci(r[1]), ch3=Aci(r[2]), ch5=r[3], ch7=r[4], ch8=r[5] + "\n")]


def Partial(r):
    """The row of three readings that the number of the schedule lets through."""
    return [Row(10, ch1=r[0], ch2=Dci(r[1]), ch3=Aci(r[2] + "\n"))]


def NoRow(_):
    """Two readings make none."""
    return []


def CutBehindTheFourth(r):
    """1024 bytes end behind the fourth reading: the row goes on at the fifth channel, which has the fourth."""
    return [Row(10, ch1=r[0], ch2=Dci(r[1]), ch3=Aci(r[2]), ch5=r[4], ch7=r[5] + "\n")]


def CutInTheSixth(r):
    """1024 bytes end in the sixth reading, but for its last character, which is a reading more and makes no row."""
    return [Row(10, ch1=r[0], ch2=Dci(r[1]), ch3=Aci(r[2]), ch5=r[3], ch7=r[4], ch8=r[5][:-1])]


def OneShot(r):
    """68 readings, cut behind the 64th, the fourth of the eleventh row: that goes on at the fifth channel with three
    readings more, is not full by then, and goes on there again with the last reading, which makes a partial row."""
    rows = [Row(10, ch1=r[i], ch2=Dci(r[i + 1]), ch3=Aci(r[i + 2]), ch5=r[i + 3], ch7=r[i + 4], ch8=r[i + 5])
            for i in range(0, 60, 6)]
    return rows + [Row(10, ch1=r[60], ch2=Dci(r[61]), ch3=Aci(r[62]), ch5=r[67] + "\n")]


fetches = [  # readings, and the rows that they make
    (Readings(1, 68), OneShot),
    (Readings(2, 6, 255), CutBehindTheFourth),  # from here on the counted run
    (Readings(3, 3), Partial),
    (Readings(4, 2), NoRow),
    (Readings(5, 6), Full),
]
for number in range(6, 66, 2):  # those that are stopped by hand
    fetches += [(Readings(number, 6, 170), CutInTheSixth), (Readings(number + 1, 3), Partial)]

bench = r"""
instrument GPIB0::7::INSTR
  identity "Orlane,SB-10,Q1,1.02"
  serial "Short scanner"
  card 1
  timer 0.3
  channel 1 FRES
  channel 2 VOLT
  channel 3 VOLT:AC
  channel 5 TEMP PT100 FRTD
  channel 6-7 VOLT   # 6 is taken by 1
  channel 8 RES
  channel 10 VOLT    # taken by 5
  counts 6 12 18 24 30 36 42 48 54 60 66 68
""" + "".join(
    rf'  reply {i} "fetch?" "{",".join(readings)}\n"' + "\n" for i, (readings, _) in enumerate(fetches, 1))

read_back = [f"0 rout:scan:func? {ch}" for ch in (1, 4, 5)] + ["0 TEMPerature:TRANsducer? @5"] + [
    f"0 rout:scan:func? {ch}" for ch in range(6, 11)]
poll, fetch = "0 rout:scan:state?", "0 fetch?"
one_poll = ["0 rout:SCAN", poll, fetch]

runs = [
    # shape, schedule, count that is sent, messages of a pass, passes: None for as many as there are until Stop
    ("one-shot", dict(number="68", counted=True), 68, ["0 rout:SCAN"] + [poll] * 12 + [fetch], 1),
    ("counted", dict(number="3", counted=True, interval=0), 6, one_poll, 4),
    ("free-running", dict(), 6, one_poll, None),
    ("paced", dict(interval=1), 6, one_poll, None),
]

with Desk(bench) as desk:
    main = desk.Window("Form1")
    desk.Connect()
    main.Menu("set_sc")
    dialog = desk.Window("Set_Dev")
    SetCurrent(desk, dialog, 1, "DCI", "4", "0.5")
    SetCurrent(desk, dialog, 2, "ACI", "2", "-1")
    WritePlan(desk, dialog)
    Expect(main["MSFlexGrid1(0)"].Cells(), LiveTable(names), "live table of the plan")
    desk.AssignRecord()

    rows = []  # readings of those that should be in the record
    fetched = 0
    for shape, schedule, count, messages, passes in runs:
        SetRead(desk, **schedule)
        stored_before = len(rows)
        run = Run(desk, None if passes else 2)
        passes = passes or run.Passes()
        Expect(run.Sent(), read_back + [f"0 rout:scan:count {count}"] + messages * passes, f"wire of the {shape} run")
        for readings, rows_of in fetches[fetched:fetched + passes]:
            rows += rows_of([reading.strip() for reading in readings])
        Expect([[len(piece) for piece in pieces] for pieces in run.Replies("fetch?")],
               [Pieces(readings) for readings, _ in fetches[fetched:fetched + passes]], f"reads of the {shape} run")
        fetched += passes

        stored = desk.Rows()
        Expect([list(row[2:12]) for row in stored[stored_before:]], rows[stored_before:], f"rows of the {shape} run")
        Expect([row[0] for row in stored], [str(number) for number in range(1, len(rows) + 1)], "numbers")
        Expect({reading for row in stored for reading in row[12:]}, {" "}, "channels that the card does not have")
        Expect(main["MSFlexGrid1(0)"].Cells(), LiveTable(names, rows[-1]), f"live table of the {shape} run")
        if shape == "paced":
            times = [datetime.strptime(row[1], "%Y-%m-%d %H:%M:%S") for row in stored[stored_before:]]
            Expect([(b - a).seconds >= 1 for a, b in zip(times, times[1:])], [True] * (passes - 1), "a second between")
