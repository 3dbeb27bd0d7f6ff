#!/usr/bin/env bash
# Plays in the application for minutes or hours as a DJ might, on a display and a JACK server of its own, and says whether it lasts:
# memory, file handles, threads, late blocks, gaps in recordings. The seed decides what is played when.
# usage: scripts/soak.sh MINUTES [--seed N] [--only PHRASE,...] [--build FOLDER] [--out FOLDER]
#    phrases are those of scripts/soak/plan.py, all if none is named; the folders are build/release and build/soak
set -euo pipefail
cd "$(dirname "$0")/.."
[ $# -ge 1 ] || { sed -n '2,5s/^# //p' "$0" >&2; exit 1; }
for tool in jackd Xvfb xdotool ffmpeg; do
    command -v "$tool" >/dev/null || { echo "$tool is missing: scripts/install-packages.sh test" >&2; exit 2; }
done
exec scripts/on-display.sh 1400x900 /usr/bin/python3 scripts/soak/soak.py "$@"
