#!/usr/bin/env bash
set -euo pipefail
. "$(dirname "$0")/desk.sh"

OpenProgram
CloseRequest "$main"
# It is still there, answers, and the same request closes another window.
Menu 2 Return
about=$(WaitWindow "About Orlane VANTREL")
CloseRequest "$about"
WaitGone "$about"
[[ $(FindWindow "VANTREL MAIN") == "$main" ]] || Fail "the main window has gone"
