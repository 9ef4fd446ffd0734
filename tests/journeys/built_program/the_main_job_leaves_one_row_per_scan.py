from desk import Desk, Expect, Until
from desk.runs import ConfirmEnd, ExpectSound, ExpectWhole, Sent, same_readings_bench

with Desk(same_readings_bench) as desk:
    main = desk.Window("Form1")
    desk.Connect()
    desk.AssignRecord()
    main["Command3"].Click()
    Until(lambda: len(desk.Rows()) >= 3, "three rows are stored")
    main["Command4"].Click()
    ConfirmEnd(desk)
    desk.Keys("Alt_L", "Left", "Return")  # Exit, the last menu
    Expect(desk.WaitEnd(), 0, "exit status")

    ExpectSound(desk)
    ExpectWhole(desk.Rows(), Sent(desk).count("rout:SCAN"))

    # The record is all that it leaves: no settings, no log.
    left = {str(file.relative_to(desk.folder)) for file in desk.folder.rglob("*") if file.is_file()}
    Expect(left, desk.put_there | {"db/Record1.mdb"}, "files")
