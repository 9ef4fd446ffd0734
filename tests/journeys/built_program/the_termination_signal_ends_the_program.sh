#!/usr/bin/env bash
set -euo pipefail
. "$(dirname "$0")/desk.sh"

OpenProgram
kill -TERM "$program_id"
ExpectEnd 0
