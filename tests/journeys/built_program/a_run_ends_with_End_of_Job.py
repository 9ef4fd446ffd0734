from desk import Desk, Expect, Until

with Desk() as desk:
    main = desk.Window("Form1")
    desk.Connect()
    main["Command3"].Click()
    Until(lambda: not main["exit_item"].Enabled(), "the run begins")
    main["Command4"].Click()
    box = desk.Message()
    Expect((box.title, box.text, box.buttons), ("VANTREL", "End of Job.", ["OK"]))
    box.Press("OK")
    Expect(main.Captions("pic_start", "pic_end"), {"pic_start": "1", "pic_end": " 160"}, "ends of the axis after a run")
    Expect(desk.Windows(), ["VANTREL MAIN"], "windows")

    main.Menu("exit_item")
    Expect(desk.WaitEnd(), 0, "exit status")
