from desk import Desk, Expect, Until
from desk.run_controls import ExpectOn, all_off, idle
from desk.runs import ConfirmEnd, ExpectNumbers, ExpectSent, Sent, poll

of_first = ["+2.00000000E+00", "-1.50000000E+00", "+3.00000000E+00"]
of_second = ["+7.00000000E+00", "+8.00000000E+00", "+9.00000000E+00"]
bench = rf"""
pace 5
pause 300
instrument GPIB0::7::INSTR
  identity "Orlane,SB-10,Q1,1.02"
  serial "First scanner"
  card 1
  timer 0.3
  channel 1-3 VOLT
  reply "fetch?" "{",".join(of_first)}\n"
instrument GPIB0::8::INSTR
  identity "Orlane,SB-10,Q2,1.02"
  serial "Second scanner"
  card 1
  timer 0.3
  channel 1-3 VOLT
  reply "fetch?" "{",".join(of_second)}\n"
"""
rest_of_pass = r"(rout:scan:state\? )+fetch\?"
run_without_device = all_off - {"Command5", "exit_item"}


with Desk(bench) as desk:
    main = desk.Window("Form1")
    desk.Connect()
    desk.AssignRecord()

    def Start(dev):
        passes = Sent(desk, dev=dev).count("rout:SCAN")
        main["Command3"].Click()
        Until(lambda: Sent(desk, dev=dev).count("rout:SCAN") > passes, "the run begins")

    def OpenInPoll(dev, ticked):
        """Opens Connect in a poll of the instrument at place `dev`: the run is held while it is open. The search opens
        all sessions anew, and the instruments of the last time come up ticked."""
        main.OpenMenuOf("Connected_to_Instrument")
        entry = main["Connected_to_Instrument"].Middle()
        calls_before = len(desk.Calls())
        with desk.Held(poll, dev):
            desk.ClickAt(*entry)
        connect = desk.Window("Connect")
        handles = [text for text, _ in desk.Calls()[calls_before:] if text.startswith(("viClose", "viOpen", "viFindR"))]
        Expect([text.partition("(")[0] for text in handles], ["viClose"] * 6 + ["viOpenDefaultRM", "viFindRsrc"] +
               ["viOpen"] * 2, "sessions closed and opened by the search")
        Expect(connect.Checked("Check1(0)", "Check1(1)"), {f"Check1({row})": row in ticked for row in range(2)}, "ticks")
        desk.WaitForSilence()
        Expect(desk.Windows(), ["VANTREL MAIN", "Connect to instrument"], "windows while Connect holds the run")
        return connect

    def Leave(connect, *rows):
        """Changes the ticks of these rows and leaves the dialog; gives the number of messages to each instrument before."""
        for row in rows:
            was_ticked = connect[f"Check1({row})"].Checked()
            connect[f"Check1({row})"].Click()
            Until(lambda: connect[f"Check1({row})"].Checked() != was_ticked, f"the tick of row {row} changes")
        sent_before = len(desk.Sent(0)), len(desk.Sent(1))
        connect["Command2"].Click()
        connect.WaitGone()
        return sent_before

    def ExpectPassFinished(sent_before, dev, readings):
        """The pass goes on at the instrument at place `dev`, and is the last one: its row, with these readings, is the
        last in the record."""
        for place in range(2):
            sent = Sent(desk, sent_before[place], place)
            run = [message for message in sent if not message.startswith(("rout:scan:func?", "ROUTe:SCAN:TIMER?"))]
            ExpectSent(run, rest_of_pass if place == dev else "", f"sent to instrument {place}")
        rows = desk.Rows()
        ExpectNumbers(rows, Sent(desk).count("fetch?") + Sent(desk, dev=1).count("fetch?"))
        Expect(list(rows[-1][2:5]), readings[:2] + [readings[2] + "\n"], "readings of the last row")

    def ExpectEnd(sent_before, dev, readings, when):
        ConfirmEnd(desk)
        ExpectOn(main, idle, f"at the end of a run {when}")
        Expect(desk.Windows(), ["VANTREL MAIN"], f"windows behind a run {when}")
        ExpectPassFinished(sent_before, dev, readings)

    Start(0)
    sent_before = Leave(OpenInPoll(0, {0}))
    ExpectEnd(sent_before, 0, of_first, "that keeps its instrument")
    Expect(main["SSTab1"].Tabs(), [("First scanner", True)], "tabs")

    # The second instrument takes the first one's place, in the middle of a pass.
    Start(0)
    sent_before = Leave(OpenInPoll(0, {0}), 0, 1)
    ExpectEnd(sent_before, 1, of_second, "that gets another instrument")
    Expect(main["SSTab1"].Tabs(), [("Second scanner", True)], "tabs")
    Expect(main["MSFlexGrid1(0)"].Cells()[1][:3], of_second[:2] + [of_second[2] + "\n"], "live table")

    # None at all: nothing is asked behind the search, whose status costs the pass. From then on the run has nothing to
    # send to, and no Stop, until Connect finds a device.
    Start(1)
    connect = OpenInPoll(1, {1})
    rows, wire = desk.Rows(), desk.Wire()
    Leave(connect, 1)
    Until(lambda: not main["Command6"].Enabled(), "the run controls go off")
    ExpectOn(main, run_without_device, "in a run without a device")
    Expect(main["SSTab1"].Tabs(), [(f"Deviec {dev}", dev == 0) for dev in range(4)], "tabs")
    desk.WaitForSilence()
    Expect(desk.Windows(), ["VANTREL MAIN"], "windows in a run without a device")
    Expect(desk.Wire(), wire, "exchanges of a run without a device")
    main.Menu("Connected_to_Instrument")
    Leave(desk.Window("Connect"), 1)
    ConfirmEnd(desk)
    ExpectOn(main, idle, "after the end of a run without a device")
    Expect(desk.Rows(), rows, "record")
    Expect(desk.Windows(), ["VANTREL MAIN"], "windows")

    # One instrument more. The pass goes on at the first one, which has readings of its last scan.
    Start(1)
    sent_before = Leave(OpenInPoll(1, {1}), 0)
    ExpectEnd(sent_before, 0, of_first, "that gets an instrument more")
    Expect(main["SSTab1"].Tabs(), [("First scanner", True), ("Second scanner", False)], "tabs")
    desk.WaitForSilence()
    Expect(desk.Windows(), ["VANTREL MAIN"], "windows behind the last run")
