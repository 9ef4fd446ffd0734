#!/usr/bin/env bash
set -euo pipefail
. "$(dirname "$0")/desk.sh"

OpenProgram
ConnectAndAssign
RunUntil 2
kill -TERM "$program_id"
ExpectEnd 0
ExpectSound 2
