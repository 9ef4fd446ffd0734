from desk import Desk, Expect, quick_bench
from desk.contents import ExpectMessage

bench = quick_bench + """
instrument GPIB0::8::INSTR
  identity "Orlane,SB-10,Q2,1.02"
  serial "Other scanner"
  card 1
  channel 1 VOLT
"""
prompt = "Please choice a datebase"


def Open():
    main["Command10"].Click()
    return desk.Window("DB_SET")


def Shown(window):
    return [window[f"Combo1({dev})"].Text() for dev in (0, 1)]


with Desk(bench) as desk:
    main = desk.Window("Form1")
    desk.Connect(0, 1)
    window = Open()
    Expect(Shown(window), [prompt, prompt])
    window["Combo1(0)"].Pick("Record3")
    window["Combo1(1)"].Pick("Record3")
    ExpectMessage(desk, "Please select other Record.")
    Expect(Shown(window), ["Record3", "Record3"], "the refused text stays on show")
    window["OK"].Click()
    window.WaitGone()
    Expect(Shown(Open()), ["Record3", prompt], "what was taken")
