#!/usr/bin/env bash
# Holds what a document shows to what happens: blocks.sh DOCUMENT FOLDER_OF_THE_COMMAND DATAFOLDER [--update]
# The fenced blocks of the document are taken in their order:
# - a block with a file's name behind its language, as in "```xml own.xml", becomes that file of an empty working folder;
#   where examples/ has a file of that name, the block has to be the same;
# - the commands of a block "```console", its lines that begin with "$ ", are run in the working folder and have to print
#   what is shown below them. A command goes on in the next line behind a backslash.
# The working folder also has the files of examples/ that no block shows. --update writes the outputs anew.
set -euo pipefail

document="$(realpath "$1")"
export PATH="$2:$PATH"
export WEBI18N_DATA="$3"
examples="$(realpath "$(dirname "${BASH_SOURCE[0]}")/../../examples")"
work="$(mktemp -d)"
trap 'rm -rf "$work"' EXIT
cd "$work"
cp "$examples"/*.xml "$examples"/*.txt "$examples"/*.conf .

# The lines up to the end of the block as the named file.
takeFile() {
    local line
    mkdir -p "$(dirname "$1")"
    : >"$1"
    while IFS= read -r line && [[ $line != '```' ]]; do
        printf '%s\n' "$line" | tee -a "$1"
    done
    printf '%s\n' "$line"
    if [[ -e $examples/$1 ]]; then
        diff "$examples/$1" "$1" >&2 || { echo "the block $1 is not examples/$1" >&2; return 1; }
    fi
}

# The console block with its outputs as they come out today.
takeConsole() {
    local line command
    while IFS= read -r line && [[ $line != '```' ]]; do
        [[ $line == '$ '* ]] || continue
        printf '%s\n' "$line"
        command="${line#\$ }"
        while [[ $line == *\\ ]] && IFS= read -r line; do
            printf '%s\n' "$line"
            command+=$'\n'"$line"
        done
        # Findings give an exit status of their own.
        bash -c "$command" </dev/null 2>&1 || true
    done
    printf '%s\n' "$line"
}

rerun() {
    local line
    while IFS= read -r line; do
        printf '%s\n' "$line"
        if [[ $line == '```console' ]]; then
            takeConsole
        elif [[ $line =~ ^'```'[a-z]+' '([A-Za-z0-9_./-]+)$ ]]; then
            takeFile "${BASH_REMATCH[1]}"
        fi
    done <"$document"
}

rerun >"$work/.fresh"
if [[ ${4:-} == --update ]]; then
    cp "$work/.fresh" "$document"
    exit 0
fi
diff "$document" "$work/.fresh"
