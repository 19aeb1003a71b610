#!/usr/bin/env bash
# Runs an example program and compares what it prints, its errors included: run.sh NAME STATUS PROGRAM [ARGUMENTS]
# NAME.expected holds the output; STATUS is the exit status that is due. Relative arguments are files of this folder.
set -uo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")"

expected="$1.expected"
due="$2"
shift 2
printed="$("$@" 2>&1)"
status=$?
diff "$expected" <(printf '%s\n' "$printed") || exit 1
if ((status != due)); then
    echo "exit status $status instead of $due"
    exit 1
fi
