# Sourced by tests that need a database: starts a PostgreSQL server of their own, which goes with the test.
# It listens on a private socket only and runs as an unprivileged user. Without PostgreSQL the test is skipped (77).

# startPostgresql FOLDER: an empty folder, which is removed at the end. Sets PATH, PGHOST and the like for `psql`.
startPostgresql() {
    local each bin="" asUser=()
    for each in /usr/lib/postgresql/*/bin; do
        [[ -x $each/initdb && -x $each/postgres && -x $each/psql ]] && bin="$each"
    done
    if [[ -z $bin ]]; then
        echo "SKIPPED: PostgreSQL is not installed (Debian's package postgresql)"
        exit 77
    fi
    postgresqlFolder="$1"
    postgresqlServer=""
    trap stopPostgresql EXIT
    # The server refuses to run as root.
    if [[ $(id -u) == 0 ]]; then
        chown nobody "$1"
        asUser=(setpriv --reuid=nobody --regid=nogroup --clear-groups)
    fi
    (cd "$1" && "${asUser[@]}" "$bin/initdb" -D "$1/data" -U tester -A trust --no-locale -E UTF8 >"$1/initdb.log" 2>&1) ||
        { cat "$1/initdb.log"; exit 1; }
    (cd "$1" && exec "${asUser[@]}" "$bin/postgres" -D "$1/data" -k "$1" -c listen_addresses= -c fsync=off \
        >"$1/server.log" 2>&1) &
    postgresqlServer=$!
    export PATH="$bin:$PATH" PGHOST="$1" PGUSER=tester PGDATABASE=postgres PGCLIENTENCODING=UTF8
    waitForPostgresql
}

waitForPostgresql() {
    local i
    for ((i = 0; i < 100; ++i)); do
        psql -X -q -c 'SELECT 1' >/dev/null 2>&1 && return
        kill -0 "$postgresqlServer" 2>/dev/null || break
        sleep 0.1
    done
    cat "$postgresqlFolder/server.log"
    exit 1
}

stopPostgresql() {
    if [[ -n $postgresqlServer ]]; then
        kill -INT "$postgresqlServer" 2>/dev/null || true
        wait "$postgresqlServer" 2>/dev/null || true
    fi
    rm -rf "$postgresqlFolder"
}
