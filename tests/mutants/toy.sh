#!/usr/bin/env bash
# Runs the search for mutants on sources whose survivors are known: toy.sh REPOSITORY BUILD
set -euo pipefail
cd "$1"

toy=tests/mutants/toy
status=0
scripts/mutants --build "$2" --families "$toy/families.txt" --explained "$toy/explained.txt" \
    "$toy/toy.cpp" "$toy/toy.h" >"$2/mutants-toy.txt" || status=$?
diff -u "$toy/expected.txt" "$2/mutants-toy.txt"
((status == 1)) || { echo "survivors without a reason, and the exit status is $status"; exit 1; }
echo "as expected"
