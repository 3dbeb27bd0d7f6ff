#!/usr/bin/env bash
# Paints the pictures of the README anew.
# usage: scripts/pictures.sh PROGRAM
set -euo pipefail
program=$(realpath "$1")
cd "$(dirname "$0")/.."
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
"$program" demo-tracks "$work" >/dev/null
cp docs/sets/pictures.txt "$work"

# snapshot NAME OPTION...
snapshot() {
    local name=$1
    shift
    "$program" snapshot --out "docs/pictures/$name.png" --after "$work/pictures.txt" "$@"
    echo "docs/pictures/$name.png"
}

snapshot four-decks --size 1280x800 --four
snapshot effects --size 1280x560 --tab fx
snapshot deck --view decka --size 1440x728 --scale 2
snapshot pad-editor --view pad-editor
snapshot knob-editor --view knob-editor
