#!/usr/bin/env bash
# Checks that a shared library does not end the process, print, or touch the process's locale: imports.sh LIBRARY
set -euo pipefail

# newlocale is allowed: it opens a locale beside the process's, whose letters are asked for by name.

library="$1"
forbidden='abort|exit|_exit|_Exit|quick_exit|terminate|setlocale|uselocale'
forbidden+='|v?[fsd]?printf|v?snprintf|v?asprintf|v?[fs]?wprintf|v?swprintf|puts|fputs|fputws|putchar|perror'
forbidden+='|__[a-z]*printf_chk|__assert_fail|system|fork'
streams='std::(w?c(out|err|in|log)|terminate\(\)|locale::global)'

found="$(nm -D --undefined-only -C "$library" | sed -E 's/^ *[Uw] //; s/@.*$//' | grep -xE "$forbidden|$streams.*" || true)"
if [[ -n $found ]]; then
    echo "the library imports what it must not use:"
    echo "$found"
    exit 1
fi
echo "no forbidden import"
