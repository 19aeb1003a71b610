#!/usr/bin/env bash
# Builds and runs the foreign CMake project against an installed prefix: cmakeproject.sh PREFIX WORK COMPILER [static]
set -euo pipefail

prefix="$1"
work="$2/cmakeproject${4:+-$4}"
compiler="$3"
here="$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)"

options=(-DCMAKE_CXX_COMPILER="$compiler" -DCMAKE_PREFIX_PATH="$prefix")
launcher="$(command -v ccache || true)"
[[ -z $launcher ]] || options+=(-DCMAKE_CXX_COMPILER_LAUNCHER="$launcher")
[[ ${4:-} != static ]] || options+=(-DLINK_STATIC=ON)

rm -rf "$work"
cmake -S "$here/cmakeproject" -B "$work" -G Ninja "${options[@]}" >/dev/null
cmake --build "$work" >"$work/build.txt" || { cat "$work/build.txt"; exit 1; }
diff "$here/host/host.expected" <("$work/host" "$(cat "$work/datafolder.txt")")
diff "$here/host/rendered.expected" <("$work/rendered")

# Linked as was asked for.
for program in host rendered; do
    shared=no
    ! readelf -d "$work/$program" | grep -q 'NEEDED.*libwebi18n' || shared=yes
    if [[ ${4:-}/$shared != /yes && ${4:-}/$shared != static/no ]]; then
        echo "$program: links the shared library: $shared"
        exit 1
    fi
done
