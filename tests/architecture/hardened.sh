#!/usr/bin/env bash
# Reads of every program and shared library what it was built with against overruns: hardened.sh FOLDER|LIST
# LIST is a file that names the files. What is looked for is what cmake/WebI18nHardening.cmake asks for.
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/elffiles.sh"

faults=0
fault() {
    echo "$1: $2"
    faults=$((faults + 1))
}

# What the functions of the C library that write into a buffer are called where sizes are checked, and where not.
checked='__(mem(cpy|move|set)|str(n?cpy|n?cat)|v?sn?printf|p?read|recv|wmem(cpy|move|set)|readlink|realpath)_chk'
unchecked='(mem(cpy|move|set)|str(n?cpy|n?cat)|v?sn?printf|p?read|recv|wmem(cpy|move|set)|readlink|realpath)'

codeBytes() {
    printf '%d\n' "0x$(readelf -SW "$1" | sed -nE 's/.* \.text +PROGBITS +[0-9a-f]+ [0-9a-f]+ ([0-9a-f]+) .*/\1/p')"
}

lookAt() {
    local file="$1" dynamic segments imports
    dynamic="$(readelf -dW "$file")"
    segments="$(readelf -lW "$file")"
    imports="$(readelf --dyn-syms -W "$file" | awk '$7 == "UND" { sub(/@.*/, "", $8); print $8 }')"
    readelf -hW "$file" | grep -qE 'Type: +DYN' || fault "$file" "lies at a fixed address"
    grep -q GNU_RELRO <<<"$segments" || fault "$file" "the tables of the linker stay writable"
    grep -qE '\((FLAGS|FLAGS_1|BIND_NOW)\).*NOW' <<<"$dynamic" || fault "$file" "is bound while it runs"
    ! grep -qE 'GNU_STACK.* [RW]+E ' <<<"$segments" || fault "$file" "has an executable stack"
    ! grep -qE 'LOAD.* RWE ' <<<"$segments" || fault "$file" "has a segment that is writable and executable"
    ! grep -q '(TEXTREL)' <<<"$dynamic" || fault "$file" "its code is changed when it is loaded"
    # In a program of a few lines there may be nothing of what follows to guard.
    (($(codeBytes "$file") >= 32768)) || return 0
    large=$((large + 1))
    grep -qx '__stack_chk_fail' <<<"$imports" || fault "$file" "no function protects its stack"
    # A smaller one may write into nothing but memory whose size no compiler knows.
    if (($(codeBytes "$file") >= 393216)) && grep -qxE "$unchecked" <<<"$imports" && ! grep -qxE "$checked" <<<"$imports"; then
        fault "$file" "no call of the C library checks the size of its buffer"
    fi
    # endbr64; the compiler's own start files bring some.
    if (($(LC_ALL=C grep -aoP '\xf3\x0f\x1e\xfa' "$file" | wc -l) <= 8)); then
        fault "$file" "its functions do not mark where a call may enter"
    fi
}

files=0
large=0
while read -r file; do
    lookAt "$file"
    files=$((files + 1))
done < <(elfFiles "$1")
((large > 0)) || fault "$1" "no program and no library of some size is there"
((faults == 0)) || exit 1
echo "$files files are hardened, $large of them looked at in all respects"
