"""What windows and message boxes show: every control, every text."""

from typing import NamedTuple

from desk import Expect

_fields = ("text", "combo box", "spin box")


class Shows(NamedTuple):
    """A control as a user sees it: the text of a field, the caption of any other control."""

    text: str
    tool_tip: str = ""
    enabled: bool = True
    checked: bool = False


def ExpectContents(window, caption, controls, tool_tips={}):
    """The window is active, and shows exactly these controls: a Shows, a text for a control that has no more than that,
    the cells of a grid, or None for a picture. A window without a caption has a blank in its title bar. Grids and pictures
    have these tool tips and no others."""
    Expect(window.Title(), caption, "caption")
    Expect(window.TitleBar(), caption or " ", "title bar")
    Expect([name for name, is_seen in window.Visible().items() if is_seen and name not in controls], [],
           f"more controls on {caption}")
    Expect(window.Visible(*controls), dict.fromkeys(controls, True), f"controls on {caption}")
    grids = {name: cells for name, cells in controls.items() if isinstance(cells, list)}
    Expect({name: window[name].Cells() for name in grids}, grids, f"grids on {caption}")
    others = {name: Shows(shows) if isinstance(shows, str) else shows
              for name, shows in controls.items() if name not in grids and shows is not None}
    Expect(_Seen(window, others), others, f"controls on {caption}")
    wordless = [name for name, shows in controls.items() if name in grids or shows is None]
    if wordless:
        Expect(window.ToolTips(*wordless), {name: tool_tips.get(name, "") for name in wordless}, "tool tips")


def ExpectMessage(desk, text):
    """A message box with the program's title, this text and one button, OK, comes, and is confirmed."""
    box = desk.Message()
    Expect((box.title_bar, box.text, box.buttons), ("VANTREL", text, ["OK"]), "message box")
    box.Press("OK")


def _Seen(window, names):
    texts, roles = window.Captions(*names), window.Roles(*names)
    texts |= {name: window[name].Text() for name in names if roles[name] in _fields}
    rest = (window.ToolTips(*names), window.Enabled(*names), window.Checked(*names))
    return {name: Shows(texts[name], *(column[name] for column in rest)) for name in names}

