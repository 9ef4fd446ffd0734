"""Runs, and what they leave: messages on the wire, readings in tables and records."""

from desk import Expect, Until


def _Unquoted(text):
    """What went over the wire, of which the log holds the quoted text."""
    return text.encode().decode("unicode_escape")


def Current(reading, ohm, offset):
    """What a current channel shows: the shortest form of the current."""
    return f"{float(reading) / ohm + offset:.15g}"


def Row(length, **cells):
    """A row of this many channels, of which these have a reading, as ch1=..., and the others one blank."""
    return [cells.get(f"ch{number}", " ") for number in range(1, length + 1)]


def LiveTable(names, readings=None):
    """The live table of a device whose channels have these functions; before a scan without readings."""
    headings = [f"CH {number}({name})" for number, name in enumerate(names, 1)]
    readings = readings or [""] * len(names)
    return [row[i:i + 10] for i in range(0, len(names), 10) for row in (headings, readings)]


class Run:
    """A run from Start to "End of Job.", and what went over the wire in it. It is stopped by hand once `passes` passes
    are fetched from the instrument at `last_place`, or ends by itself."""

    def __init__(self, desk, passes=None, last_place=0):
        main = desk.Window("Form1")
        before = len(desk.Wire())
        main["Command3"].Click()
        if passes:
            Until(lambda: desk.Wire()[before:].count((last_place, ">", "fetch?\\n")) >= passes,
                  f"{passes} passes are fetched")
            main["Command4"].Click()
        box = desk.Message()
        Expect(box.text, "End of Job.")
        box.Press("OK")
        self._wire = desk.Wire()[before:]

    def Passes(self):
        return sum(text.startswith("rout:SCAN") for _, arrow, text in self._wire if arrow == ">")

    def Sent(self):
        """Messages in their order, as "0 fetch?": the place of the instrument and the text, which a line feed ends."""
        sent = [(place, _Unquoted(text)) for place, arrow, text in self._wire if arrow == ">"]
        Expect([text for _, text in sent if text.index("\n") != len(text) - 1], [], "messages without one line feed")
        return [f"{place} {text[:-1]}" for place, text in sent]

    def Replies(self, query, place=0):
        """Replies to a query, each as the list of the pieces in which it was read."""
        replies, open_reply = [], False
        for at, arrow, text in self._wire:
            if at != place:
                continue
            if arrow == ">":
                open_reply = text == query + "\\n"
                if open_reply:
                    replies.append([])
            elif open_reply:
                replies[-1].append(_Unquoted(text))
        return replies

    def Readings(self, place=0):
        """Of every fetch from this instrument; the last one ends in the reply's line feed."""
        return ["".join(pieces).split(",") for pieces in self.Replies("fetch?", place)]


def SeeValue(desk, devices):
    """Captions of the tabs of the See Value window, and the texts of its tables."""
    desk.Window("Form1")["Command6"].Click()
    window = desk.Window("DATA_Table")
    tabs = window["SSTab1"].Tabs()
    tables = [window[f"MSFlexGrid1({dev})"].Cells() for dev in range(devices)]
    desk.Keys("Escape")
    window.WaitGone()
    return tabs, tables


def ReadBack(place, names):
    """What Start asks an instrument whose channels have these functions when it has asked."""
    sent = []
    for number, name in enumerate(names, 1):
        if name in ("DCI", "ACI"):
            continue
        sent.append(f"{place} rout:scan:func? {number}")
        if "TEMP" in name:
            sent.append(f"{place} TEMPerature:TRANsducer? @{number}")
    return sent


def ExpectScans(desk, devices, records):
    """`devices` as (caption of its tab, functions, rows of the run) stand in the live tables and in See Value, and
    `records`, {dev: (name, rows)}, are what the records hold."""
    main = desk.Window("Form1")
    tabs, tables = SeeValue(desk, len(devices))
    Expect(tabs, [(caption, dev == 0) for dev, (caption, _, _) in enumerate(devices)], "tabs of See Value")
    for dev, (caption, names, rows) in enumerate(devices):
        Expect(main[f"MSFlexGrid1({dev})"].Cells(), LiveTable(names, rows[-1]), f"live table of {caption}")
        Expect(tables[dev][0], ["Scan"] * 2 + ["Channel"] * len(names), "first heading of See Value")
        Expect(tables[dev][1], ["Scan Cycle", "Time"] + [f"CH {i}" for i in range(1, len(names) + 1)],
               "second heading of See Value")
        shown = tables[dev][2:]
        Expect([[row[0]] + row[2:] for row in shown], [[str(i), *row] for i, row in enumerate(rows, 1)],
               f"See Value of {caption}")
        if dev in records:
            name, stored_rows = records[dev]
            stored = desk.Rows(name)
            Expect([[row[0], *row[2:2 + len(names)]] for row in stored],
                   [[str(i), *row] for i, row in enumerate(stored_rows, 1)], f"record of {caption}")
            Expect([row[1] for row in shown], [row[1] for row in stored[-len(rows):]], f"times of {caption}")


def SetRead(desk, number=None, counted=False, interval=None):
    """Sets the read schedule. `interval` is the number of seconds between passes, 0 to 59, and None for none."""
    desk.Window("Form1").Menu("set_read")
    dialog = desk.Window("Form4")
    for box, wanted in (("per_scan_interval", interval is not None), ("stop_after_n_scan", counted)):
        if dialog[box].Checked() != wanted:
            dialog[box].Click()
            Until(lambda: dialog[box].Checked() == wanted, f"{box} changes")
    if interval is not None:
        dialog["PerSan"].Focus()
        desk.Keys("End", *["Up"] * interval)  # in the seconds
    if number is not None:
        dialog["N_SCAN"].Type(number)
        Until(lambda: dialog["N_SCAN"].Text() == number, f"the number is {number}")
    if interval is not None:
        Until(lambda: dialog["PerSan"].Text() == f"00:00:{interval:02}", "the interval is set")
    dialog["Command1"].Click()
    dialog.WaitGone()


def SetCurrent(desk, dialog, ch, function, ohm, offset):
    """Makes a channel of the scanner card dialog a current channel."""
    dialog[f"ch({ch})"].Type(function)
    shunt = desk.Window("DCI_ACI_SET")
    shunt["ohm_set"].Type(ohm)
    shunt["curr_set"].Type(offset)
    shunt["Command1"].Click()
    shunt.WaitGone()


def WritePlan(desk, dialog):
    """SET and EXIT of the scanner card dialog."""
    dialog["Command1"].Click()
    box = desk.Message()
    Expect(box.text, "Setting complete!")
    box.Press("OK")
    dialog["Command2"].Click()
    dialog.WaitGone()
