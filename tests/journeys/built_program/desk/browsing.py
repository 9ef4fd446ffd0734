"""What a user does with the record browser."""

from desk import Expect, Until


def OpenRecord(browser, record):
    """Opens a record and waits until its page is there: the selection is gone then."""
    Select(browser, record)
    browser["Command2"].Click()
    Until(lambda: browser["List1"].Selected() == [], f"{record} is open")


def AnswerDelete(desk, browser, record, answer):
    """Presses Deleted for a record and answers the question."""
    Select(browser, record)
    browser["Command3"].Click()
    box = desk.Message()
    expected = (" ", f'Will you delete the "{record}.mdb"?', ["Yes", "No"])
    Expect((box.title_bar, box.text, box.buttons), expected, "question")
    box.Press(answer)


def Select(browser, record):
    browser["List1"].Entry(f"{record}.mdb").Click()
    Until(lambda: browser["List1"].Selected() == [f"{record}.mdb"], f"{record} is selected")


def AskToSave(desk, browser, file):
    """Presses CSV, and gives the dialog in which the file is typed, without its extension, and confirmed."""
    browser["Command5"].Click()
    dialog = desk.Dialog("Save As")
    desk.XDo("type", "--delay", "5", str(file.with_suffix("")))
    desk.Keys("Return")
    return dialog


def Csv(rows):
    """A page with these rows as the bytes of a CSV file."""
    captions = ("Scan Cycle", "Time", *(f"CH {ch}" for ch in range(1, 21)))
    return "".join(",".join(f'"{cell}"' for cell in row) + "\r\n" for row in (captions, *rows)).encode()
