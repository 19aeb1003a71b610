#!/usr/bin/env bash
# Runs the first program and compares what it prints with the expected text: check.sh PROGRAM DATAFOLDER
set -euo pipefail

diff "$(dirname "${BASH_SOURCE[0]}")/first.expected" <("$1" "$2")
