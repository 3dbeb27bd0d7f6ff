#!/usr/bin/env bash
# Fills the sampler's pads by the mouse in a real window: a file out of another program's window, a song out of the table, a
# loop out of the recorder, a pad onto a pad. Presses a pad, and quits: the recorded loop is offered, and saved. The file
# that keeps the pads tells what lies on them.
# usage: scripts/pads-test.sh PROGRAM DRAG_SOURCE [FOLDER]    pictures of the window are left in FOLDER
set -euo pipefail
if [ -z "${PADS_TEST_DISPLAY:-}" ]; then
    PADS_TEST_DISPLAY=own exec "$(dirname "$0")/on-display.sh" 1400x900 "$0" "$@"
fi
program=$(realpath "$1") drag_source=$(realpath "$2")
. "$(dirname "$0")/window-helpers.sh"
keep_pictures "${3:-$work/pictures}"
root=$work/root

# pad NUMBER ATTRIBUTE: of the pads as they are kept, 1 to 16; lines may break between attributes.
pad() {
    tr '\n' ' ' <"$root/setup/sampler.xml" | grep -o "<value slot_number=\"$(($1 - 1))\"[^>]*>" |
        sed -n "s/.* $2=\"\([^\"]*\)\".*/\1/p"
}
holds() { [ "$(pad "$1" "$2")" = "$3" ]; }
holds_a_song() { [ "$(dirname "$(pad "$1" filepath)")" = "$work/songs" ]; }
is_recorded() { [ "$(pad "$1" unsaved)" = 1 ] && [ -s "$(pad "$1" filepath)" ]; }

# The middle of a pad in the two-deck page, which begins 2 pixels after deck A's strip of (width - 230) / 2.
pad_x() { echo $((left + (WIDTH - 230) / 2 + 38 + ($1 - 1) % 4 * 52)); }
pad_y() { echo $((top + 150 + ($1 - 1) / 4 * 33)); }

# drag_until SENTENCE X Y TO_X TO_Y COMMAND...: drags as a hand does, after `prepare`; what a busy machine has missed is done
# again.
prepare=true
drag_until() {
    local what=$1 x=$2 y=$3 to_x=$4 to_y=$5 attempt step
    shift 5
    for attempt in 1 2 3; do
        $prepare
        xdotool mousemove "$x" "$y"
        at_rest
        xdotool mousedown 1
        for step in $(seq 1 12); do
            at_rest
            xdotool mousemove $((x + (to_x - x) * step / 12)) $((y + (to_y - y) * step / 12))
        done
        at_rest
        [ $attempt -gt 1 ] || picture "drag-$((++drags))"
        xdotool mouseup 1
        at_rest
        comes "$@" && return 0
    done
    fail "$what"
}
drags=0

"$program" demo-tracks "$work/tracks" >"$work/tracks.log" || fail "the demo tracks can't be written"
mapfile -t tracks < <(find "$work/tracks" -name '*.flac' | sort)
cut() { ffmpeg -loglevel error -ss 20 -t "$1" -i "${tracks[0]}" "$2"; }
cut 2 "$work/Outside.wav"
mkdir "$work/songs"
cut 3 "$work/songs/First.wav"
cut 4 "$work/songs/Second.wav"
"$program" import "$work/songs" --root "$root" >"$work/import.log" || fail "the songs don't come into the library"

export JACK_NO_AUDIO_RESERVATION=1 JACK_DEFAULT_SERVER=platterdex-none-$$
"$program" "${tracks[1]}" --root "$root" >"$work/app.log" 2>&1 &
process=$!
started+=($process)
window=$(window_of '^Platterdex$')
find_window "$window"
middle=$(((WIDTH - 230) / 2 + 115)) # of the block between the decks
at_rest --whole # the track loads
show_page() {
    xdotool mousemove $((left + middle - 17)) $((top + 34)) click 1
    at_rest
}
show_page
picture page

start_drag_source "$drag_source" "$work/Outside.wav"
prepare=show_page
drag_until "a file out of another program does not come" 20 20 "$(pad_x 1)" "$(pad_y 1)" \
    holds 1 filepath "$work/Outside.wav"
kill $source_process
prepare=true

# One of the first two rows: a notice about the audio device may lie above the table, one row high.
drag_until "a song of the table does not come" $((left + 400)) $((top + 426)) "$(pad_x 6)" "$(pad_y 6)" holds_a_song 6

record_loop() {
    xdotool mousemove $((left + middle + 39)) $((top + 84)) click 1
    sleep 2 # of music
    at_rest
}
prepare=record_loop
drag_until "a recorded loop does not come" $((left + middle)) $((top + 113)) "$(pad_x 11)" "$(pad_y 11)" \
    is_recorded 11
prepare=true
drag_until "a pad's sample does not come onto another pad" "$(pad_x 1)" "$(pad_y 1)" "$(pad_x 16)" "$(pad_y 16)" \
    holds 16 filepath "$work/Outside.wav"
picture filled

# The loop is offered when the window is closed, and saved.
recording=$(pad 11 filepath)
close_window '^Platterdex$'
until_true "the loop is not offered" is_shown '^Recorded loops$'
until_true "the offer lies behind the window" is_on_top "Recorded loops"
await_keyboard '^Recorded loops$'
picture offer
xdotool key --clearmodifiers Tab
at_rest
xdotool key --clearmodifiers Return
has_ended() { ! kill -0 $process; }
until_true "it does not end after the answer" has_ended
status=0
wait $process || status=$?
[ $status -eq 0 ] || fail "it ended with $status"
saved=$(pad 11 filepath)
[ "$(dirname "$saved")" = "$root/samples" ] && [ -s "$saved" ] || fail "the loop was not saved: $saved"
[ ! -e "$recording" ] || fail "the loop lies in two files"
[ -z "$(pad 11 unsaved)" ] || fail "the loop would be offered again"
echo "a file, a song, a loop and a pad came by the mouse; the loop was offered and saved"
