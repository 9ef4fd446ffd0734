from desk import Desk, Expect, Until
from desk.run_controls import ExpectOn, all_off, idle, idle_in_run, in_run

# Each pass lasts for two dozen polls: long enough to look around after Stop.
unhurried_bench = """
instrument GPIB0::7::INSTR
  identity "Orlane,SB-10,Q1,1.02"
  serial "Slow scanner"
  card 1
  channel 1-3 VOLT
  counts 0 1 1 1 1 1 1 1 1 1 1 1 2 2 2 2 2 2 2 2 2 2 2 2 3
"""

with Desk(unhurried_bench) as desk:
    main = desk.Window("Form1")
    ExpectOn(main, all_off, "before Connect")
    desk.Connect()
    ExpectOn(main, idle, "after Connect")

    main["Command3"].Click()
    Until(lambda: "rout:SCAN\\n" in desk.Sent(), "the scan starts")
    ExpectOn(main, in_run, "in the run")

    main["Combo1"].Pick("Slow scanner")
    Until(main["Command3"].Enabled, "Start comes on")
    ExpectOn(main, idle_in_run, "after a change of Combo1 in the run")

    main["Command4"].Click()
    Until(main["exit_item"].Enabled, "Exit comes on")
    ExpectOn(main, idle, "after Stop")
    Expect(desk.Windows(), ["VANTREL MAIN"], "windows while the pass runs to its end")

    desk.Message().Press("OK")
    ExpectOn(main, idle, "after the end of the run")
