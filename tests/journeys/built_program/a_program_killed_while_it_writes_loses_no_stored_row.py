import os
import signal

from desk import Desk, Expect, Until
from desk.browsing import OpenRecord, Select
from desk.contents import ExpectMessage
from desk.runs import ExpectSound

rows = 100_000


def KillWhileItWrites(record, is_deep=lambda: True):
    """Kills the program inside a commit to this record, once that `is_deep` enough. Seen from outside, a commit lasts as
    long as its journal. Asks without a pause: a commit is short."""
    journal = desk.RecordFile(record).with_suffix(".mdb-journal")

    def IsInside():
        if not os.path.exists(journal) or not is_deep():
            return False
        desk.program.send_signal(signal.SIGSTOP)
        os.waitid(os.P_PID, desk.program.pid, os.WSTOPPED)
        if os.path.exists(journal):
            return True
        desk.program.send_signal(signal.SIGCONT)  # too late: it has gone on
        return False

    Until(IsInside, f"the program writes to {record}", pause=0)
    desk.Kill()
    Expect(os.path.exists(journal), True, "the commit has not come to its end")


def Scans():
    return desk.Sent().count("fetch?\\n")


def StartRun():
    desk.Connect()
    desk.AssignRecord("Record1")
    main["Command3"].Click()


def ExpectNumbered(rows):
    Expect([row[0] for row in rows] == [str(num) for num in range(1, len(rows) + 1)], True, "numbered from 1")


with Desk() as desk:
    # Numbered from 2, so that a look at it renumbers every row.
    desk.MakeRecord("Record2", [f"+{row}.5" for row in range(1, rows + 1)], first=2)
    long_record = desk.Rows("Record2")
    size = desk.RecordFile("Record2").stat().st_size
    before = desk.RecordFile("Record2").stat().st_mtime_ns

    # Killed in the renumbering of one record while a run writes another one.
    main = desk.Window("Form1")
    StartRun()
    Until(lambda: len(desk.Rows()) >= 2, "two rows are stored")
    main["Command7"].Click()
    browser = desk.Window("Record_View_Form")
    Select(browser, "Record2")
    browser["Command2"].Click()
    KillWhileItWrites("Record2", lambda: os.stat(desk.RecordFile("Record2")).st_mtime_ns != before)
    stored, scans = desk.Rows(), Scans()
    ExpectNumbered(stored)
    Expect(len(stored), scans, "one row for each scan")
    ExpectSound(desk, "Record1")

    # The program itself puts the record right, which is then renumbered.
    desk.Restart()
    main = desk.Window("Form1")
    main["Command7"].Click()
    browser = desk.Window("Record_View_Form")
    OpenRecord(browser, "Record2")
    ExpectNumbered(desk.Rows("Record2"))
    Expect([row[1:] for row in desk.Rows("Record2")] == [row[1:] for row in long_record], True, "every row is there")
    ExpectSound(desk, "Record2")
    browser["Command4"].Click()
    browser.WaitGone()

    # Killed in the commit of a scan: the scans before it are there, and the next run goes on behind them.
    StartRun()
    seen = Until(lambda: len(desk.Rows()) >= len(stored) + 2 and desk.Rows(), "two more rows are stored")
    KillWhileItWrites("Record1")
    scans = Scans()
    desk.Restart()
    main = desk.Window("Form1")
    StartRun()
    Until(lambda: Scans() >= scans + 2, "the next run scans")
    main["Command4"].Click()
    ExpectMessage(desk, "End of Job.")
    Expect(desk.Rows()[:len(seen)], seen, "the rows before")
    ExpectNumbered(desk.Rows())
    Expect(len(desk.Rows()), Scans() - 1, "one row for each scan but the one that was cut off")
    ExpectSound(desk, "Record1")
