from desk import Desk, Expect, Until
from desk.runs import ConfirmEnd, ExpectEnded

with Desk() as desk:
    main = desk.Window("Form1")
    desk.Connect()
    main["Command3"].Click()
    Until(lambda: not main["exit_item"].Enabled(), "the run begins")
    main["Command4"].Click()
    ConfirmEnd(desk)
    Expect(main.Captions("pic_start", "pic_end"), {"pic_start": "1", "pic_end": " 160"}, "ends of the axis after a run")
    Expect(desk.Windows(), ["VANTREL MAIN"], "windows")

    main.Menu("exit_item")
    ExpectEnded(desk)
