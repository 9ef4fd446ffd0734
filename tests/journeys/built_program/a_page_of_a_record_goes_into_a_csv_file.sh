#!/usr/bin/env bash
set -euo pipefail
. "$(dirname "$0")/desk.sh"

records="4080 0 400 420"                                                       # Form1
list="120 120 8535 2205" open="8760 600 2055 375" csv="8760 1560 2055 375"     # Record_View_Form
file=$desk/page.csv

MakeRecord() {
    local channels
    channels=$(printf ', Ch%s text' {1..20})
    sqlite3 "$record" "create table DATA (NUM text, Time text$channels);
        insert into DATA (NUM, Time) values ('1', '2026-03-01 08:00:01'), ('2', '2026-03-01 08:00:02');
        update DATA set $(printf "Ch%s = ' ', " {2..19}) Ch1 = '-' || NUM || '.5', Ch20 = 'last' || char(10);"
}

# The bytes that the page has to give.
ExpectedBytes() {
    printf '"Scan Cycle","Time"'
    printf ',"CH %s"' {1..20}
    printf '\r\n'
    local row
    for row in 1 2; do
        printf '"%s","2026-03-01 08:00:0%s","-%s.5"' "$row" "$row" "$row"
        printf ',"%.0s "' {2..19}
        printf ',"last\n"\r\n'
    done
}

# AskToSave: presses CSV, types the file's name without its extension and confirms the dialog, left in dialog.
AskToSave() {
    Click "$browser" $csv
    dialog=$(WaitWindow "Save As")
    xdotool type --delay 5 "${file%.csv}"
    Keys Return
}

# WaitQuestion: waits for the question that comes over the dialog and leaves it in question.
WaitQuestion() { WaitUntil "$hang_on" HasQuestion || Fail "nobody asks before the file is replaced"; }

HasQuestion() { question=$(xdotool getactivewindow) && [[ $question != "$dialog" && $question != "$browser" ]] && IsUp "$question"; }

# The file is written when the dialog has gone.
HasPage() { cmp -s <(ExpectedBytes) "$file"; }

ExpectFile() { WaitUntil "$hang_on" HasPage || Fail "the file is not the page"; }

MakeRecord
OpenProgram
Click "$main" $records
browser=$(WaitWindow "Record View")
Click "$browser" $list
Keys Home space
Click "$browser" $open
AskToSave
WaitGone "$dialog"
ExpectFile

# A file that is there is replaced only with consent, and No is what Enter answers.
echo "mine" >"$file"
AskToSave
WaitQuestion
Keys Return
WaitGone "$question"
[[ $(<"$file") == mine ]] || Fail "the file was replaced without consent"
Keys Return
WaitQuestion
Keys alt+y
WaitGone "$dialog"
ExpectFile

# A cancelled one leaves all as it is.
echo "mine" >"$file"
Click "$browser" $csv
dialog=$(WaitWindow "Save As")
Keys Escape
WaitGone "$dialog"
[[ $(<"$file") == mine ]] || Fail "the file was replaced"
ProgramRuns || Fail "the program has ended"
[[ $(WindowsShown) == 2 ]] || Fail "a message came up"
