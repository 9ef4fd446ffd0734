"""Fails unless a record is undamaged and holds one row for each scan in the log of the wire, in their order, numbered from 1.
Where the program was killed behind a fetch, before it sent anything else, the row of that scan may be missing.

    check_rows.py RECORD LOG [closed]

A log of several runs, each of which was cut off, ends each of them with the first message of the next one. "closed": the
sessions were closed under the run, which may have stored a last row of blanks.
"""

import sqlite3
import sys


def ScansOf(log):
    """(reply, whether its row must be there) of each fetch; None for the reply that did not come."""
    lines = [line.split(" ", 2) for line in log[:log.rfind("\n") + 1].splitlines()]
    scans = []
    for at, (_, arrow, text) in enumerate(lines):
        if arrow != ">" or text != r'"fetch?\n"':
            continue
        came = len(lines) > at + 1 and lines[at + 1][1] == "<"
        reply = lines[at + 1][2][1:-1].replace(r"\n", "\n") if came else None
        behind = lines[at + 2][2] if came and len(lines) > at + 2 else None
        scans.append((reply, behind is not None and not behind.startswith('"*IDN?')))
    return scans


record, wire = sys.argv[1:3]
may_end_blank = sys.argv[3:] == ["closed"]
with sqlite3.connect(record) as engine:
    assert engine.execute("pragma integrity_check").fetchall() == [("ok",)], "the file is damaged"
    rows = engine.execute("select * from DATA order by rowid").fetchall()
if [row[0] for row in rows] != [str(number) for number in range(1, len(rows) + 1)]:
    sys.exit(f"the rows are numbered {[row[0] for row in rows]}")
left = [",".join(row[2:5]) for row in rows]
for reply, must_be_there in ScansOf(open(wire, encoding="utf-8").read()):
    if left and left[0] == reply:
        left.pop(0)
    elif must_be_there:
        sys.exit(f"the row of {reply!r} is not there; the next one is {left[:1]}")
if may_end_blank and left[-1:] == [" , , "]:
    left.pop()
if left:
    sys.exit(f"rows of no scan: {left}")
