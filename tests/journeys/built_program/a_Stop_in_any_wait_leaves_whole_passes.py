from desk import Desk, Expect, Until
from desk.run_controls import ExpectOn, idle, in_run
from desk.runs import (ConfirmEnd, ExpectSent, ExpectWhole, Sent, Set, begin, one_pass, poll, row_of_readings,
                       same_readings_bench)

rest_of_pass = r"(rout:scan:state\? )*fetch\?"

with Desk(same_readings_bench) as desk:
    main = desk.Window("Form1")
    desk.Connect()
    desk.AssignRecord()
    stop = main["Command4"].Middle()
    in_runs = Sent(desk)  # all that may go out: what connecting asks, and then the runs to their ends

    def Start():
        """Starts a run; gives the number of messages before it."""
        sent_before = len(desk.Sent())
        main["Command3"].Click()
        Until(lambda: len(desk.Sent()) > sent_before, "the run begins")
        return sent_before

    def ExpectEnd(sent_before, passes, when, begin=begin):
        """The run ends with one message, the controls idle, this many passes on the wire and a row of each in the record."""
        ConfirmEnd(desk)
        ExpectOn(main, idle, f"at the end of a run stopped {when}")
        Expect(desk.Windows(), ["VANTREL MAIN"], f"windows behind a run stopped {when}")
        ExpectSent(Sent(desk, sent_before)[len(begin):], rf"({one_pass} ?){{{passes}}}", f"run stopped {when}")
        Expect(Sent(desk, sent_before)[:len(begin)], begin, f"begin of the run stopped {when}")
        ExpectWhole(desk.Rows(), Sent(desk).count("fetch?"))
        Expect(main["MSFlexGrid1(0)"].Cells()[1], row_of_readings, "live table")
        in_runs.extend(Sent(desk, sent_before))

    # Of a start time that is a year away: neither count nor start has gone out; one pass is made all the same.
    Set(desk, at_time=True, StartTime="Up")
    sent_before = Start()
    Until(lambda: len(Sent(desk, sent_before)) == len(begin) - 1, "the plan is read back")
    desk.WaitForSilence()
    Expect(Sent(desk, sent_before), begin[:-1], "sent in the wait for the start time")
    ExpectOn(main, in_run, "in the wait for the start time")
    main["Command4"].Click()
    ExpectEnd(sent_before, "1", "in the wait for the start time")
    Set(desk, at_time=True)  # its tick goes

    # Of a poll, which goes on to its fetch; and in the first yield behind the fetch, when the pass is all but over.
    for held_behind, rest in ((poll, rest_of_pass), ("fetch?", "")):
        sent_before = Start()
        with desk.Held(held_behind):
            sent_at_stop = len(desk.Sent())
            desk.ClickAt(*stop)
        ExpectEnd(sent_before, "1,", f"behind {held_behind}")
        ExpectSent(Sent(desk, sent_at_stop), rest, f"sent after Stop behind {held_behind}")

    # Of the interval between two passes: no other pass begins.
    Set(desk, per_scan_interval=True, PerSan="Up")
    sent_before = Start()
    Until(lambda: Sent(desk, sent_before)[-1] == "fetch?", "the readings are fetched")
    desk.WaitForSilence()
    ExpectOn(main, in_run, "in the interval")
    main["Command4"].Click()
    ExpectEnd(sent_before, "1", "in the interval")

    # Of the poll of a run with Scan Count, which ends by itself: Stop changes nothing but the controls.
    Set(desk, per_scan_interval=True, stop_after_n_scan=True, N_SCAN="30")
    sent_before = Start()
    with desk.Held(poll):
        desk.ClickAt(*stop)
    ExpectEnd(sent_before, "1", "in a run of one pass", begin[:-1] + ["rout:scan:count 30"])
    desk.WaitForSilence()
    Expect(Sent(desk), in_runs, "sent in runs and at no other time")
