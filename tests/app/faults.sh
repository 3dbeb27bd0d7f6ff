#!/usr/bin/env bash
# Has the application play through faults of the machine, on a JACK server and a display of its own.
# usage: faults.sh PROGRAM CLOCK_SHIFT [FAULT]    FAULT: one of those of faults.py; all if none is named
set -euo pipefail
for tool in jackd Xvfb xdotool ffmpeg; do
    command -v "$tool" >/dev/null || { echo "SKIPPED: there is no $tool"; exit 77; }
done
exec "$(dirname "$0")/../../scripts/on-display.sh" 1400x900 /usr/bin/python3 "$(dirname "$0")/faults.py" "$@"
