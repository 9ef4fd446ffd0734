from desk import Desk, Expect
from desk.contents import ExpectContents, Shows

channels = range(1, 21)
records = ["Record1.mdb", "Record2.mdb", "bench.mdb"]

with Desk() as desk:
    main = desk.Window("Form1")
    for record in records:
        desk.MakeRecord(record.removesuffix(".mdb"), [])
    (desk.folder / "db" / "Record3.MDB").write_text("no record: the ending counts to the letter")
    (desk.folder / "db" / "notes.txt").write_text("no record")

    main["Command7"].Click()
    browser = desk.Window("Record_View_Form")
    ExpectContents(browser, "Record View", {
        "List1": None,
        "Command1": Shows("Fresh", "Read the list of records again"),
        "Command2": Shows("Open", "Show the selected record"),
        "Command3": Shows("Deleted", "Delete the selected record"),
        "Command5": Shows("CSV", "Save the table as it stands in a CSV file"),
        "Command4": Shows("Exit", "Close this window"),
        "MSFlexGrid1": [["Scan"] * 2 + ["Channel"] * 20,
                        ["Scan Cycle", "Time"] + [f"CH {ch}" for ch in channels],
                        [""] * 22],
        "prev_DB": Shows("Previous", "Show the 1000 rows before", enabled=False),
        "next_DB": Shows("Next", "Show the next 1000 rows", enabled=False),
    }, {"MSFlexGrid1": "Select a record above and press Open."})
    Expect(sorted(browser["List1"].Entries()), records)
    browser["Command4"].Click()
    browser.WaitGone()

    main["Command9"].Click()
    plot = desk.Window("Record_View_Draw")
    ExpectContents(plot, "Record Draw", {
        "Frame1": "Setting",
        "Combo_record": "Please choice a record.",
        "Combo_chan": "Please chocice a channel.",
        "Label1": "Data Quantity :",
        "Data_RecordCount": "0",
        "draw_all": "Drawing with all.",
        "draw_limit": "Drawing data from                    to",
        "draw_start": "",
        "draw_stop": "",
        "Label2": "Color Print :",
        "color_box": Shows("color_box", "Choose the colour of the next trace"),  # no text: called by its name
        "Label4": "Offset :",
        "offset_box": "0",
        "Label3": "Division :",
        "division_box": "1",
        "Command1": Shows("Draw", "Draw the channel over what is drawn already"),
        "Command2": Shows("Clean", "Take all traces away"),
        "Command3": Shows("Exit", "Close this window"),
        "draw_pic": None,
        "Slider1": "Slider1",  # no text
        "Text1": "1",
        "show_value": "",
    })
    Expect(sorted(plot["Combo_record"].Entries()), records)
    Expect(plot["Combo_chan"].Entries(), [f"CH{ch}" for ch in channels])
    Expect(plot["Slider1"].Range(), (1, 1, 11), "value, minimum and maximum of the slider")
    plot["Command3"].Click()
    plot.WaitGone()
