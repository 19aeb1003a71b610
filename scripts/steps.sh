# Sourced by the scripts: runs a long command quietly, shows that it goes on, and its reason when it fails.

# What one checkout has compiled serves the next one, wherever it stands: paths count from the checkout's folder.
export CCACHE_BASEDIR="$PWD" CCACHE_NOHASHDIR=1

# runStep NAME LOGFILE COMMAND...
# Prints the log's last line every 20 seconds, and one line with the seconds when the command is done.
# The command runs in the foreground, so that an interrupt from the terminal reaches it.
runStep() {
    local name="$1" log="$2" start=$SECONDS status=0 watcher
    shift 2
    mkdir -p "$(dirname "$log")"
    : >"$log"
    showProgress "$name" "$log" &
    watcher=$!
    "$@" >"$log" 2>&1 </dev/null || status=$?
    kill "$watcher" 2>/dev/null || true
    wait "$watcher" 2>/dev/null || true
    if ((status == 0)); then
        printf '   %-26s %4d s\n' "$name" $((SECONDS - start))
        return 0
    fi
    printf 'FAILED %-23s %4d s, exit status %d, the end of %s:\n' "$name" $((SECONDS - start)) "$status" "$log"
    # What went well would bury the reason.
    grep -vE '^ +Start +[0-9]+: | Passed +[0-9.]+ sec$|^\[[0-9]+/[0-9]+\] ' "$log" | tail -n 80
    return 1
}

showProgress() {
    local name="$1" log="$2" start=$SECONDS parent=$$
    # A short sleep: when the step is done nothing is left running for long.
    while kill -0 "$parent" 2>/dev/null; do
        for _ in {1..20}; do
            sleep 1
        done
        printf '   %-26s %4d s  %s\n' "$name" $((SECONDS - start)) "$(lastLine "$log")"
    done
}

# The last line of a log, cut so that it stays one line on a terminal.
lastLine() {
    tail -n 1 "$1" 2>/dev/null | tr -d '\r' | cut -c 1-80
}
