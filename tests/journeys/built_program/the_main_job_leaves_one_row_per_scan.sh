#!/usr/bin/env bash
set -euo pipefail
. "$(dirname "$0")/desk.sh"

export VANTREL_BENCH_LOG=$desk/wire
OpenProgram
ConnectAndAssign
RunUntil 3
Click "$main" $stop
ConfirmMessage # End of Job.
Keys Alt_L Left Return
ExpectEnd 0

ExpectSound 3
scans=$(grep -cF '> "rout:SCAN\n"' "$VANTREL_BENCH_LOG")
stored=$(Rows)
[[ $stored == "$scans" ]] || Fail "$stored rows after $scans scans"

# The record is all that it leaves: no settings, no log.
left=$(cd "$desk" && find . -type f | LC_ALL=C sort | tr '\n' ' ')
[[ $left == "./db/Record1.mdb ./quick.bench ./vantrel ./wire " ]] || Fail "it leaves $left"
