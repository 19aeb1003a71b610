#!/usr/bin/env bash
# The installed manual pages are well written, and the files that they show are ones: manuals.sh PREFIX WORK
set -euo pipefail

prefix="$1"
work="$2/manuals"
unset LD_LIBRARY_PATH WEBI18N_DATA

rm -rf "$work"
mkdir -p "$work"
cd "$work"

mapfile -t pages < <(cd "$prefix/share/man" && find . -type f -printf '%P\n' | LC_ALL=C sort)
diff <(printf '%s\n' man1/webi18n.1 man3/libwebi18n.3 man5/webi18n.5) <(printf '%s\n' "${pages[@]}")
mandoc -T lint -W warning "${pages[@]/#/$prefix/share/man/}"

# Each literal block of webi18n(5) is a whole file, in which nothing is to be found.
awk '/^\.Bd -literal/ { inside = 1; ++count; next } /^\.Ed/ { inside = 0 } inside { print > count ".xml" }' \
    "$prefix/share/man/man5/webi18n.5"
# The definition that is shown first is what the rules and lists name.
"$prefix/bin/webi18n" --definitions 1.xml --set Localization/AllowedLocalesFile= \
    --set Localization/AllowedLocales=fr-acme,fr-ca,en-us check ./*.xml >findings.txt || { cat findings.txt; exit 1; }
[[ $(find . -name '*.xml' | wc -l) == 7 ]]

# The headers that libwebi18n(3) names are there.
sed -nE 's/^\.In (.*)/\1/p' "$prefix/share/man/man3/libwebi18n.3" >headers.txt
test -s headers.txt
while read -r header; do
    test -f "$prefix/include/$header" || { echo "libwebi18n(3): there is no <$header>"; exit 1; }
done <headers.txt
