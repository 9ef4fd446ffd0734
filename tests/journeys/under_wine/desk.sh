# shellcheck shell=bash
# The program as it is built for Windows, in a folder of its own in a Windows of its own, Wine's, on a screen of its own with
# mouse and keyboard. To be sourced behind "set -euo pipefail" by a script that is called with the build folder.

build=$(realpath "$1")
cd "$(dirname "${BASH_SOURCE[0]}")/../../.."
. scripts/x11-session.sh

export WINEPREFIX=$build/wine-with-screen WINEDEBUG=-all WINEDLLOVERRIDES='mscoree,mshtml=;winemenubuilder.exe='
hang_on=90
desk=$scratch/desk # the program's folder
wire=$desk/wire.log # what goes between the program and the bench

OnExit() { wineserver -k || true; }

# LayDesk [BENCH_FILE]: puts the program there, and as its VISA library the bench, the usual one or that of the file.
LayDesk() {
    mkdir -p "$desk/db"
    cp "$build/bin/vantrel.exe" "$build/bench/visa64.dll" "$desk"
    [[ $# -eq 0 ]] || export VANTREL_BENCH=$PWD/$1
    export VANTREL_VISA=$desk/visa64.dll VANTREL_BENCH_LOG=$wire
    # The words behind the name are handed on; the process is the program's own.
    printf '#!/bin/sh\nexec wine "%s" "$@"\n' "$desk/vantrel.exe" >"$desk/vantrel"
    [[ -d $WINEPREFIX ]] || { wineboot --init && wineserver -w; }
    # Without a display, so nothing of that Windows is left when one with a display is to start; it would keep a pipe open.
    wine "$build/bin/window-places.exe" 2 >"$scratch/places"
    wineserver -k
    printf '#!/bin/sh\ntr -d "\\r" <"%s"\n' "$scratch/places" >"$desk/window-places"
    chmod +x "$desk/vantrel" "$desk/window-places"
}

Fetches() { grep -c '> "fetch?' "$wire" 2>/dev/null || true; }

HasFetched() { (($(Fetches) >= $1)); }

# Connect: connects the first instrument.
Connect() {
    local connect
    Menu Form1.Connected_to_Instrument
    connect=$(WaitWindow Connect)
    (($(Colours "$connect" "Connect.MSFlexGrid1[1][1]") > 1)) || Fail "the search finds no instrument"
    Click "$connect" "Connect.Check1(0)"
    Click "$connect" Connect.Command2
    WaitGone "$connect"
    WaitWindow Form1 >"$scratch/window" # it takes no click before
}

# StartRun: starts a run that stores into Record1, and waits until it has stored.
StartRun() {
    local records before
    Click "$main" Form1.Command10
    records=$(WaitWindow DB_SET)
    Pick "$records" "DB_SET.Combo1(0)" Record1
    Click "$records" DB_SET.OK
    WaitGone "$records"
    WaitWindow Form1 >"$scratch/window"
    before=$(Fetches)
    Click "$main" Form1.Command3
    WaitUntil "$hang_on" HasFetched $((before + 2)) || Fail "the run does not go on"
}
