import os
import subprocess
import sys

from desk import Desk, Expect

path = os.environ["PATH"] + ":/sbin:/usr/sbin"
known = subprocess.run(["ldconfig", "-p"], env={**os.environ, "PATH": path}, capture_output=True, text=True, check=True)
if "libvisa.so" in known.stdout:
    print("skipped: this machine has a VISA library")
    sys.exit(77)

with Desk(with_library=False) as desk:
    main = desk.Window("Form1")
    main.Menu("Connected_to_Instrument")
    connect = desk.Window("Connect")
    Expect(connect["MSFlexGrid1"].RowCount(), 1, "rows of the list: its heading")
    connect["Command2"].Click()
    connect.WaitGone()
    Expect(desk.Windows(), ["VANTREL MAIN"], "windows")
    Expect(main.Enabled("Connected_to_Instrument"), {"Connected_to_Instrument": True}, "it goes on")
