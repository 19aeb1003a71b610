#!/usr/bin/env bash
# Installs the build into a fresh prefix, moves it, and builds and runs the first program against it, as a foreign
# project would: install.sh BUILD SOURCE COMPILER
set -euo pipefail

build="$1"
source="$2"
compiler="$3"
work="$build/tests/install"
first="$source/examples/first.cpp"
expected="$source/examples/first.expected"
rendered="Saturday, December 31, 2005: -1,234,567.89"

rm -rf "$work/root" "$work/moved" "$work/foreign"
cmake --install "$build" --prefix "$work/root" >/dev/null
# Moved, so that a path which was written down at build time does not help.
mv "$work/root" "$work/moved"
prefix="$work/moved"

echo "through CMake"
cmake -S "$source/tests/install/foreign" -B "$work/foreign" -G Ninja -DCMAKE_CXX_COMPILER="$compiler" \
    -DCMAKE_PREFIX_PATH="$prefix" -DFIRST_CPP="$first" >/dev/null
cmake --build "$work/foreign" >/dev/null
diff "$expected" <("$work/foreign/first" "$(cat "$work/foreign/datafolder.txt")")
diff <(echo "$rendered") <("$work/foreign/rendered")

echo "through pkg-config"
PKG_CONFIG_PATH="$(dirname "$(find "$prefix" -name webi18n.pc)")"
export PKG_CONFIG_PATH
library="$(pkg-config --variable=libdir webi18n)"
# shellcheck disable=SC2046
"$compiler" -std=c++20 "$first" -o "$work/foreign/first-pkg-config" $(pkg-config --cflags --libs webi18n) \
    -Wl,-rpath,"$library"
diff "$expected" <("$work/foreign/first-pkg-config" "$(pkg-config --variable=datadir webi18n)")
# shellcheck disable=SC2046
"$compiler" -std=c++20 "$source/tests/install/foreign/rendered.cpp" -o "$work/foreign/rendered-pkg-config" \
    $(pkg-config --cflags --libs webi18n-render) -Wl,-rpath,"$library"
diff <(echo "$rendered") <("$work/foreign/rendered-pkg-config")

echo "the command"
command="$prefix/bin/webi18n"
if [[ ! -x $command ]]; then
    echo "bin/webi18n is not installed"
    exit 1
fi
# Finds the library and the data pack of the moved tree by itself.
LC_ALL=C grep -q '"locale":"fr-ca"' <("$command" explain --json 'fr-CA,fr;q=0.9,en;q=0.8')
