#!/usr/bin/env bash
# Holds what README.md shows to what happens: check.sh FIRST_PROGRAM FOLDER_OF_THE_COMMAND DATAFOLDER [--update]
# - the first program prints what first.expected says;
# - README.md's C++, output and XML blocks are first.cpp, first.expected and acme.xml;
# - the commands of its console blocks, run in this folder, print what is shown there; --update writes it anew.
set -euo pipefail

program="$1"
export PATH="$2:$PATH"
export WEBI18N_DATA="$3"
cd "$(dirname "${BASH_SOURCE[0]}")"
readme=../README.md

# The first fenced block of README.md that begins with the given fence.
block() {
    awk -v fence="$1" '$0 == fence && !seen { inside = 1; seen = 1; next } $0 == "```" { inside = 0 } inside' "$readme"
}

# README.md with the console blocks as they come out today.
rerun() {
    local line inside=0
    while IFS= read -r line; do
        if ((inside)) && [[ $line == '$ '* ]]; then
            printf '%s\n' "$line"
            # Findings give an exit status of their own.
            bash -c "${line#\$ }" </dev/null 2>&1 || true
        elif ! ((inside)) || [[ $line == '```' ]]; then
            printf '%s\n' "$line"
        fi
        case "$line" in
            '```console') inside=1 ;;
            '```') inside=0 ;;
        esac
    done <"$readme"
}

if [[ ${4:-} == --update ]]; then
    fresh="$(rerun)"
    printf '%s\n' "$fresh" >"$readme"
    exit 0
fi

diff first.expected <("$program" "$WEBI18N_DATA")
diff first.cpp <(block '```cpp')
diff first.expected <(block '```output')
diff acme.xml <(block '```xml')
diff "$readme" <(rerun)
