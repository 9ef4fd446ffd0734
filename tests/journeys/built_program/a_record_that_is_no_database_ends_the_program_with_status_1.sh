#!/usr/bin/env bash
set -euo pipefail
. "$(dirname "$0")/desk.sh"

echo "shopping list" >"$record"
OpenProgram
ConnectAndAssign
Click "$main" $start
ConfirmMessage # Run-time error
ExpectEnd 1
[[ $(<"$record") == "shopping list" ]] || Fail "the file was changed"
