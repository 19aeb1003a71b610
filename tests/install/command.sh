#!/usr/bin/env bash
# The installed command finds the library and the data pack of its own, moved prefix: command.sh PREFIX
set -euo pipefail

prefix="$1"
unset LD_LIBRARY_PATH WEBI18N_DATA

LC_ALL=C grep -q '"locale":"fr-ca"' <("$prefix/bin/webi18n" explain --json 'fr-CA,fr;q=0.9,en;q=0.8')
# Also through a symbolic link, as in a folder of programs.
ln -sf "$prefix/bin/webi18n" "$prefix/../linked"
LC_ALL=C grep -q '"locale":"fr-ca"' <("$prefix/../linked" explain --json fr-CA)

# bash looks for the completion of a command by that name.
bash -euc 'source "$1" && complete -p webi18n >/dev/null' - "$prefix/share/bash-completion/completions/webi18n"
