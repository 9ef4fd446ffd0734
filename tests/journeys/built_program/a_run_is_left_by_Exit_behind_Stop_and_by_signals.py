import signal

from desk import Desk, Expect, Until
from desk.run_controls import ExpectOn, in_run
from desk.runs import ExpectEnded, ExpectWhole, Sent, poll, same_readings_bench


def InRun(desk):
    """The main window, in a run that has stored rows."""
    main = desk.Window("Form1")
    desk.Connect()
    desk.AssignRecord()
    main["Command3"].Click()
    Until(lambda: len(desk.Rows()) >= 2, "rows are stored")
    return main


def ExpectLeft(desk, where):
    """The program has ended with its sessions closed, in the pass under way, and the record is whole."""
    ExpectEnded(desk)
    Expect(Sent(desk)[-1], poll, f"last message, left {where}")
    ExpectWhole(desk.Rows(), Sent(desk).count("fetch?"))


with Desk(same_readings_bench) as desk:
    main = InRun(desk)
    ExpectOn(main, in_run, "in the run")
    main["exit_item"].Click()
    desk.CloseRequest()
    rows = len(desk.Rows())
    Until(lambda: len(desk.Rows()) > rows + 1, "the run goes on behind a click on Exit and a close request")
    ExpectOn(main, in_run, "behind a click on Exit and a close request")
    spots = main["Command4"].Middle(), main["exit_item"].Middle()
    with desk.Held(poll):
        for spot in spots:
            desk.ClickAt(*spot)
    ExpectLeft(desk, "by Stop and Exit in a poll")

with Desk(same_readings_bench) as desk:
    InRun(desk)
    with desk.Held(poll):
        desk.program.send_signal(signal.SIGTERM)
    ExpectLeft(desk, "by a signal in a poll")

with Desk(same_readings_bench) as desk:
    main = InRun(desk)
    all_settings = main["Command8"].Middle()
    with desk.Held(poll):
        desk.ClickAt(*all_settings)
    desk.Window("Form2")
    desk.WaitForSilence()
    desk.program.send_signal(signal.SIGHUP)
    ExpectLeft(desk, "by a signal while a dialog holds the run")
