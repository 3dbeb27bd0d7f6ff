#!/usr/bin/env bash
# Plays controllers of a foreign program into the application over JACK, and reads their lamps.
# usage: surface.sh surface.py|hotplug.py PROGRAM [PICTURES]
set -euo pipefail
here=$(dirname "$0")
if ! command -v jackd >/dev/null; then
    echo "SKIPPED: there is no jackd (package jackd2)"
    exit 77
fi
exec "$here/../../scripts/on-display.sh" 1400x900 /usr/bin/python3 "$here/$1" "${@:2}"
