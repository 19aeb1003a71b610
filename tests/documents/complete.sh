#!/usr/bin/env bash
# Checks that docs/formats.md leaves nothing out: complete.sh REPOSITORY
# Every name that a loader reads and every rule of `webi18n check` stands there, and every rule in the manual.
set -euo pipefail
cd "$1"

faults=0
# need PATTERN DOCUMENT KIND < names, one a line
need() {
    local name count=0
    while IFS= read -r name; do
        count=$((count + 1))
        grep -qF -- "${1/NAME/$name}" "$2" || { echo "$2: $3 $name is missing"; faults=$((faults + 1)); }
    done
    ((count > 0)) || { echo "no $3 was found in the sources"; faults=$((faults + 1)); }
}

# The names of properties, from the tables and from the comparisons of the loader.
properties() {
    grep -oE 'Locale::k[A-Za-z0-9_]+, L"[A-Za-z0-9]+"' webi18n/localetables.cpp | cut -d'"' -f2
    grep -oE 'name == L"[A-Za-z0-9]+"' webi18n/xmllocale.cpp | cut -d'"' -f2
}

attributes() {
    sed -n '/kAttributes\[\]/,/^};/p' cli/check/currencyattributes.cpp | grep -oE '\{(L"[A-Za-z]+"|ksDigits)' |
        sed -E 's/\{(L")?//; s/"//; s/ksDigits/digits/'
}

# A rule is a literal of words with hyphens between them; those of the file of the web's labels are labels.
rules() {
    find cli/check -name '*.cpp' ! -name webencodings.cpp -exec grep -ohE '"[a-z]+(-[a-z]+)+"' {} + | tr -d '"' | sort -u
}

properties | need '`NAME`' docs/formats.md property
attributes | need '`NAME`' docs/formats.md attribute
grep -ohE 'L"Localization/[A-Za-z]+"' webi18n/*.cpp | cut -d'"' -f2 | sort -u | need '`NAME`' docs/formats.md key
rules | need '[NAME]' docs/formats.md rule
rules | need 'NAME' cli/webi18n.1 rule
((faults == 0)) || exit 1
echo "$(properties | wc -l) properties, $(attributes | wc -l) attributes and $(rules | wc -l) rules are described"
