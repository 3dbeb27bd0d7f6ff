#!/usr/bin/env bash
# Paints the pictures of the README and of the manual anew.
# usage: scripts/pictures.sh PROGRAM
set -euo pipefail
program=$(realpath "$1")
cd "$(dirname "$0")/.."
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
"$program" demo-tracks "$work" >/dev/null
cp docs/sets/pictures.txt docs/sets/manual.txt "$work"

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

# page NAME OPTION...: a picture of the manual, whose reader shows two of its pixels as one.
page() {
    local name=$1
    shift
    "$program" snapshot --out "docs/manual/pictures/$name.png" --after "$work/manual.txt" --scale 2 "$@"
    echo "docs/manual/pictures/$name.png"
}

mkdir -p docs/manual/pictures
page window --size 1280x560
page deck --view deckb --size 1280x560
page deck-cues --view decka --size 1500x560
page mixer --view global
page fx --view global --tab fx
page env --view global --tab env
page vst --view global --tab vst
page sampler --view global --tab sampler
page pad-editor --view pad-editor
page knob-editor --view knob-editor
page timecode --view timecode
page midi-ports --view preferences-remote
page midi-mapping --view midi-mapping
page preferences --view preferences
"$program" import "$work" --root "$work/root" >/dev/null
page browser --view browser --size 1280x800 --root "$work/root"
