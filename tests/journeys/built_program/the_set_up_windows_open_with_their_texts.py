import datetime

from desk import VERSION, Desk, Expect, Until
from desk.contents import ExpectContents, Shows

# Four kinds of channels: without a sensor, with one of either kind, and a four-wire pair, 4 and 9.
bench = """
instrument GPIB0::7::INSTR
  identity "Orlane,SB-10,Q1,1.02"
  serial "Oven"
  card 1
  timer 0.3
  channel 1 VOLT
  channel 2 TEMP PT385 RTD
  channel 3 TCO K
  channel 4 FRES
"""
functions = ["DCV", "ACV", "DCI", "ACI", "2W", "4W", "FREQ", "PERIOD", "TCOUPL", "TEMP", "4W,TEMP", "NONE"]
rtd_types = ["PT100", "D100", "F100", "PT385", "PT3916", "USER", "SPRTD", "NTCT"]
thermocouples = ["E", "J", "K", "N", "R", "S", "T"]
records = [f"Record{place}" for place in range(1, 11)] + ["NONE"]
prompt = "Please choice a datebase"
other_tabs = ["Tab 1", "Tab 2", "Tab 3"]

# The clock of the program stands in the afternoon, for the two forms of the hour to differ.
offset = 15 - datetime.datetime.now(datetime.timezone.utc).hour
zone = datetime.timezone(datetime.timedelta(hours=offset))


def Connect(desk, main):
    main.Menu("Connected_to_Instrument")
    connect = desk.Window("Connect")
    ExpectContents(connect, "Connect to instrument", {
        "Label1": "Find Connected Instruments",
        "Command1": "Find",
        "Label2": "Select Instrument",
        "MSFlexGrid1": [[" ", "Model", "Information"], ["", "SB-10", "Oven"]],
        "Check1(0)": "Check1(0)",  # the boxes have no caption; a screen reader calls them by their names
        "Command2": "EXIT",
    })
    connect["Command2"].Click()
    connect.WaitGone()
    desk.Connect()
    Expect(main["SSTab1"].Tabs(), [("Oven", True)])
    Expect((main["Combo1"].Text(), main["Combo1"].Entries()), ("Oven", ["Oven"]), "the list of devices")


def SetRead(desk, main):
    begin = datetime.datetime.now(zone).replace(microsecond=0)
    main.Menu("set_read")
    window = desk.Window("Form4")
    seconds = (datetime.datetime.now(zone) - begin).seconds
    moments = [begin + datetime.timedelta(seconds=second) for second in range(seconds + 1)]
    full_time = {f"{moment:%Y/%m/%d  %I:%M:%S}": f"{moment:%Y/%m/%d  %H:%M:%S}" for moment in moments}
    start, stop = (window[name].Text() for name in ("StartTime", "StopTime"))
    Expect({start, stop} - full_time.keys(), set(), "times beside the present one")
    ExpectContents(window, "Set Read", {
        "at_time": "At Time",
        "StartTime": Shows(start, full_time[start]),
        "stop_time": Shows("Stop Time", enabled=False),
        "StopTime": Shows(stop, full_time[stop], enabled=False),
        "per_scan_interval": "Per Scan Interval",
        "PerSan": Shows("00:00:00", "00:00:00"),
        "stop_after_n_scan": "Scan Count",
        "N_SCAN": "1",
        "UpDown1": "UpDown1",  # no text
        "Command1": "OK",
    })
    # The up-down stands at 1, which is its minimum.
    for button, number in [("Down", "1"), ("Up", "2"), ("Down", "1"), ("Down", "1"), ("Up", "2")]:
        window["UpDown1"].Part(button).Click()
        Until(lambda: window["N_SCAN"].Text() == number, f"{number} after {button}")
    window["per_scan_interval"].Click()
    Until(window["per_scan_interval"].Checked, "it is ticked")
    Expect(window["stop_after_n_scan"].Caption(), "Stop after N scan")
    window["Command1"].Click()
    window.WaitGone()


