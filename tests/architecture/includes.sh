#!/usr/bin/env bash
# Checks the include directions: includes.sh REPOSITORY
# A folder includes its own headers and those of the folders listed for it, and a third-party header stands only in the
# folders that are named for it.
set -euo pipefail
cd "$1"

# Folder, then the layers whose public headers it may include. A layer is a folder of platform/, webi18n, or a
# folder beside it.
layers="
platform/core        core
platform/log         core log
platform/xml         core log xml
platform/messages    core log xml messages
platform/config      core log xml messages config
platform/transcoding core transcoding
platform/nls         core transcoding nls
include/webi18n      core log xml messages config transcoding nls webi18n
webi18n              core log xml messages config transcoding nls webi18n
render               core messages webi18n render
datapack             core log xml messages config transcoding nls webi18n
answers              core log xml messages config transcoding nls webi18n answers
cli                  core log xml messages config transcoding nls webi18n answers
server               core log xml messages config transcoding nls webi18n render answers
examples             core log xml messages config transcoding nls webi18n render
bench                core log xml messages config transcoding nls webi18n render
fuzz                 core log xml messages config transcoding nls webi18n render
tests                core log xml messages config transcoding nls webi18n render answers
"

# Pattern of a third-party header, then the folders that may name it. Benchmarks name it as the peer. The
# library opens a locale of its own, to ask it for letters; only tests change the process's.
thirdParty="
expat\.h             platform/xml bench
unicode/.*           platform/transcoding platform/nls datapack bench fuzz tests
libxml/.*            bench
iconv\.h             bench tests
CLI/.*               cli
nlohmann/.*          answers tests/cli tests/server
boost/.*             server
spdlog/.*            server
gtest/.*             tests
gmock/.*             tests
locale\.h            webi18n tests
"

# Headers of the system and the compiler, beside those of the C++ library (which have no extension).
systemHeaders='arpa/inet\.h|netinet/tcp\.h|cxxabi\.h|emmintrin\.h|immintrin\.h|fcntl\.h|malloc\.h|time\.h|unistd\.h|dlfcn\.h|pthread\.h|sys/[a-z]+\.h'

faults=0
fault() {
    echo "$1"
    faults=$((faults + 1))
}

# The second and following words of the line whose first word is $2, in the table $1.
wordsOf() {
    awk -v key="$2" '$1 == key { $1 = ""; print }' <<<"$1"
}

# Whether the file $1 stands below one of the folders $2.
standsIn() {
    local folder
    for folder in $2; do
        [[ $1 == "$folder"/* ]] && return 0
    done
    return 1
}

checkThirdParty() {
    local file="$1" header="$2" pattern folders
    while read -r pattern folders; do
        if [[ -n $pattern && $header =~ ^$pattern$ ]]; then
            standsIn "$file" "$folders" || fault "$file: <$header> may be named only in: $folders"
            return
        fi
    done <<<"$thirdParty"
    # Tests of a foreign project and public headers are included with angle brackets, as hosts do.
    [[ $header == vel/* || $header == webi18n/* || $header == webi18n-render/* ]] && return
    [[ $header =~ ^($systemHeaders)$ || $header != *.* ]] || fault "$file: <$header> is in no list of includes.sh"
}

checkOwn() {
    local file="$1" header="$2" allowed="$3" layer
    case "$header" in
        vel/*) layer="${header#vel/}" && layer="${layer%%/*}" ;;
        webi18n/*) layer=webi18n ;;
        webi18n-render/*) layer=render ;;
        answers/*) layer=answers ;;
        *)
            # A header of the folder itself, of the folder above when it is a part of it, or of the tests' common ones.
            [[ -f "$(dirname "$file")/$header" || -f "${file%%/*}/$header" ]] && return
            [[ $file =~ ^(tests|bench|fuzz)/ && (-f tests/support/$header || -f tests/reference/$header) ]] && return
            [[ $file =~ ^(tests|bench|fuzz)/ && -n "$(ownSource "$header")" ]] && return
            fault "$file: \"$header\" is not in the folder of the file"
            return
            ;;
    esac
    [[ " $allowed " == *" $layer "* ]] || fault "$file: \"$header\" stands in a layer above"
}

# Tests of internals may include a folder's private headers; prints where such a header stands.
ownSource() {
    find platform webi18n datapack answers cli server -name "$(basename "$1")" -print -quit 2>/dev/null
}

checkFile() {
    local file="$1" allowed="$2" line header
    while read -r line; do
        [[ $line =~ [\<\"]([^\>\"]*)[\>\"] ]] || continue
        header="${BASH_REMATCH[1]}"
        case "$line" in
            *'<'*) checkThirdParty "$file" "$header" ;;&
            *'"'*) checkOwn "$file" "$header" "$allowed" ;;
            *'<vel/'* | *'<webi18n/'* | *'<webi18n-render/'*) checkOwn "$file" "$header" "$allowed" ;;
        esac
    done < <(grep -E '^[[:space:]]*#[[:space:]]*include' "$file" || true)
}

files=0
while read -r folder allowed; do
    [[ -n $folder && -d $folder ]] || continue
    while read -r file; do
        # What a foreign project includes is not ours to order.
        [[ $file == tests/install/* ]] && continue
        checkFile "$file" "$allowed"
        files=$((files + 1))
    done < <(find "$folder" -name '*.h' -o -name '*.cpp' | sort)
done <<<"$layers"

for folder in */ platform/*/; do
    folder="${folder%/}"
    if [[ -z "$(wordsOf "$layers" "$folder")" && $folder != build && $folder != platform && $folder != include ]] &&
        [[ -n "$(find "$folder" -name '*.cpp' -print -quit)" ]]; then
        fault "$folder: no layer is listed for it in includes.sh"
    fi
done

if ((files == 0)); then
    fault "no source file was found"
fi
echo "$files files, $faults faults"
((faults == 0))
