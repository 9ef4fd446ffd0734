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
