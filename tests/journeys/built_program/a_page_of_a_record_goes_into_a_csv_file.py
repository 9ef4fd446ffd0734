from desk import Desk, Expect, Until
from desk.browsing import AskToSave, Csv, OpenRecord


def ExpectPage(what):
    """The file is written when the dialog has gone."""
    Until(lambda: file.exists() and file.read_bytes() == Csv(desk.Rows()), what)


with Desk() as desk:
    file = desk.folder / "page.csv"
    desk.MakeRecord("Record1", [(f"-{row}.5", *[" "] * 18, "last\n") for row in (1, 2)])
    desk.Window("Form1")["Command7"].Click()
    browser = desk.Window("Record_View_Form")
    OpenRecord(browser, "Record1")
    AskToSave(desk, browser, file).WaitGone()
    ExpectPage("the file is the page")

    # A file that is there is replaced only with consent, and No is what Enter answers.
    file.write_text("mine")
    dialog = AskToSave(desk, browser, file)
    question = desk.Message()
    Expect(question.buttons, ["Yes", "No"], "the question before the file is replaced")
    desk.Keys("Return")
    question.WaitGone()
    Expect(file.read_text(), "mine", "the file without consent")
    desk.Keys("Return")
    desk.Message().Press("Yes")
    dialog.WaitGone()
    ExpectPage("the file is the page again")

    # A cancelled one leaves all as it is.
    file.write_text("mine")
    browser["Command5"].Click()
    dialog = desk.Dialog("Save As")
    desk.Keys("Escape")
    dialog.WaitGone()
    Expect(file.read_text(), "mine", "the file behind a cancelled dialog")
    Expect(sorted(desk.Windows()), ["Record View", "VANTREL MAIN"], "windows")
