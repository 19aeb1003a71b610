#!/usr/bin/env bash
# Runs a document's blocks with a database at hand: database.sh DOCUMENT FOLDER_OF_THE_COMMAND DATAFOLDER [--update]
# Without PostgreSQL it is skipped (77).
set -euo pipefail
here="$(dirname "${BASH_SOURCE[0]}")"
source "$here/../support/postgresql.sh"

startPostgresql "$(mktemp -d /tmp/webi18n-pg-XXXXXX)"
"$here/blocks.sh" "$@"
