"""Kills the program at random moments of its work: while it makes a record, while it numbers one anew, in a run, and while
it saves a page. VANTREL_ROUNDS kills it that often; VANTREL_SEED draws other moments."""

import os
import random
import time

from desk.browsing import AskToSave, OpenRecord
from desk.contents import ExpectMessage
from desk import Desk, Expect, Until
from desk.runs import ExpectNumbers, ExpectSound

kills = int(os.environ.get("VANTREL_ROUNDS", 4))
seed = int(os.environ.get("VANTREL_SEED", 1))
chance = random.Random(seed)
long_record = [f"+{row}.5" for row in range(1, 20_001)]


def Fetches():
    """What was fetched so far: the reply to each fetch?, or None for the last one if the program was killed before it had
    the whole reply. What was being written to the log then is left out."""
    log = desk.wire_file.read_text() if desk.wire_file.exists() else ""
    fetches, awaited = [], False
    for line in log[:log.rfind("\n") + 1].splitlines():
        _, arrow, text = line.split(" ", 2)
        if arrow == ">" and text == r'"fetch?\n"':
            fetches.append(None)
            awaited = True
        elif arrow == "<" and awaited:
            fetches[-1] = text[1:-1].replace(r"\n", "\n")
            awaited = False
    return fetches


def IsAfterTheLastFetch():
    """Whether the program went on behind its last fetch, and so the row of it is stored."""
    return desk.Sent()[-1] != r"fetch?\n"


def Start():
    desk.Connect()
    desk.AssignRecord()
    desk.Window("Form1")["Command3"].Click()


def KillWithin(seconds):
    time.sleep(chance.uniform(0, seconds))
    desk.Kill()


def KillInCreation():
    desk.RecordFile("Record1").unlink(missing_ok=True)
    Start()
    KillWithin(0.3)


def KillInNumbering():
    desk.RecordFile("Record1").unlink(missing_ok=True)
    desk.MakeRecord("Record1", long_record, first=chance.choice([2, 7]))
    Start()
    KillWithin(1)


def KillInRun():
    before = len(Fetches())
    Start()
    Until(lambda: len(Fetches()) >= before + 2, "the run goes on")
    KillWithin(2)


def KillInExport():
    if not desk.RecordFile("Record1").exists():
        desk.MakeRecord("Record1", long_record)
    desk.Window("Form1")["Command7"].Click()
    browser = desk.Window("Record_View_Form")
    OpenRecord(browser, "Record1")
    AskToSave(desk, browser, desk.folder / f"page{time.monotonic_ns()}.csv")
    KillWithin(0.3)


def ExpectStored(before, fetches):
    """The rows before, whatever their numbers, and behind them one for each fetch; the row of the last one may not have
    come to its commit."""
    rows = desk.Rows()
    Expect([row[1:] for row in rows[:len(before)]] == [row[1:] for row in before], True, "the rows before")
    stored = [",".join(row[2:5]) for row in rows[len(before):]]
    certain = fetches if not fetches or IsAfterTheLastFetch() else fetches[:-1]
    Expect(stored[:len(certain)], certain, "one row for each scan that was stored")
    Expect(len(stored) <= len(fetches), True, f"{len(stored)} rows of {len(fetches)} scans")


def ExpectNextStart():
    """The next run numbers every row and goes on behind them."""
    before = desk.Rows()
    scans = len(Fetches())
    Start()
    Until(lambda: len(Fetches()) >= scans + 2, "the next run scans")
    desk.Window("Form1")["Command4"].Click()
    ExpectMessage(desk, "End of Job.")
    ExpectStored(before, Fetches()[scans:])
    ExpectNumbers(desk.Rows(), len(before) + len(Fetches()) - scans)


with Desk() as desk:
    for kill in range(1, kills + 1):
        way = chance.choice([KillInCreation, KillInNumbering, KillInRun, KillInRun, KillInExport])
        if kill <= 4:  # a few kills are of each kind
            way = [KillInRun, KillInExport, KillInNumbering, KillInCreation][kill - 1]
        print(f"seed {seed}, kill {kill}: {way.__name__}", flush=True)
        kept = desk.Rows() if way in (KillInRun, KillInExport) else []
        if way is KillInNumbering:
            kept = [(str(num), "2024-05-06 07:08:09", reading, *[" "] * 19) for num, reading in enumerate(long_record, 1)]
        if way is KillInExport and not kept:
            kept = [(str(num), "2024-05-06 07:08:09", reading, *[" "] * 19) for num, reading in enumerate(long_record, 1)]
        scans = len(Fetches())
        way()
        if desk.RecordFile("Record1").exists():
            ExpectSound(desk)
        ExpectStored(kept, Fetches()[scans:])
        desk.wire_file.unlink(missing_ok=True)  # so that it does not grow from kill to kill
        desk.Restart()
        ExpectNextStart()
    print(f"Tried {kills} kills of the built program")
