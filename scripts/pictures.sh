#!/usr/bin/env bash
# Paints the pictures of the README and of the manual anew, or with --check says which of them show another program than this one:
# more than one pixel of 2,000 differs by more than one part of 16. Another machine's arithmetic may move a meter by a pixel.
# usage: scripts/pictures.sh PROGRAM [--check]
set -euo pipefail
program=$(realpath "$1") check=${2:-}
cd "$(dirname "$0")/.."
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
"$program" demo-tracks "$work" >/dev/null
cp docs/sets/pictures.txt docs/sets/manual.txt "$work"
stale=0

# alike ONE OTHER: true for two pictures that show the same.
alike() {
    cmp -s "$1" "$2" || python3 - "$1" "$2" <<'END'
import subprocess
import sys

def rows(file):
    done = subprocess.run(["ffmpeg", "-loglevel", "error", "-i", file, "-f", "rawvideo", "-pix_fmt", "rgb24", "-"],
                          check=True, capture_output=True)
    width = 3 * int.from_bytes(open(file, "rb").read(24)[16:20], "big")
    return [done.stdout[at:at + width] for at in range(0, len(done.stdout), width)]

one, other = (rows(file) for file in sys.argv[1:])
if [len(row) for row in one] != [len(row) for row in other]:
    sys.exit(1)
far = sum(max(abs(a[x + i] - b[x + i]) for i in range(3)) > 16
          for a, b in zip(one, other) if a != b for x in range(0, len(a), 3))
sys.exit(far * 2000 > sum(map(len, one)) // 3)
END
}

# paint FILE OPTION...
paint() {
    local file=$1 made=$work/made.png
    shift
    "$program" snapshot --out "$made" "$@" >/dev/null
    if [ -e "$file" ] && alike "$made" "$file"; then return; fi
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