def SetDraw(desk, main):
    main.Menu("set_draw")
    window = desk.Window("Form3")
    ExpectContents(window, "Set Draw", {
        "Label1": "Device",
        "Combo_dev": "Oven",
        "Label2": "Channal",
        "Combo_chan": "Ch 1",
        "Label3": "Color",
        "color_text": "",
        "Command3": Shows("Choose the color", "Choose the color"),
        "Label4": "Division",
        "division_text": "1",
        "Label5": "offset",
        "offset_text": "0",
        "Command1": "OK",
        "Combo_db": prompt,
    })
    swatch = window["color_text"].Picture()
    Expect(swatch.At(swatch.width // 2, swatch.height // 2), (0, 128, 0), "colour of channel 1")
    Expect(window["Combo_dev"].Entries(), ["Oven"])
    Expect(window["Combo_chan"].Entries(), [f"Ch {ch}" for ch in range(1, 11)])
    Expect(window["Combo_db"].Entries(), records)
    window["Command1"].Click()
    window.WaitGone()


def DrawTable(desk, main):
    main["Command8"].Click()
    window = desk.Window("Form2")
    channels = [[f"CH {ch}", "", "1", "0"] for ch in range(1, 11)]
    ExpectContents(window, "", {
        "SSTab1": None,
        "MSFlexGrid1(0)": [["channel", "color", "Division", "Offset"]] + channels,
        "Command1": "OK",
    })
    Expect(window["SSTab1"].Tabs(), [("Oven", True)])
    Expect(window["SSTab1"].HiddenTabs(), other_tabs)
    window["Command1"].Click()
    window.WaitGone()


def SetRecord(desk, main):
    main["Command10"].Click()
    window = desk.Window("DB_SET")
    ExpectContents(window, "", {
        "MSFlexGrid1": [["Device", "DataBase"], ["Oven", ""]],
        "Combo1(0)": prompt,
        "OK": "OK",
    })
    Expect(window["Combo1(0)"].Entries(), records)
    window["OK"].Click()
    window.WaitGone()


def SeeValue(desk, main):
    main["Command6"].Click()
    window = desk.Window("DATA_Table")
    ExpectContents(window, "DATA TABLE", {
        "SSTab1": None,
        "MSFlexGrid1(0)": [["Scan"] * 2 + ["Channel"] * 10,
                           ["Scan Cycle", "Time"] + [f"CH {ch}" for ch in range(1, 11)],
                           [""] * 12],
    })
    Expect(window["SSTab1"].Tabs(), [("Oven", True)])
    Expect(window["SSTab1"].HiddenTabs(), other_tabs)
    desk.Keys("Escape")
    window.WaitGone()


def About(desk, main):
    main.Menu("About")
    window = desk.Window("about_form")
    ExpectContents(window, "About Orlane VANTREL", {
        "Picture1": None,
        "Label1": "Orlane VANTREL",
        "Label2": "version " + VERSION,
        "Label3": "Made by Orlane Instruments.",
        "Label4": "https://www.orlane.example/vantrel",
        "Command1": "EXIT",
    })
    window["Command1"].Click()
    window.WaitGone()


def SetDevice(desk, main):
    main.Menu("set_sc")
    window = desk.Window("Set_Dev")
    plan = ["DCV", "TEMP", "TCOUPL", "4W"] + ["NONE"] * 6
    ExpectContents(window, "Set Device", {
        "Label1": "Device:",
        "Combo1_dev": "Oven",
        "Grid_Fun": [[f"CH {ch}", "", "", ""] for ch in range(1, 11)],
        **{f"ch({ch})": Shows(function, enabled=ch != 8) for ch, function in enumerate(plan)},
        # The instrument's own types come with a line feed, and so match no entry.
        "temp(1)": "PT100",
        "temp(2)": "E",
        "Label2": "Scan Mode",
        "Combo_Scan_model": "SCAN",
        "Label3": "Scan Timer",
        "Timer_Set": "0.3",
        "Label4": "second",
        "Command1": "SET",
        "Command2": "EXIT",
    })
    Expect(window["Combo1_dev"].Entries(), ["Oven"])
    Expect(window["Combo_Scan_model"].Entries(), ["SCAN", "STEP"])
    Expect(window["temp(1)"].Entries(), rtd_types)
    Expect(window["temp(2)"].Entries(), thermocouples)
    for ch in range(10):
        offered = [name for name in functions if ch < 5 or "4W" not in name]
        Expect(window[f"ch({ch})"].Entries(), offered, f"functions of channel {ch + 1}")

    window["ch(4)"].Pick("DCI")
    shunt = desk.Window("DCI_ACI_SET")
    ExpectContents(shunt, "", {
        "Label3": "R =",
        "ohm_set": "1",
        "Label2": "(Ohm )",
        "Label4": "I =",
        "curr_set": "0",
        "Label5": "( A ) Offset",
        "Label1": "DCI , ACI = ( Measurement Volt / R ) + Offset",
        "Command1": "SET",
    })
    shunt["Command1"].Click()
    shunt.WaitGone()
    Until(lambda: window["ch(4)"].ToolTip() == "R=1, I= 0", "the shunt stands in the tool tip")
    window["Command2"].Click()
    window.WaitGone()


with Desk(bench, {"TZ": f"BENCH{-offset:+d}"}) as desk:
    main = desk.Window("Form1")
    for story in (Connect, SetRead, SetDraw, DrawTable, SetRecord, SeeValue, About, SetDevice):
        story(desk, main)
