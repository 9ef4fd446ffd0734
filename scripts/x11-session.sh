# shellcheck shell=bash
# A screen without a display, a program on it, and a person's eyes and hands. To be sourced by a script under
# "set -euo pipefail" that calls StartScreen, then StartProgram. Everything started here ends with the script, however
# that ends; OnExit can be redefined for what the script itself has to clear away.
#
# Windows, controls and entries go by their names in src/windows, as window-places tells of them: a control is
# Form1.Command3, a cell of a grid Form2.MSFlexGrid1(0)[1][2], a tab Form1.SSTab1[1]. A PLACE is one of these names, or
# left, top, width and height in pixels from the top left corner of the window's client area.

scratch=$(mktemp -d)
program_id=
started=() # process ids, in the order of starting
main=      # the main window
menu_bar=0 # its height
hang_on=15 # seconds that a step may take

declare -A title_of size_of # of windows: their captions, a blank for none; width and height, "345x177"
declare -A place_of         # of controls, cells and tabs
declare -A number_of        # of an entry in its list or menu, and of a menu in the bar: Set_Dev.ch(16).DCI, Form1.set_sc
declare -A menu_of entries_of # of a menu entry: its menu, and how many entries that has

# ReadPlaces PROGRAM INSTRUMENTS: takes up what the windows consist of, with so many instruments connected.
ReadPlaces() {
    local kind window fields name
    while IFS=$'\t' read -r kind window fields; do
        IFS=$'\t' read -ra fields <<<"$fields"
        name=$window.${fields[0]}
        case $kind in
        window)
            size_of[$window]=${fields[0]}x${fields[1]}
            title_of[$window]=${fields[2]:- }
            ;;
        control) place_of[$name]=${fields[*]:2} ;;
        tab)
            name+="[${fields[1]}]"
            place_of[$name]=${fields[*]:2}
            ;;
        cell)
            name+="[${fields[1]}][${fields[2]}]"
            place_of[$name]=${fields[*]:3}
            ;;
        item) number_of[$name.${fields[2]:-}]=${fields[1]} ;;
        menu) number_of[$name]=${fields[1]} ;;
        entry)
            menu_of[$name]=$window.${fields[1]}
            number_of[$name]=${fields[2]}
            entries_of[$name]=${fields[3]}
            ;;
        esac
    done < <("$1" "$2")
    ((${#place_of[@]} > 0)) || Fail "$1 tells of no window"
}

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

# StartProgram PROGRAM: starts it and waits for its main window. To be called behind ReadPlaces.
StartProgram() {
    "$1" 2>"$scratch/program.log" &
    program_id=$!
    started+=("$program_id")
    main=$(WaitWindow Form1)
    menu_bar=$(($(Measure "$main" HEIGHT) - ${size_of[Form1]#*x}))
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

# FindWindow WINDOW|TITLE: prints the id of a window on the screen; fails if there is none. Windows without a caption
# are told apart by their size.
FindWindow() {
    local id title=${title_of[$1]:-$1}
    for id in $(xdotool search --onlyvisible --class vantrel 2>/dev/null); do
        if [[ $(xdotool getwindowname "$id") == "$title" ]] &&
            [[ $title != " " || $(Measure "$id" WIDTH)x$(Measure "$id" HEIGHT) == "${size_of[$1]}" ]]; then
            echo "$id"
            return
        fi
    done
    return 1
}

# WaitWindow WINDOW|TITLE [PLACE]: prints the id of the window once it is up: active, painted and at rest, of a window
# that goes on changing in this place. Message boxes and the dialogs of the toolkit go by their titles; that of a message box
# is VANTREL.
WaitWindow() {
    local end=$((SECONDS + hang_on)) id
    until id=$(FindWindow "$1") && IsUp "$id" "${@:2}"; do
        ProgramRuns || Fail "the program ended before its window \"$1\" came: $(<"$scratch/program.log")"
        ((SECONDS < end)) || Fail "the window \"$1\" does not come within $hang_on s"
        sleep 0.05
    done
    echo "$id"
}

# WaitGone WINDOW: waits until the window has left the screen.
WaitGone() { WaitUntil "$hang_on" IsGone "$1" || Fail "the window $(xdotool getwindowname "$1") does not go"; }

IsGone() { ! xwininfo -id "$1" 2>/dev/null | grep -q IsViewable; }

# Colours WINDOW [PLACE]: number of different colours.
Colours() { Picture "$@" | convert - -format '%k' info:; }

# IsUp WINDOW [PLACE]: whether it is active, and does not change but for a cursor that blinks.
IsUp() {
    [[ $(xdotool getactivewindow 2>/dev/null) == "$1" ]] || return 1
    local left changed
    left=$(Measure "$1" X) && Picture "$@" >"$scratch/before.png" || return 1
    sleep 0.1
    Picture "$@" >"$scratch/after.png" || return 1
    changed=$(compare -metric AE "$scratch/before.png" "$scratch/after.png" null: 2>&1) || true
    [[ $changed =~ ^[0-9]{1,2}$ && $left == $(Measure "$1" X) ]] # fewer than a hundred pixels
}

# Picture WINDOW [PLACE]: what it looks like, as a picture on the standard output.
Picture() {
    local window=$1 crop=() left top width height
    if [[ ${2:-} ]]; then
        read -r left top width height <<<"$(Place "$2")"
        crop=(-crop "${width}x$height+$left+$((top + $(Above "$window")))")
    fi
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

# Place PLACE: left, top, width and height.
Place() {
    if [[ $1 == *" "* ]]; then echo "$1"; else echo "${place_of[$1]:?there is no $1}"; fi
}

# Above WINDOW: pixels between its top and its client area.
Above() { if [[ $1 == "$main" ]]; then echo "$menu_bar"; else echo 0; fi; }

# ClickPixel WINDOW X Y
ClickPixel() { xdotool mousemove --window "$1" "$2" "$(($3 + $(Above "$1")))" click 1; }

# Click WINDOW PLACE: clicks the middle of a place.
Click() {
    local left top width height
    read -r left top width height <<<"$(Place "$2")"
    ClickPixel "$1" $((left + width / 2)) $((top + height / 2))
}

# Keys KEY...
Keys() { xdotool key --delay 30 "$@"; }

# OpenList WINDOW COMBO: opens the list of a combo box and leaves its window in opened_list. Keys that come before the list
# is there would go to the box, clicks that come before it has gone would only close it.
OpenList() {
    local left top width height before
    read -r left top width height <<<"$(Place "$2")"
    before=$(WindowsShown)
    ClickPixel "$1" $((left + width - 7)) $((top + height / 2))
    WaitUntil "$hang_on" FindNewWindow "$before" || Fail "the list of $2 does not open"
}

# Pick WINDOW COMBO ENTRY: picks an entry, by its text, from the list of a combo box.
Pick() {
    local place=${number_of[$2.$3]:?there is no entry $3 in $2}
    OpenList "$1" "$2"
    Keys Home $(Repeated "$place" Down) Return
    WaitGone "$opened_list"
}

# Repeated NUMBER KEY: the key so many times.
Repeated() {
    local i
    for ((i = 0; i < $1; ++i)); do echo "$2"; done
}

# Type WINDOW PLACE TEXT: puts a text into a field, in place of what it holds.
Type() {
    Click "$1" "$2"
    Keys ctrl+a
    xdotool type --delay 30 "$3"
}

# Menu ENTRY: picks an entry from the menus of the main window: Form1.set_read. From the end of its menu that is nearer, so
# that entries that are off beyond it do not count. Keys that come before the menu is there would be lost.
Menu() {
    local menu=${menu_of[$1]:?there is no entry $1} above=${number_of[$1]} below way before
    below=$((${entries_of[$1]} - above))
    if ((below <= above)); then way=$(Repeated "$below" Up); else way=$(Repeated $((above + 1)) Down); fi
    before=$(WindowsShown)
    xdotool mousemove --window "$main" 40 $((menu_bar / 2)) click 1
    WaitUntil "$hang_on" HasMoreWindows "$before" || Fail "the menu does not open"
    # shellcheck disable=SC2086 # a word for each key
    Keys $(Repeated "${number_of[$menu]}" Right) $way Return
}

# WindowsShown: the program's windows on the screen, open menus and lists included. (One that goes in the midst of the
# search fails it.)
WindowsShown() { { xdotool search --onlyvisible --class vantrel 2>/dev/null || true; } | sort; }

HasMoreWindows() { (($(WindowsShown | wc -l) > $(wc -l <<<"$1"))); }

# FindNewWindow BEFORE: leaves in opened_list the window that is on the screen and was not BEFORE, as WindowsShown told.
FindNewWindow() {
    opened_list=$(comm -13 <(echo "$1") <(WindowsShown) | head -1)
    [[ $opened_list ]]
}
