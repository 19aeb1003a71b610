#!/usr/bin/env bash
# Checks that no file of the repository refers to a place outside of it: texts.sh REPOSITORY
# A clone must build on a machine that has nothing but the clone. In a worktree .git is a file.
set -euo pipefail
cd "$1"

# Written so that the patterns do not match themselves.
outside='[.][.]/shared|[ "=(]/home/[a-z]|[ "=(]/wor[k]/'

if found="$(grep -rInE --exclude-dir=build --exclude-dir=.git --exclude=.git "$outside" .)"; then
    echo "these lines refer to a place outside of the repository:"
    echo "$found"
    exit 1
fi
echo "nothing refers outside"
