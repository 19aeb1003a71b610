#!/usr/bin/env bash
# Installs the build into a fresh prefix for the tests beside this: prefix.sh BUILD WORK
# It is moved to WORK/prefix then, so that a path which was written down at build time does not help.
set -euo pipefail

build="$1"
work="$2"

rm -rf "$work"
mkdir -p "$work"
cmake --install "$build" --prefix "$work/root" >"$work/install.txt"
mv "$work/root" "$work/prefix"

# Each component alone installs something, and all of them together all there is.
for component in runtime development tools data documents; do
    rm -rf "$work/part"
    cmake --install "$build" --prefix "$work/part" --component "$component" >/dev/null
    if [[ -z "$(find "$work/part" ! -type d -print -quit)" ]]; then
        echo "component $component is empty"
        exit 1
    fi
    mkdir -p "$work/parts"
    cp -a "$work/part/." "$work/parts/"
done
diff <(cd "$work/prefix" && find . ! -type d | sort) <(cd "$work/parts" && find . ! -type d | sort)
rm -rf "$work/part" "$work/parts"
