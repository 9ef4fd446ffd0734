# shellcheck shell=bash
# A screen without a display, a program on it, and a person's eyes and hands. To be sourced by a script under
# "set -euo pipefail" that calls StartScreen, then StartProgram. Everything started here ends with the script, however
# that ends; OnExit can be redefined for what the script itself has to clear away.
#
# Places are left, top, width and height in twips, 15 to the pixel, as they stand in src/windows.

readonly twips=15
readonly main_height=$((10260 / twips)) # of the main window without its menu bar, in pixels
scratch=$(mktemp -d)
program_id=
started=() # process ids, in the order of starting
main=      # the main window
menu_bar=0 # its height
hang_on=15 # seconds that a step may take

OnExit() { :; }

CleanUp() {
    local status=$?
    trap - EXIT INT TERM HUP
    local i
    for ((i = ${#started[@]} - 1; i >= 0; --i)); do
        kill "${started[i]}" 2>/dev/null || true
        wait "${started[i]}" 2>/dev/null || true
    done
    OnExit
    rm -rf "$scratch"
    exit "$status"
}
trap CleanUp EXIT
trap 'exit 129' HUP
trap 'exit 130' INT
trap 'exit 143' TERM

Fail() {
    echo "$(basename "$0"): $*" >&2
    [[ -z ${DISPLAY:-} || -z ${failure_picture:-} ]] || import -silent -window root "$failure_picture" 2>/dev/null || true
    exit 1
}

# WaitUntil SECONDS COMMAND...: repeats a command until it succeeds; fails if it has not succeeded by then.
WaitUntil() {
    local end=$((SECONDS + $1))
    shift
    until "$@"; do
        ((SECONDS < end)) || return 1
        sleep 0.05
    done
}

# ---- The screen and the program

StartScreen() {
    Xvfb -displayfd 3 -screen 0 1600x900x24 -nolisten tcp -noreset 3>"$scratch/display" 2>"$scratch/Xvfb.log" &
    started+=($!)
    WaitUntil "$hang_on" test -s "$scratch/display" || Fail "Xvfb does not start: $(<"$scratch/Xvfb.log")"
    DISPLAY=:$(<"$scratch/display")
    export DISPLAY XDG_RUNTIME_DIR=$scratch
    unset WAYLAND_DISPLAY QT_QPA_PLATFORM QT_SCALE_FACTOR
    # It tells when it is ready: a window that comes before would be left alone.
    openbox --startup "touch $scratch/managed" >"$scratch/openbox.log" 2>&1 &
    started+=($!)
    WaitUntil "$hang_on" test -e "$scratch/managed" || Fail "openbox does not start: $(<"$scratch/openbox.log")"
}

# StartProgram PROGRAM: starts it and waits for its main window.
StartProgram() {
    "$1" 2>"$scratch/program.log" &
    program_id=$!
    started+=("$program_id")
    main=$(WaitWindow "VANTREL MAIN")
    menu_bar=$(($(Measure "$main" HEIGHT) - main_height))
}

ProgramRuns() { grep -qs '^State:[[:space:]]*[^Z]' "/proc/$program_id/status"; }

ProgramEnded() { ! ProgramRuns; }

# WaitEnd: waits for the program's end and leaves its exit status in end_status.
WaitEnd() {
    WaitUntil "$hang_on" ProgramEnded || Fail "the program does not end"
    end_status=0
    wait "$program_id" || end_status=$?
}

# ---- Eyes

# Measure WINDOW WIDTH|HEIGHT|X|Y, in pixels
Measure() { xdotool getwindowgeometry --shell "$1" | sed -n "s/^$2=//p"; }

# FindWindow TITLE [WIDTHxHEIGHT]: prints the id of a window on the screen; fails if there is none.
FindWindow() {
    local id
    for id in $(xdotool search --onlyvisible --class vantrel 2>/dev/null); do
        if [[ $(xdotool getwindowname "$id") == "$1" ]] &&
            [[ -z ${2:-} || $(Measure "$id" WIDTH)x$(Measure "$id" HEIGHT) == "$2" ]]; then
            echo "$id"
            return
        fi
    done
    return 1
}

# WaitWindow TITLE [WIDTHxHEIGHT]: prints the id of the window once it is up: active, painted and at rest. Message boxes are
# called VANTREL; the title of dialogs without a caption is a blank, and their size tells them apart.
WaitWindow() {
    local end=$((SECONDS + hang_on)) id
    until id=$(FindWindow "$@") && IsUp "$id"; do
        ProgramRuns || Fail "the program ended before its window \"$1\" came: $(<"$scratch/program.log")"
        ((SECONDS < end)) || Fail "the window \"$1\"${2:+ of $2} does not come within $hang_on s"
        sleep 0.05
    done
    echo "$id"
}

# WaitGone WINDOW: waits until the window has left the screen.
WaitGone() { WaitUntil "$hang_on" IsGone "$1" || Fail "the window $(xdotool getwindowname "$1") does not go"; }

IsGone() { ! xwininfo -id "$1" 2>/dev/null | grep -q IsViewable; }

# Colours WINDOW [PLACE]: number of different colours.
Colours() { Picture "$@" | convert - -format '%k' info:; }

IsUp() {
    [[ $(xdotool getactivewindow 2>/dev/null) == "$1" ]] || return 1
    local before
    before=$(Measure "$1" X) && before+=$(Look "$1") || return 1
    sleep 0.1
    [[ $before == $(Measure "$1" X)$(Look "$1") ]]
}

# Picture WINDOW [PLACE]: what it looks like, as a picture on the standard output.
Picture() {
    local window=$1 crop=()
    shift
    (($# == 0)) || crop=(-crop "$(($3 / twips))x$(($4 / twips))+$(($1 / twips))+$(($2 / twips + $(Above "$window")))")
    import -silent -window "$window" "${crop[@]}" +repage png:-
}

# WaitChange BEFORE WINDOW PLACE: waits until the place looks different from the sum BEFORE that Look gave.
WaitChange() {
    local before=$1
    shift
    WaitUntil "$hang_on" LooksDifferent "$before" "$@" || Fail "nothing changes in $(xdotool getwindowname "$1")"
}

Look() { Picture "$@" | convert - rgb:- | md5sum; }

LooksDifferent() {
    local before=$1
    shift
    [[ $(Look "$@") != "$before" ]]
}

# ---- Hands

# Above WINDOW: pixels between its top and the area that places are counted from.
Above() { if [[ $1 == "$main" ]]; then echo "$menu_bar"; else echo 0; fi; }

# ClickPixel WINDOW X Y
ClickPixel() { xdotool mousemove --window "$1" "$2" "$(($3 + $(Above "$1")))" click 1; }

# Click WINDOW PLACE: clicks the middle of a place.
Click() { ClickPixel "$1" $((($2 + $4 / 2) / twips)) $((($3 + $5 / 2) / twips)); }

# Keys KEY...
Keys() { xdotool key --delay 30 "$@"; }

# Pick WINDOW PLACE ENTRY: picks entry ENTRY, from 0, from the list of a combo box.
Pick() {
    ClickPixel "$1" $((($2 + $4) / twips - 7)) $((($3 + $5 / 2) / twips))
    local down=()
    local i
    for ((i = 0; i < $6; ++i)); do down+=(Down); done
    Keys Home "${down[@]}" Return
}

# Type WINDOW PLACE TEXT: puts a text into a field, in place of what it holds.
Type() {
    Click "${@:1:5}"
    Keys ctrl+a
    xdotool type --delay 30 "$6"
}

# Menu NUMBER KEY...: opens a menu of the main window, counted from 0, and presses the keys in it. Keys that come before
# the menu is there would be lost.
Menu() {
    local right=() i before
    for ((i = 0; i < $1; ++i)); do right+=(Right); done
    before=$(WindowsShown)
    xdotool mousemove --window "$main" 40 $((menu_bar / 2)) click 1
    WaitUntil "$hang_on" HasMoreWindows "$before" || Fail "the menu does not open"
    Keys "${right[@]}" "${@:2}"
}

# WindowsShown: number of the program's windows on the screen, open menus included.
WindowsShown() { xdotool search --onlyvisible --class vantrel 2>/dev/null | wc -l; }

HasMoreWindows() { (($(WindowsShown) > $1)); }
