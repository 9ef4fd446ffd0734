from desk import Desk, Expect, quick_bench
from desk.run_controls import ExpectOn, idle, lost

with Desk(quick_bench + "  unplugged at call 100\n") as desk:
    main = desk.Window("Form1")
    desk.Connect()
    ExpectOn(main, idle, "after Connect")
    main["Command3"].Click()

    box = desk.Message()
    Expect((box.title, box.text, box.buttons), ("VANTREL", "Device is disconnected !", ["OK"]))
    assert "rout:SCAN\\n" in desk.Sent(), "the instrument was there when the run began"
    ExpectOn(main, idle, "while the loss is told")
    box.Press("OK")

    box = desk.Message()
    Expect(box.text, "End of Job.")
    ExpectOn(main, lost, "at the end")
    box.Press("OK")
    ExpectOn(main, lost, "after the end")
