"""Runs as they look from the wire and the record: schedules, what a run sends, the end of one."""

import re

from desk import Expect, Until, quick_bench

readings = ["+2.00000000E+00", "-1.50000000E+00", "+3.00000000E+00"]
row_of_readings = readings[:2] + [readings[2] + "\n"] + [" "] * 7  # the last one keeps the end of the reply; others are off
fixed_reply = rf'  reply "fetch?" "{",".join(readings)}\n"' + "\n"
same_readings_bench = quick_bench + fixed_reply

read_back = [f"rout:scan:func? {ch}" for ch in range(1, 11)]
begin = read_back + ["rout:scan:count 3"]
poll = "rout:scan:state?"
one_pass = r"rout:SCAN( rout:scan:state\?)+ fetch\?"  # of messages in a row


def Set(desk, **changes):
    """Changes the schedule: clicks each check box that is given as True, types a text into a field, or presses a key on
    the leading part of a date or time."""
    desk.Window("Form1").Menu("set_read")
    schedule = desk.Window("Form4")
    for name, change in changes.items():
        control = schedule[name]
        if change is True:
            control.Click()
        elif change in ("Up", "Down"):
            left, top, _, height = control.Box()
            desk.ClickAt(left + 8, top + height // 2)
            desk.Keys(change)
        else:
            control.Type(change)
    schedule["Command1"].Click()
    schedule.WaitGone()


def Sent(desk, since=0, dev=0):
    """The messages to the instrument at place `dev`, from number `since` on, without their ends of line."""
    return [text.removesuffix("\\n") for text in desk.Sent(dev)[since:]]


def ExpectSent(messages, pattern, what):
    """The messages, each behind a blank, are what the regular expression says."""
    Expect(bool(re.fullmatch(pattern, " ".join(messages))), True, f"{what}: {messages}")


def WaitForPoll(desk, dev=0):
    """Waits until the instrument at place `dev` is polled anew: the run goes on."""
    before = len(desk.Sent(dev))
    Until(lambda: poll in Sent(desk, before + 1, dev), "the run goes on")  # one message may have been on its way


def ConfirmEnd(desk):
    box = desk.Message()
    Expect((box.title, box.text, box.buttons), ("VANTREL", "End of Job.", ["OK"]))
    box.Press("OK")


def ExpectNumbers(rows, number):
    """So many rows, numbered 1, 2, 3 ... in stored order."""
    Expect([row[0] for row in rows], [str(scan) for scan in range(1, number + 1)], "numbers in the record")


def ExpectWhole(rows, number):
    """So many rows of the same readings, numbered 1, 2, 3 ... in stored order."""
    ExpectNumbers(rows, number)
    for row in rows:
        Expect(list(row[2:12]), row_of_readings, "readings in the record")


def ExpectSound(desk, record="Record1"):
    """The file of a record is undamaged."""
    with desk.Engine(record) as engine:
        Expect(engine.execute("pragma integrity_check").fetchall(), [("ok",)], f"the file of {record}")


def ExpectEnded(desk):
    """The program ends with status 0, and its last calls close the find list, the resource manager and the session of its
    one instrument. Handles are 1, 2, 3 in the order of opening."""
    Expect(desk.WaitEnd(), 0, "exit status")
    Expect(desk.Calls()[-3:], [("viClose(2)", 0), ("viClose(1)", 0), ("viClose(3)", 0)], "last calls")
