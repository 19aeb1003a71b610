#!/usr/bin/env bash
# Compiles every installed header alone, with the prefix as the only include folder: headers.sh PREFIX WORK COMPILER
# What they include must stand in the prefix, or belong to the compiler or the C library: no third-party header is needed
# to compile against webi18n, also where one lies in a folder that the compiler searches anyway.
set -euo pipefail

include="$(realpath "$1/include")"
export include
work="$2/headers"
compiler="$3"
launcher="$(command -v ccache || true)"
export compile="${launcher:+$launcher }$compiler"

rm -rf "$work"
mkdir -p "$work"
cd "$work"

compileOne() {
    local name="${1//\//_}"
    echo "#include <$1>" >"$name.cpp"
    # shellcheck disable=SC2086
    $compile -std=c++20 -Wall -Wextra -Wpedantic -Werror -I "$include" -MD -MF "$name.d" -c "$name.cpp" -o "$name.o"
}
export -f compileOne

mapfile -t headers < <(cd "$include" && find . -name '*.h' -printf '%P\n' | sort)
printf '%s\0' "${headers[@]}" | xargs -0 -n 1 -P "$(nproc)" bash -euc 'compileOne "$0"'

# A rule of make: a target, a colon, names with blanks and continued lines between them. ccache may make them relative.
cat ./*.d | sed -e 's/^[^ ]*: //' -e 's/\\$//' | tr -s ' ' '\n' | grep -vE '^$|\.cpp$' | xargs realpath | sort -u >included.txt
# The compiler's own folders: the C++ library's, and those beside the compiler's programs.
mapfile -t own < <("$compiler" -E -v -x c++ /dev/null 2>&1 |
    sed -nE '/^#include </,/^End/ s/^ (.*\/(c\+\+|gcc|clang|llvm-[0-9]+)\/.*)$/\1/p')
{
    for package in libc6-dev linux-libc-dev; do
        dpkg -L "$package"
    done
    find "$include" "${own[@]}" -type f -print0 | xargs -0 realpath
} | sort -u >allowed.txt
foreign="$(comm -23 included.txt allowed.txt)"
if [[ -n $foreign ]]; then
    echo "these headers are included, and neither ours nor the system's:"
    echo "$foreign"
    exit 1
fi
if ((${#headers[@]} == 0)) || ! grep -q "/vel/core/string.h$" included.txt; then
    echo "nothing was compiled"
    exit 1
fi
echo "${#headers[@]} headers compile alone"
