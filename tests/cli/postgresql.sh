#!/usr/bin/env bash
# Loads sort keys into a PostgreSQL server of its own and lets it sort: postgresql.sh COMMAND
# ORDER BY of the bytea column must give the sort's order. Without PostgreSQL the test is skipped (77).
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/../support/postgresql.sh"

command="$1"
folder="$(mktemp -d /tmp/webi18n-pg-XXXXXX)"
startPostgresql "$folder"
query() { psql -X -q -A -t -v ON_ERROR_STOP=1 "$@"; }

# Words of several scripts, capitals, accents and punctuation, each once.
words() {
    printf '%s\n' zebra Zebra zèbre zebrå äpple ägg ångström Ångström öl a A á à ab co-op coop CO-OP 'co op' 9 10 100 \
        ñandú nandu ſ ß ss straße strasse Чехов чай ёлка елка 東京 京都 あ ア か カ 가 나 ก เก ๑ 1 '!' '_' '%' 😀
    local i
    for ((i = 0; i < 2000; ++i)); do
        printf 'item %d %s\n' $((i * 7919 % 2003)) "$((i % 7))"
    done
}

words >"$folder/words"
for sort in sv de-u-co-phonebk en-u-ka-shifted ja fr-CA binary; do
    "$command" sort --sort "$sort" --strength 16 "$folder/words" >"$folder/expected"
    {
        echo 'SET client_min_messages = warning; DROP TABLE IF EXISTS names; CREATE TABLE names (key bytea, name text);'
        echo 'COPY names (key, name) FROM STDIN;'
        "$command" keys --sort "$sort" --strength 16 "$folder/words" | tail -n +2 | sed 's/^/\\\\x/'
        echo '\.'
        echo 'SELECT name FROM names ORDER BY key;'
    } | query >"$folder/got"
    if ! cmp "$folder/expected" "$folder/got"; then
        echo "PostgreSQL sorts otherwise than webi18n sort --sort $sort"
        diff "$folder/expected" "$folder/got" | head -20
        exit 1
    fi
done
echo "PostgreSQL sorts $(wc -l <"$folder/words") keys as the command does, by six sorts"
