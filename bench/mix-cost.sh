#!/usr/bin/env bash
# The rate at which the demo tracks are mixed, times real time, by processor time: with their analysis, and with the
# analyses kept. Prints one line for each.
# usage: bench/mix-cost.sh [PROGRAM]
set -euo pipefail
program=${1:-$(dirname "$0")/../build/release/bin/platterdex}
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
"$program" demo-tracks "$work/tracks" >/dev/null

TIMEFORMAT='%U %S'
for row in "analysis and mix" "mix alone"; do
    used=$({ time "$program" mix "$work/tracks" --out "$work/mix.wav" --report "$work/mix.csv" \
        --root "$work/root" 2>/dev/null; } 2>&1)
    seconds=$(tail -n 1 "$work/mix.csv" | sed 's/.*",//' | cut -d, -f2)
    awk -v row="$row" -v used="$used" -v seconds="$seconds" 'BEGIN { split (used, t, " ");
        printf "%s: %.0f s of music in %.2f s of processor time, %.0f x real time\n",
            row, seconds, t[1] + t[2], seconds / (t[1] + t[2]) }'
done
