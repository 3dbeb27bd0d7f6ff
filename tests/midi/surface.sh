#!/usr/bin/env bash
# Plays a controller of a foreign program into the application over JACK, and reads its lamps.
# usage: surface.sh PROGRAM [PICTURES]
set -euo pipefail
here=$(dirname "$0")
if ! command -v jackd >/dev/null; then
    echo "SKIPPED: there is no jackd (package jackd2)"
    exit 77
fi
exec "$here/../../scripts/on-display.sh" 1400x900 /usr/bin/python3 "$here/surface.py" "$@"
