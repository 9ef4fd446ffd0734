from desk import Desk, Expect, Until
from desk.runs import ExpectSound, ExpectWhole, same_readings_bench

with Desk(same_readings_bench) as desk:
    desk.Connect()
    desk.AssignRecord()
    desk.Window("Form1")["Command3"].Click()
    seen = Until(lambda: len(desk.Rows()) >= 3 and desk.Rows(), "three rows are stored")
    desk.Kill()
    ExpectSound(desk)
    Expect(desk.Rows()[:len(seen)], seen, "the rows that were seen before")
    ExpectWhole(desk.Rows(), len(desk.Rows()))
