"""check_rows.py passes a record that has what the log of the wire asks for, and no other."""

import pathlib
import sqlite3
import subprocess
import sys
import tempfile
import unittest

CHECK = pathlib.Path(__file__).parent / "check_rows.py"
SCAN = '0 > "rout:scan:state?\\n"\n0 < "1,1\\n"\n0 > "fetch?\\n"\n0 < "{}\\n"\n'
IDENTITY = '0 > "*IDN?\\n"\n0 < "BENCH,SB-20\\n"\n'
STEP = '0 > "rout:scan:step\\n"\n'


class Check(unittest.TestCase):
    def Fault(self, log, rows, *words, first=1):
        """What it finds wrong with a record of these rows, numbered from `first`, behind this log; empty for nothing."""
        with tempfile.TemporaryDirectory() as folder:
            record, wire = pathlib.Path(folder, "Record1.mdb"), pathlib.Path(folder, "wire.log")
            wire.write_text(log, encoding="utf-8")
            with sqlite3.connect(record) as engine:
                engine.execute("create table DATA (NUM, Time, Ch1, Ch2, Ch3)")
                engine.executemany("insert into DATA values (?, ?, ?, ?, ?)",
                                   [(str(number), "", *row) for number, row in enumerate(rows, first)])
            engine.close()
            found = subprocess.run([sys.executable, "-B", CHECK, record, wire, *words],
                                   stderr=subprocess.PIPE, encoding="utf-8")
        self.assertEqual(found.returncode != 0, found.stderr != "")
        return found.stderr

    def Runs(self, *replies):
        """The log of a run of these scans that goes on behind them."""
        return IDENTITY + "".join(SCAN.format(reply) + STEP for reply in replies)

    # The last reading of a row ends in the line feed of the reply.
    first, second, third = ("1", "2", "3\n"), ("4", "5", "6\n"), ("7", "8", "9\n")
    replies = ("1,2,3", "4,5,6", "7,8,9")

    def test_every_row_is_there(self):
        self.assertEqual(self.Fault(self.Runs(*self.replies), [self.first, self.second, self.third]), "")

    def test_a_row_is_missing(self):
        for missing in range(3):
            rows = [self.first, self.second, self.third]
            del rows[missing]
            self.assertIn(f"the row of '{self.replies[missing]}\\n' is not there", self.Fault(self.Runs(*self.replies), rows))

    def test_a_row_is_there_twice(self):
        self.assertIn("is not there", self.Fault(self.Runs(*self.replies), [self.first, self.first, self.second, self.third]))

    def test_a_number_is_missing(self):
        self.assertIn("are numbered ['2']", self.Fault(self.Runs("1,2,3"), [self.first], first=2))

    def test_a_row_is_of_no_scan(self):
        self.assertIn("rows of no scan", self.Fault(self.Runs("1,2,3"), [self.first, self.second]))

    def test_a_last_row_of_blanks_is_there(self):
        rows = [self.first, (" ", " ", " ")]
        self.assertIn("rows of no scan", self.Fault(self.Runs("1,2,3"), rows))
        self.assertEqual(self.Fault(self.Runs("1,2,3"), rows, "closed"), "")
        self.assertIn("rows of no scan", self.Fault(self.Runs("1,2,3"), [*rows, (" ", " ", " ")], "closed"))

    def test_the_last_row_may_be_missing_before_the_next_message(self):
        log = self.Runs("1,2,3") + SCAN.format("4,5,6")
        self.assertEqual(self.Fault(log, [self.first]), "")
        self.assertEqual(self.Fault(log, [self.first, self.second]), "")
        self.assertEqual(self.Fault(log + self.Runs("7,8,9"), [self.first, self.third]), "")

    def test_the_file_is_damaged(self):
        with tempfile.TemporaryDirectory() as folder:
            record, wire = pathlib.Path(folder, "Record1.mdb"), pathlib.Path(folder, "wire.log")
            record.write_bytes(b"no database" * 100)
            wire.write_text("", encoding="utf-8")
            self.assertNotEqual(subprocess.run([sys.executable, "-B", CHECK, record, wire], stderr=subprocess.DEVNULL).returncode, 0)


unittest.main()
