import subprocess

from desk import Desk, Expect, Until
from desk.runs import ConfirmEnd

ending = (", or keep records elsewhere: vantrel --folder DIR uses DIR/db.\n\n"
          "You can go on, but only without records: a run that is to store ends the program at Start.")


def RunAScan(main):
    main["Command3"].Click()
    Until(lambda: not main["exit_item"].Enabled(), "the run begins")
    main["Command4"].Click()
    ConfirmEnd(desk)


with Desk() as desk:
    other = desk.folder / "other"
    other.mkdir()
    desk.Kill()
    desk.Restart("--folder", str(other))
    box = desk.Message()
    Expect(box.text, f"There is no folder for records:\n{other}/db\n\nMake this folder" + ending)
    Expect(box.buttons, ["OK"])
    box.Press("OK")
    main = desk.Window("Form1")
    desk.Connect()
    RunAScan(main)

    desk.Kill()
    (other / "db").mkdir()
    desk.Restart("--folder", str(other))
    Expect(desk.Windows(), ["VANTREL MAIN"], "windows")
    main = desk.Window("Form1")
    desk.Connect()
    desk.AssignRecord("Record1")
    RunAScan(main)
    Expect(sorted(file.name for file in (other / "db").iterdir()), ["Record1.mdb"], "records in the other folder")
    Expect(list((desk.folder / "db").iterdir()), [], "records beside the program")

    for words, status in ((["--version"], 0), (["--help"], 0), (["--foldr"], 2)):
        told = subprocess.run([desk.folder / "vantrel", *words], capture_output=True, text=True)
        Expect(told.returncode, status, f"exit status of {words}")
        Expect(bool(told.stdout), status == 0, "standard output")
        Expect(told.stderr.count("\n"), 0 if status == 0 else 1, "lines of standard error")
