"""The controls of the main window that a run turns off and on, as a user reads them."""

from desk import Expect

_set_up = ("set_draw", "set_read", "set_sc")
_switched = _set_up + ("Command3", "Command4", "Command6", "Command8", "Command10", "Command5", "exit_item")
_always_on = ("Command7", "Command9", "Connected_to_Instrument", "Record_View", "Record_Draw", "About")

all_off = {"Command5", "exit_item"}  # of those that are switched, what is on all the same
in_run = {"Command4", "Command6", "Command8"}
idle = set(_switched)
idle_in_run = idle - {"Command5", "exit_item"}
lost = {"Command6", "Command10", "Command5", "exit_item"}


def ExpectOn(main, on, when):
    """Exactly those of `on`, and those that never go off, are enabled."""
    names = _switched + _always_on
    Expect(main.Enabled(*names), {name: name in on or name in _always_on for name in names}, f"enabled {when}")
