#!/usr/bin/env bash
# Reads of every program and shared library where it looks for libraries: searchpaths.sh FOLDER|LIST
# LIST is a file that names the files. Each entry is a whole path or counts from the file itself: the loader takes an empty
# one for the folder that the user happens to stand in, where anybody may have left a library.
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/elffiles.sh"

files=0
faults=0
while read -r file; do
    files=$((files + 1))
    while read -r path; do
        # With a colon at its end, so that the entry after the last colon is read as well.
        while [[ -n $path ]]; do
            entry="${path%%:*}"
            path="${path#*:}"
            if [[ $entry != /* && $entry != '$ORIGIN' && $entry != '$ORIGIN/'* ]]; then
                echo "$file: '$entry' in its search path"
                faults=$((faults + 1))
            fi
        done
    done < <(readelf -dW "$file" | sed -nE 's/.*\((RPATH|RUNPATH)\).*\[(.*)\]$/\2:/p')
done < <(elfFiles "$1")
((files > 0)) || { echo "$1: no program and no library is there"; exit 1; }
((faults == 0)) || exit 1
echo "$files files look for libraries in places of their own"
