#!/usr/bin/env bash
# Paints the pictures of the README and of the manual anew, or with --check says which of them show another program than this one.
# usage: scripts/pictures.sh PROGRAM [--check]
set -euo pipefail
program=$(realpath "$1") check=${2:-}
cd "$(dirname "$0")/.."
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
"$program" demo-tracks "$work" >/dev/null
cp docs/sets/pictures.txt docs/sets/manual.txt "$work"
stale=0

# paint FILE OPTION...
paint() {
    local file=$1 made=$work/made.png
    shift
    "$program" snapshot --out "$made" "$@" >/dev/null
    if cmp -s "$made" "$file"; then return; fi
    if [ "$check" = --check ]; then
        echo "$file shows another program: run scripts/pictures.sh PROGRAM" >&2
        stale=1
    else
        mkdir -p "$(dirname "$file")"
        cp "$made" "$file"
        echo "$file"
    fi
}

# snapshot NAME OPTION...
snapshot() { paint "docs/pictures/$1.png" --after "$work/pictures.txt" "${@:2}"; }

snapshot four-decks --size 1280x800 --four
snapshot waves --size 1600x1080 --four --waves
snapshot effects --size 1280x560 --tab fx
snapshot deck --view decka --size 1440x728 --scale 2
snapshot pad-editor --view pad-editor
snapshot knob-editor --view knob-editor

# page NAME OPTION...: a picture of the manual, whose reader shows two of its pixels as one.
page() { paint "docs/manual/pictures/$1.png" --after "$work/manual.txt" --scale 2 "${@:2}"; }

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
exit $stale
