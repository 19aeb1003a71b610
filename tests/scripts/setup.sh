#!/usr/bin/env bash
# Runs scripts/setup on a system that is made up: setup.sh REPOSITORY
# Its packages are lines of two files: what is installed, and what the release offers.
set -euo pipefail

work="$(mktemp -d)"
trap 'rm -rf "$work"' EXIT
mkdir -p "$work/scripts/packages" "$work/bin"
cp "$1/scripts/setup" "$work/scripts/"

# program NAME: one of the programs of the made-up system, from standard input.
program() {
    { printf '#!/bin/sh\ncd %q\n' "$work" && cat; } >"$work/bin/$1"
    chmod +x "$work/bin/$1"
}
program id <<<'echo 0'
# Removed packages stay known as long as their configuration files are left.
program dpkg-query <<'END'
for name; do :; done
grep -qx "$name" installed && echo installed && exit
grep -qx "$name" removed && echo config-files
END
program apt-cache <<'END'
grep -qx "$2" offered && printf '%s:\n  Candidate: 1.0-1\n' "$2" && exit
grep -qx "$2" known && printf '%s:\n  Candidate: (none)\n' "$2"
END
program apt-get <<'END'
[ "$1" = install ] || exit 0
for name; do
    ! grep -qx -e "$name" offered || echo "$name" >>installed
done
END

cat >"$work/scripts/packages/build.txt" <<'END'
# A comment.
plain
first|second|third   # one of them
END

# expect WHY INSTALLED OFFERED STATUS WHAT-IT-SAYS WHAT-IS-INSTALLED-THEN [purpose]
faults=0
expect() {
    local status=0 said then
    printf '%s\n' gone >"$work/removed"
    printf '%s\n' second >"$work/known"
    tr ' ' '\n' <<<"$2" >"$work/installed"
    tr ' ' '\n' <<<"$3" >"$work/offered"
    said="$(PATH="$work/bin:$PATH" "$work/scripts/setup" ${7:-} 2>&1)" || status=$?
    then="$(grep . "$work/installed" | paste -sd ' ' || true)"
    if [[ "$status|$said|$then" != "$4|$5|$6" ]]; then
        printf '%s:\n  expected %s\n  found    %s\n' "$1" "$4|$5|$6" "$status|$said|$then"
        faults=$((faults + 1))
    fi
}

expect "all are there" "plain first" "" 0 "" "plain first"
expect "the last alternative is enough, also where a better one is offered" \
    "plain third" "first second third" 0 "" "plain third"
expect "of what is offered the first is taken" \
    "plain" "first second third" 0 "installing 1 packages: first" "plain first"
expect "what this release does not have is passed over" \
    "plain" "third" 0 "installing 1 packages: third" "plain third"
expect "a name without a version to install is not offered" \
    "plain" "second-has-only-a-name third" 0 "installing 1 packages: third" "plain third"
expect "more than one" "" "plain second third" 0 "installing 2 packages: plain second" "plain second"
expect "none of the alternatives" \
    "" "plain" 1 "scripts/setup: this system's release has no package first|second|third" ""
expect "a package that is nowhere" \
    "first" "" 1 "scripts/setup: this system's release has no package plain" "first"
expect "an unknown purpose" "" "" 2 "scripts/setup: unknown purpose 'dance'; known: build" "" dance

echo gone >"$work/scripts/packages/build.txt"
expect "a removed package is not there" "" "gone" 0 "installing 1 packages: gone" "gone"

# Every line of the real lists can be read: names as Debian's policy has them.
if grep -hvnE '^(#.*|[a-z0-9][a-z0-9+.-]+(\|[a-z0-9][a-z0-9+.-]+)*)$' "$1"/scripts/packages/*.txt; then
    echo "these lines of scripts/packages name no packages"
    faults=$((faults + 1))
fi
((faults == 0)) || exit 1
