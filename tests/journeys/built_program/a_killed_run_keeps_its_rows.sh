#!/usr/bin/env bash
set -euo pipefail
. "$(dirname "$0")/desk.sh"

OpenProgram
ConnectAndAssign
RunUntil 3
seen=$(Rows)
kill -KILL "$program_id"
WaitEnd
ExpectSound "$seen"
