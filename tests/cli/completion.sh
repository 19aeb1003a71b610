#!/usr/bin/env bash
# Completes command lines as bash does, with the real command: completion.sh COMPLETION FOLDER_OF_THE_COMMAND DATAFOLDER
set -euo pipefail

# shellcheck source=/dev/null
source "$1"
export PATH="$2:$PATH"
export WEBI18N_DATA="$3"
COMP_WORDBREAKS=$' \t\n"\'><=;|&(:'
cd "$(dirname "${BASH_SOURCE[0]}")"

faults=0
cases=0

# complete LINE: what is offered, in one line. Of a line that ends with a word, that word.
complete() {
    COMP_LINE="$1"
    COMP_POINT=${#COMP_LINE}
    COMPREPLY=()
    _webi18n
    echo "${COMPREPLY[*]}"
}

# expect LINE OFFERED
expect() {
    local offered
    offered="$(complete "$1")"
    cases=$((cases + 1))
    if [[ $offered != "$2" ]]; then
        echo "'$1': expected '$2', offered '$offered'"
        faults=$((faults + 1))
    fi
}

expect 'webi18n exp' 'explain'
expect 'webi18n loc' 'locales locale'
expect 'webi18n --json par' 'parse parse-xml'
expect 'webi18n --data /tmp/none che' 'check'
expect 'webi18n nothing-begins-so' ''

expect 'webi18n --de' '--definitions'
expect 'webi18n encode --un' '--unencodable'
expect 'webi18n locale --un' ''
expect 'webi18n sort --s' '--set --sort --strength'
expect 'webi18n explain -- --la' ''

expect 'webi18n encode --unencodable ' 'reference substitute error'
expect 'webi18n encode --unencodable=s' 'substitute'
expect 'webi18n --log m' 'minor-warning'
expect 'webi18n parse --expect month' 'month-day'
expect 'webi18n parse --locale de-c' 'de-ch'
expect 'webi18n locale fr-c' "fr-ca fr-cd fr-cf fr-cg fr-ch fr-ci fr-cm"
expect 'webi18n java --ui-language e de-li' 'de-li'
expect 'webi18n locale --user dateO' 'dateOrder=mdy dateOrder=dmy dateOrder=ymd'
# Behind a sign at which bash breaks words only the rest is offered.
expect 'webi18n locale --user dateOrder=d' 'dmy'
expect 'webi18n currency loc:nb-n' 'nb-no'
expect 'webi18n currency EU' 'EUR'
expect 'webi18n charset --supported sup' 'supported'
expect 'webi18n charset --preferred locale:nb-n' 'nb-no'
expect 'webi18n encode --charset koi8' 'koi8-r koi8-u'
expect 'webi18n sort --sort bin' 'binary'
# Data that is named on the line counts.
expect 'webi18n --data none locale fr-c' ''
expect 'webi18n --set Localization/AllowedLocalesFile= --set Localization/AllowedLocales=fr-ca,en-us locale fr' 'fr-ca'
expect 'webi18n --set Localization/AllowedLan' 'Localization/AllowedLanguages='
# Files, where files are wanted.
expect 'webi18n check comple' 'completion.sh'
expect 'webi18n --mapping comple' 'completion.sh'
expect 'webi18n keys --verify comple' 'completion.sh'
expect 'webi18n explain comple' ''
expect 'webi18n --data dat' 'data'

# Every subcommand and option of the command is offered, and no other. CLI11's versions differ in how the help is laid out.
wordsOf() {
    tr ' ' '\n' | grep -v '^$' | sort -u
}
optionsIn() {
    webi18n "$@" --help | sed -nE 's/^ +(-[a-z0-9], *)?(--[a-z-]+).*/\2/p'
}
subcommands="$(webi18n --help | sed -n '/^subcommands:/I,/^$/ s/^  \([a-z-]*\).*/\1/p')"
diff <(wordsOf <<<"$subcommands") <(complete 'webi18n ' | wordsOf)
for subcommand in $subcommands; do
    diff <({ optionsIn; optionsIn "$subcommand"; } | wordsOf) <(complete "webi18n $subcommand --" | wordsOf)
    cases=$((cases + 1))
done

echo "$cases cases, $faults faults"
((faults == 0 && cases > 40))
