#!/usr/bin/env bash
set -euo pipefail
. "$(dirname "$0")/desk.sh"

if [[ $(PATH=$PATH:/sbin:/usr/sbin ldconfig -p) == *libvisa.so* ]]; then
    echo "skipped: this machine has a VISA library"
    exit 77
fi
bench_folder=$desk # that holds no library
OpenProgram
OpenConnect
(($(Colours "$connect" $instrument_row) == 1)) || Fail "there is a row in the list"
Click "$connect" $exit_connect
WaitGone "$connect"
ProgramRuns || Fail "the program did not survive"
