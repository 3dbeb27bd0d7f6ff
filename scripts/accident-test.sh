#!/usr/bin/env bash
# Lets the mouse and the keys slip on four playing decks in a real window: files let go over them, drags over the overview,
# clicks on the lamps, the dialog's keys. No deck may stop, jump or change its track; what asks is answered by no.
# usage: scripts/accident-test.sh PROGRAM DRAG_SOURCE [FOLDER]    pictures of the window are left in FOLDER
set -euo pipefail
if [ -z "${ACCIDENT_TEST_DISPLAY:-}" ]; then
    ACCIDENT_TEST_DISPLAY=own exec "$(dirname "$0")/on-display.sh" 1400x900 "$0" "$@"
fi
program=$(realpath "$1") drag_source=$(realpath "$2")
. "$(dirname "$0")/window-helpers.sh"
keep_pictures "${3:-$work/pictures}"

"$program" demo-tracks "$work/tracks" >"$work/tracks.log" || fail "the demo tracks can't be written"
mapfile -t tracks < <(find "$work/tracks" -name '*.flac' | sort | head -5)
# So long that none ends during the test, and each one another tone.
for deck in 0 1 2 3 4; do
    ffmpeg -loglevel error -f lavfi -i "sine=frequency=$((110 + 55 * deck)):duration=600" -ac 2 "$work/deck$deck.wav"
done

export JACK_NO_AUDIO_RESERVATION=1 JACK_DEFAULT_SERVER=platterdex-none-$$
"$program" "$work"/deck{0,1,2,3}.wav --root "$work/root" --report >"$work/app.log" 2>&1 &
process=$!
started+=($process)
window=$(window_of '^Platterdex$')
find_window "$window"

deck_width=$(((WIDTH - 230) / 2))
deck_x=("$((left + 5))" "$((left + deck_width + 225))" "$((left + 5))" "$((left + deck_width + 225))")
deck_y=("$((top + 55))" "$((top + 55))" "$((top + 296))" "$((top + 296))")
hue=(56b4e9 e69f00 2fbf8f d985b5)

lamp_is_lit() { [ "$(colour_at $((deck_x[$1] + 5)) $((deck_y[$1] + 8)))" = "${hue[$1]}" ]; }
# The overview of a deck without its playhead: another track, or none, looks different.
title_of() {
    ffmpeg -loglevel error -f x11grab -video_size 150x14 -i "$DISPLAY+$((deck_x[$1] + 8)),$((deck_y[$1] + 194))" \
        -frames:v 1 -pix_fmt rgb24 -f rawvideo - | md5sum
}
has_title() { [ "$(title_of "$1")" = "${titles[$1]}" ]; }
has_asked() { is_shown ' is playing$'; }
all_play() {
    at_rest
    local deck
    for deck in 0 1 2 3; do
        until_true "$1: deck $deck does not play" lamp_is_lit $deck
        until_true "$1: deck $deck has another track" has_title $deck
    done
}

# A key that comes before the window has the keyboard, or the deck its track, is lost, so it is pressed again.
play_keys=(space Return F5 F9)
plays() {
    lamp_is_lit "$1" && return
    xdotool windowfocus --sync "$window" key "${play_keys[$1]}"
    at_rest
    comes lamp_is_lit "$1"
}
at_rest --whole # the tracks load
for deck in 0 1 2 3; do
    until_true "deck $deck does not play" plays $deck
    at_rest
    titles[$deck]=$(title_of $deck)
done
picture playing

start_drag_source "$drag_source" "$work/deck4.wav"

# drop_on DECK: a file out of another program's window; it must ask, and Return says no.
drop_on() {
    local x=$((deck_x[$1] + deck_width / 2)) y=$((deck_y[$1] + 120)) attempt step
    for attempt in 1 2 3; do
        xdotool mousemove 20 20
        at_rest
        xdotool mousedown 1
        for step in $(seq 1 12); do
            xdotool mousemove $((20 + (x - 20) * step / 12)) $((20 + (y - 20) * step / 12))
            at_rest
        done
        picture "over-deck-$1"
        xdotool mouseup 1
        at_rest
        comes has_asked && break
    done
    until_true "deck $1 takes a file without a question" has_asked
    await_keyboard ' is playing$' # Return would stop a deck
    xdotool key Return
    until_true "the question stays" is_gone ' is playing$'
}
# A key that comes before the dialog has the keyboard is lost, so it is pressed again.
escaped() {
    xdotool key Escape
    at_rest
    comes is_gone "^Load a track"
}

for deck in 0 1 2 3; do
    drop_on $deck
    all_play "after a file let go over deck $deck"
done
kill $source_process

for deck in 0 1 2 3; do
    # A drag over the overview, and a click on the lamp.
    xdotool mousemove $((deck_x[$deck] + 60)) $((deck_y[$deck] + 222)) mousedown 1
    for step in 1 2 3 4 5 6; do
        at_rest
        xdotool mousemove $((deck_x[$deck] + 60 + 40 * step)) $((deck_y[$deck] + 222))
    done
    xdotool mouseup 1
    xdotool mousemove $((deck_x[$deck] + 12)) $((deck_y[$deck] + 18)) click 1
    all_play "after a drag over the overview of deck $deck and a click on its lamp"
done
picture slipped

# The keys of the dialogs: each opens, Escape closes it, and the music goes on.
for key in shift+F1 shift+F2 shift+F3 shift+F4; do
    xdotool windowfocus --sync "$window" key $key
    until_true "$key opens no dialog" is_shown '^Load a track'
    until_true "the dialog of $key stays" escaped
done
xdotool windowfocus --sync "$window" key n
at_rest
xdotool key Escape
at_rest

lamp_is_lit 0 || fail "the keys stop deck 0"
kill -TERM $process
wait $process || fail "it does not end"
grep -E '^Audio: ' "$work/app.log" || fail "no report on the audio"
