#!/usr/bin/env bash
# Compares what a shared library exports with its reviewed list: exports.sh LIBRARY [--update]
# The list of libwebi18n.so is exports.txt, that of libwebi18n-NAME.so is exports-NAME.txt. A symbol that is not in it, or
# no longer exported, is a fault. After a deliberate change of the interface run
#     tests/architecture/exports.sh build/release/lib/libwebi18n.so --update
# and read the difference of exports.txt before it is committed: every new line is a promise, and a line that is gone or
# has changed breaks programs that were linked before (raise the major version). What may be exported at all, and under
# which version, is webi18n/webi18n.map, render/webi18n-render.map; docs/building.md tells more.
set -euo pipefail

library="$(readlink -f "$1")"
name="$(basename "$library")"
name="${name%%.so*}"
reviewed="$(dirname "${BASH_SOURCE[0]}")/exports${name#libwebi18n}.txt"

# Every symbol with its kind, such as "T vel::toUpperCase(wchar_t)@@WEBI18N_1".
symbols() {
    nm -D --defined-only -C "$library" | cut -c 18-
}

# The promised ones, constructors' variants once. Weak ones are copies of inline functions that every program makes for
# itself, no interface of ours; type names go with the type information.
exported() {
    symbols | sed -nE 's/^[BDRTV] (.*)@@[A-Z0-9_]+$/\1/p' | grep -v '^typeinfo name for ' | LC_ALL=C sort -u
}

if [[ ${2:-} == --update ]]; then
    exported >"$reviewed"
    wc -l "$reviewed"
    exit 0
fi

# All under one version, and nothing that the C++ library's templates leave behind.
version="WEBI18N$(tr 'a-z-' 'A-Z_' <<<"${name#libwebi18n}")_$(sed -E 's/.*\.so\.([0-9]+).*/\1/' <<<"$library")"
if foreign="$(symbols | grep -vE "^. ((vtable|typeinfo|typeinfo name) for )?(vel::.*|s_p[A-Za-z]+)@@$version\$" |
    grep -vxE "A $version(@@$version)?")"; then
    echo "exported, but not ours or not under $version:"
    echo "$foreign"
    exit 1
fi

if ! difference="$(diff <(LC_ALL=C sort -u "$reviewed") <(exported))"; then
    echo "exports differ from $reviewed (< reviewed, > exported):"
    echo "$difference"
    echo "If the interface was changed deliberately, review these lines, and then take them with"
    echo "    ${BASH_SOURCE[0]} $1 --update"
    exit 1
fi
echo "$(wc -l <"$reviewed") exported symbols, all reviewed"
