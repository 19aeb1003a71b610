#!/usr/bin/env bash
# Checks that the documents leave nothing out: complete.sh REPOSITORY
# - docs/formats.md has every name that a loader reads and every rule of `webi18n check`; the manual has the rules;
# - docs/command.md and the manual have every subcommand;
# - docs/threads.md has every class for hosts;
# - docs/guarantees.md names tests that there are.
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

classes() {
    grep -rohE '^(class|struct) WEBI18N_API [A-Za-z]+.*' include platform/{log,config}/include \
        render/include | grep -v 'Exception' |
        awk '{ print $3 }' | tr -d ':' | grep -vxE 'Node|Root|RefCounted|GDValue|GDVariantBase|CollatorGuts' | sort -u
}

# The tests that docs/guarantees.md names are there: `Suite.Test`, or a test of ctest in small letters.
guaranteeTests() {
    local name count=0
    while IFS= read -r name; do
        count=$((count + 1))
        grep -rqE "TEST(_F|_P)?\\(${name%%.*}, ${name#*.}\\)" tests --include='*.cpp' ||
            { echo "docs/guarantees.md: there is no test $name"; faults=$((faults + 1)); }
    done < <(grep -oE '`[A-Z][A-Za-z0-9]+\.[A-Za-z0-9]+`' docs/guarantees.md | tr -d '`' | sort -u)
    while IFS= read -r name; do
        count=$((count + 1))
        grep -rqwF "${name#*.}" tests examples --include=CMakeLists.txt ||
            { echo "docs/guarantees.md: there is no test $name"; faults=$((faults + 1)); }
    done < <(grep -oE '`[a-z]+\.[a-z_]+`' docs/guarantees.md | tr -d '`' | sort -u)
    ((count > 0)) || { echo "docs/guarantees.md names no test"; faults=$((faults + 1)); }
}

properties | need '`NAME`' docs/formats.md property
attributes | need '`NAME`' docs/formats.md attribute
grep -ohE 'L"Localization/[A-Za-z]+"' webi18n/*.cpp | cut -d'"' -f2 | sort -u | need '`NAME`' docs/formats.md key
rules | need '[NAME]' docs/formats.md rule
rules | need 'NAME' cli/webi18n.1 rule
grep -ohE 'add_subcommand\("[a-z-]+"' cli/*.cpp | cut -d'"' -f2 | need '`NAME`' docs/command.md subcommand
grep -ohE 'add_subcommand\("[a-z-]+"' cli/*.cpp | cut -d'"' -f2 | need 'Cm NAME' cli/webi18n.1 subcommand
# Every class for hosts has its place in the table of threads; what is left out are the parts of others.
classes | need 'NAME' docs/threads.md class
guaranteeTests
((faults == 0)) || exit 1
echo "$(properties | wc -l) properties, $(attributes | wc -l) attributes and $(rules | wc -l) rules are described"
