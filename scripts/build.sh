#!/usr/bin/env bash
# Configures and builds one preset. Prints the compiler's output only when something is wrong.
#
# usage: scripts/build.sh PRESET [CMAKE_OPTION...]
set -euo pipefail
cd "$(dirname "$0")/.."
preset=$1
shift

log=$(mktemp)
trap 'rm -f "$log"' EXIT
if ! { cmake --preset "$preset" "$@" && cmake --build --preset "$preset"; } >"$log" 2>&1; then
    grep -E 'error|Error|FAILED|warning' -A 5 "$log" | head -n 100 >&2 || true
    tail -n 20 "$log" >&2
    exit 1
fi
if grep -q 'warning:' "$log"; then
    grep 'warning:' -A 3 "$log" | head -n 60
fi
echo "Built preset \"$preset\" in build/$preset."
