#!/usr/bin/env bash
# Builds and runs the foreign make project against an installed prefix: makeproject.sh PREFIX WORK COMPILER [static]
set -euo pipefail

prefix="$1"
work="$2/makeproject${4:+-$4}"
compiler="$3"
here="$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)"

# Nothing but this prefix: a library that the system has as well would hide a fault.
PKG_CONFIG_PATH="$(dirname "$(find "$prefix" -name webi18n.pc)")"
export PKG_CONFIG_PATH
launcher="$(command -v ccache || true)"

rm -rf "$work"
mkdir -p "$work"
cd "$work"
make -f "$here/makeproject/Makefile" CXX="${launcher:+$launcher }$compiler" ${4:+STATIC=1} >build.txt 2>&1 ||
    { cat build.txt; exit 1; }
data="$(pkg-config --variable=datadir webi18n)"
diff "$here/host/host.expected" <(./host "$data")
diff "$here/host/rendered.expected" <(./rendered)

if [[ ${4:-} == static ]] && readelf -d host rendered | grep NEEDED; then
    echo "a static program needs shared libraries"
    exit 1
fi
