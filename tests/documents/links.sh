#!/usr/bin/env bash
# Checks that the documents name what there is: links.sh REPOSITORY
# - a link leads to a file of the repository, and to a heading of it where it names one;
# - a path between backquotes, such as `platform/xml/` or `docs/threads.md`, is one of the repository.
set -euo pipefail
cd "$1"

faults=0
fault() {
    echo "$1"
    faults=$((faults + 1))
}

# The headings of a document as the fragments by which links reach them.
fragmentsOf() {
    sed -n -E 's/^#+ +//p' "$1" | tr '[:upper:]' '[:lower:]' | sed -E 's/[^a-z0-9 _-]//g; s/ /-/g'
}

checkLink() {
    local document="$1" target="${2%%#*}" fragment=""
    [[ $2 == *'#'* ]] && fragment="${2#*#}"
    local file="$document"
    [[ -z $target ]] || file="$(dirname "$document")/$target"
    if [[ ! -e $file ]]; then
        fault "$document: there is no $2"
    elif [[ -n $fragment ]] && ! fragmentsOf "$file" | grep -qxF -- "$fragment"; then
        fault "$document: there is no heading #$fragment in $file"
    fi
}

# Top folders of the repository; what else stands between backquotes is no path of it.
folders="$(find . -mindepth 1 -maxdepth 1 -type d ! -name build ! -name .git -printf '%f\n' | paste -sd '|' | sed 's/\./\\./g')"
count=0
while IFS= read -r document; do
    count=$((count + 1))
    while IFS= read -r link; do
        [[ $link == *://* ]] || checkLink "$document" "$link"
    done < <(grep -oE '\]\([^) ]+\)' "$document" | sed -E 's/^\]\(//; s/\)$//')
    while IFS= read -r path; do
        [[ -n $path ]] && compgen -G "$path" >/dev/null || fault "$document: there is no $path"
    done < <(sed '/^```/,/^```$/d' "$document" | grep -oE "\`($folders)/[A-Za-z0-9_./*-]*\`" | tr -d '\`')
done < <(find . -maxdepth 1 -name '*.md'; find docs -name '*.md')

# The code map has every folder that holds sources.
while IFS= read -r folder; do
    grep -qF "\`$folder/\`" docs/code-map.md || fault "docs/code-map.md: $folder/ is missing"
done < <(find platform -mindepth 1 -maxdepth 1 -type d; find . -mindepth 1 -maxdepth 1 -type d ! -name build ! -name .git \
    ! -name platform ! -name include ! -name docs -printf '%f\n')

((count > 0)) || fault "there are no documents"
((faults == 0)) || exit 1
echo "$count documents name what there is"
