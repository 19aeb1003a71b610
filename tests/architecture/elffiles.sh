#!/usr/bin/env bash
# Sourced by the tests that read programs and shared libraries.

# elfFiles PATH: the programs and shared libraries of a folder, or those that a list names, one a line.
# A list may name files that were not asked for when the rest was built; not all of them.
elfFiles() {
    if [[ -d $1 ]]; then
        find "$1" -type f
    else
        sort -u "$1"
    fi | while read -r file; do
        [[ -f $file && $(head -c 4 "$file" | tr -d '\0') == $'\x7fELF' ]] || continue
        ! readelf -hW "$file" | grep -qE 'Type: +(EXEC|DYN)' || echo "$file"
    done
}
