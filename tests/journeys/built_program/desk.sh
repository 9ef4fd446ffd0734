# shellcheck shell=bash
# The built program on a screen of its own, in a folder of its own, with one instrument of three channels that answers
# quickly. To be sourced by a test: TEST PROGRAM BENCH_FOLDER.
. "$(dirname "${BASH_SOURCE[0]}")/../../../scripts/x11-session.sh"

bench_folder=$2
hang_on=20
failure_picture=$PWD/$(basename "$0" .sh).png
instrument_row="300 1365 6000 255" exit_connect="240 2940 6135 375" # Connect
tick="240 1335 700 315"
record_combo="2580 360 2580 315" ok_record="0 2160 5175 495" # DB_SET
start="480 0 1180 420" stop="1680 0 400 420" set_record="3600 0 400 420" # Form1

# The program finds its records beside itself: here it has a folder of its own, on the same disk for a link to do.
desk=$(mktemp -d "$PWD/desk.XXXXXX")
OnExit() { rm -rf "$desk"; }
mkdir "$desk/db"
cp --link "$1" "$desk/vantrel" 2>/dev/null || cp "$1" "$desk/vantrel"
record=$desk/db/Record1.mdb

cp "$(dirname "${BASH_SOURCE[0]}")/quick.bench" "$desk"

# OpenProgram: starts it with the instrument on the wire.
OpenProgram() {
    export LD_LIBRARY_PATH=$bench_folder${LD_LIBRARY_PATH:+:$LD_LIBRARY_PATH} VANTREL_BENCH=$desk/quick.bench
    StartScreen
    StartProgram "$desk/vantrel"
}

# OpenConnect: leaves the dialog, with its search done, in connect.
OpenConnect() {
    Menu 0 Up Return
    connect=$(WaitWindow "Connect to instrument")
}

ConnectAndAssign() {
    OpenConnect
    (($(Colours "$connect" $instrument_row) > 1)) || Fail "the search does not find the instrument"
    Click "$connect" $tick
    Click "$connect" $exit_connect
    WaitGone "$connect"
    Click "$main" $set_record
    local records
    records=$(WaitWindow " " 345x177)
    Pick "$records" $record_combo 0
    Click "$records" $ok_record
    WaitGone "$records"
}

# ConfirmMessage: waits for a message box and presses its button.
ConfirmMessage() {
    local box
    box=$(WaitWindow VANTREL)
    Keys Return
    WaitGone "$box"
}

Rows() { sqlite3 -readonly "$record" "select count(*) from DATA" 2>/dev/null || echo 0; }

HasRows() { (($(Rows) >= $1)); }

# RunUntil ROWS: starts a run and waits until the record has so many rows.
RunUntil() {
    Click "$main" $start
    WaitUntil "$hang_on" HasRows "$1" || Fail "the run stores no $1 rows"
}

# ExpectSound ROWS: the record is whole, with at least so many rows, numbered 1, 2, 3 ... in stored order.
ExpectSound() {
    [[ $(sqlite3 "$record" 'pragma integrity_check') == ok ]] || Fail "the record is damaged"
    HasRows "$1" || Fail "the record has $(Rows) rows, not $1"
    local misnumbered
    misnumbered=$(sqlite3 "$record" 'select count(*) from DATA where cast(NUM as integer) <>
        (select count(*) from DATA as before where before.rowid <= DATA.rowid)')
    ((misnumbered == 0)) || Fail "$misnumbered rows have another number than their place"
}

# ExpectEnd STATUS: the program ends by itself, with this exit status.
ExpectEnd() {
    WaitEnd
    [[ $end_status == "$1" ]] || Fail "the program ended with status $end_status, not $1"
}
