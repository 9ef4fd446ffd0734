from desk import Desk, Expect

captions = {
    "configuration": "Configuration",
    "set_sc": "Set Scanner Card ",
    "set_read": "Set read",
    "set_draw": "Set draw",
    "Connected_to_Instrument": "Connect to Instrument",
    "view": "View",
    "Record_View": "Record View",
    "Record_Draw": "Record Draw",
    "help": "Help",
    "About": "About",
    "exit_item": "Exit",
    "pic_start": "1",
    "pic_end": "160",
}
tool_tips = {"Command3": "Start", "Command4": "Stop", "Command6": "See Value .", "Command7": "Open Record",
             "Command5": "Printer", "Command1": "Move the zero line up", "Command2": "Move the zero line down",
             "Combo1": "No instrument is connected, so Start is off.\nChoose Configuration, Connect to Instrument."}
names_alone = {"Command8": "Set Draw", "Command10": "Set Record", "Command9": "Record Draw"}
off = {"set_sc", "set_read", "set_draw", "Command3", "Command4", "Command6", "Command8", "Command10"}
separators = {"n1"}
in_closed_menus = separators | {"set_sc", "set_read", "set_draw", "Connected_to_Instrument", "Record_View", "Record_Draw",
                                "About"}
on_hidden_pages = {f"MSFlexGrid1({dev})" for dev in range(1, 4)}
never_shown = {f"MSFlexGrid2({dev})" for dev in range(4)}

with Desk() as desk:
    main = desk.Window("Form1")
    Expect((main.Title(), main.TitleBar()), ("VANTREL MAIN", "VANTREL MAIN"), "caption")
    Expect(desk.Windows(), ["VANTREL MAIN"], "windows")
    Expect(main.Captions(*captions), captions, "captions")
    Expect(main.ToolTips(), {name: tool_tips.get(name, "") for name in main.Names()}, "tool tips")
    # A button shows a picture only; to a screen reader it has a name, with or without a tool tip.
    names = {name: tip for name, tip in tool_tips.items() if name != "Combo1"} | names_alone
    Expect(main.Captions(*names), names, "names of the buttons")
    Expect(main.Enabled(), {name: name not in off | separators for name in main.Names()}, "enabled")
    hidden = in_closed_menus | on_hidden_pages | never_shown
    Expect(main.Visible(), {name: name not in hidden for name in main.Names()}, "visible")
    Expect(main["SSTab1"].Tabs(), [(f"Device {place}", place == 1) for place in range(1, 5)], "tabs")
    for dev in range(4):
        Expect(main[f"MSFlexGrid1({dev})"].Cells(), [[""] * 10] * 4, f"live table {dev}")
    Expect((main["Combo1"].Text(), main["Combo1"].Entries()), ("", []), "the list of devices")
    # Nothing was searched for: no instrument has heard anything, and no record was made.
    Expect(desk.Wire(), [], "wire")
    Expect(list((desk.folder / "db").iterdir()), [], "records")
