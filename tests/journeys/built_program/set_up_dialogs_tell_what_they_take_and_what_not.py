from desk import Desk, Expect, Until, quick_bench
from desk.contents import ExpectMessage


def PickCurrent(window, channel, function):
    """Makes it a current channel, and gives the dialog that asks for its shunt."""
    window[channel].Pick(function)
    return desk.Window("DCI_ACI_SET")


def SetDevice(desk, main):
    main.Menu("set_sc")
    window = desk.Window("Set_Dev")
    shunt = PickCurrent(window, "ch(0)", "DCI")
    for text in ("0", "-1", "abc"):
        shunt["ohm_set"].Type(text)
        shunt["curr_set"].Type("7")
        shunt["Command1"].Click()
        ExpectMessage(desk, "Please key a number (>0).")
    shunt["ohm_set"].Type("2.5V")
    shunt["curr_set"].Type("-0.002")
    shunt["Command1"].Click()
    shunt.WaitGone()
    Until(lambda: window["ch(0)"].ToolTip() == "R=2.5, I= -0.002", "the shunt stands in the tool tip")

    shunt = PickCurrent(window, "ch(1)", "ACI")
    shunt["ohm_set"].Type("50")
    desk.Keys("Escape")
    shunt.WaitGone()
    Until(lambda: window["ch(1)"].ToolTip() == "R=1, I= 0", "closing the dialog stores nothing")
    window["ch(0)"].Pick("DCV")
    Until(lambda: window["ch(0)"].ToolTip() == "", "the tool tip goes with the current function")

    window["Command1"].Click()
    ExpectMessage(desk, "Setting complete!")
    Expect(window["ch(1)"].Text(), "ACI", "the dialog stays open")

    window["Timer_Set"].Type("soon")
    window["Command1"].Click()
    ExpectMessage(desk, 'The scan timer of Quick scanner is not a number of seconds: "soon". Please key a number.')
    Expect(window["Timer_Set"].HasFocus(), True, "the field to mend has the focus")
    window["Command2"].Click()
    window.WaitGone()


def SetRead(desk, main):
    for text, taken in [("2001", "2000"), ("0", "1"), ("2000", None), ("1", None)]:
        main.Menu("set_read")
        window = desk.Window("Form4")
        window["N_SCAN"].Type(text)
        window["Command1"].Click()
        if taken:
            ExpectMessage(desk, "Scan count range is 1 to 2000")
        window.WaitGone()
        Expect(window["N_SCAN"].Text(), taken or text, "the count, with the dialog hidden")


def SetDraw(desk, main):
    main.Menu("set_draw")
    window = desk.Window("Form3")
    window["Combo_chan"].Pick("Ch 2")
    window["division_text"].Type("-2")
    window["Command1"].Click()
    ExpectMessage(desk, "Quick scanner ,  Ch 2\n\nDivision : 1")
    window.WaitGone()


with Desk(quick_bench) as desk:
    main = desk.Window("Form1")
    desk.Connect()
    for story in (SetDevice, SetRead, SetDraw):
        story(desk, main)
    Expect(desk.Windows(), ["VANTREL MAIN"], "windows")
