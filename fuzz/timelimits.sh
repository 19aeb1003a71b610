#!/usr/bin/env bash
# Checks that every run of the fuzzer ends, whatever hangs: timelimits.sh REPOSITORY
# Three programs take the places of targets: one that hangs while its corpus is replayed, one that hangs while it
# searches, and one that ends.
set -euo pipefail

work="$(mktemp -d)"
trap 'rm -rf "$work"' EXIT
mkdir -p "$work/.ci" "$work/build/fuzz"
cp "$1/.ci/fuzz" "$work/.ci/"

# target NAME COMMAND: a program that runs it, deaf to polite signals as a program is that waits for a lock.
target() {
    mkdir -p "$work/fuzz/corpus/$1"
    echo seed >"$work/fuzz/corpus/$1/seed"
    printf '#!/usr/bin/env bash\ntrap "" TERM INT ALRM\n%s\n' "$2" >"$work/build/fuzz/fuzz_$1"
    chmod +x "$work/build/fuzz/fuzz_$1"
}
hang='while :; do sleep 0.1; done'
target replays "$hang"
target searches "[[ \$1 == -runs=0 ]] || $hang"
target ends 'echo "Done 1 run"'

status=0
output="$(FUZZ_GRACE_SECONDS=1 "$work/.ci/fuzz" 1)" || status=$?
echo "$output"
((status != 0)) || { echo "a target that hangs is no fault"; exit 1; }
for expected in 'FAULT in replays' 'FAULT in searches' 'clean ends' \
    'ended after its time limit of 1 seconds' 'ended after its time limit of 2 seconds'; do
    grep -qF "$expected" <<<"$output" || { echo "missing: $expected"; exit 1; }
done
