#!/usr/bin/env bash
# Compares what a shared library exports with its reviewed list: exports.sh LIBRARY [--update]
# The list of libwebi18n.so is exports.txt, that of libwebi18n-NAME.so is exports-NAME.txt. A symbol that is not in it, or
# no longer exported, is a fault. After a deliberate change of the interface run
#     tests/architecture/exports.sh build/release/webi18n/libwebi18n.so --update
# and read the difference of exports.txt before it is committed: every new line is a promise.
set -euo pipefail

library="$1"
name="$(basename "$library")"
name="${name%%.so*}"
reviewed="$(dirname "${BASH_SOURCE[0]}")/exports${name#libwebi18n}.txt"

# Our own symbols, constructors' variants once. Weak and unique ones are copies of inline functions and templates that
# every program makes for itself, no interface of ours; type names go with the type information.
exported() {
    nm -D --defined-only -C "$library" | cut -c 18- | sed -nE 's/^[ABDRTV] //p' |
        grep -E '^(vtable for |typeinfo for )?(vel::|s_p)|^[a-z][A-Za-z0-9_]*$' | LC_ALL=C sort -u
}

if [[ ${2:-} == --update ]]; then
    exported >"$reviewed"
    wc -l "$reviewed"
    exit 0
fi

if ! difference="$(diff <(LC_ALL=C sort -u "$reviewed") <(exported))"; then
    echo "exports differ from $reviewed (< reviewed, > exported); see exports.sh for how to review them"
    echo "$difference"
    exit 1
fi
echo "$(wc -l <"$reviewed") exported symbols, all reviewed"
