from desk import Desk, Expect
from desk.contents import ExpectMessage

with Desk() as desk:
    file = desk.folder / "db" / "Record1.mdb"
    file.write_text("shopping list")
    main = desk.Window("Form1")
    desk.Connect()
    desk.AssignRecord("Record1")
    main["Command3"].Click()
    ExpectMessage(desk, "Run-time error '3343':\n\nUnrecognized database format")
    Expect(desk.WaitEnd(), 1, "exit status")
    Expect(file.read_text(), "shopping list", "the file")
