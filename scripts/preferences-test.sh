#!/usr/bin/env bash
# Uses the preferences of a real window by keys alone: walks to their button, opens them, turns a page, ticks a box there, finds
# another by the search field, chooses a language, closes them, opens the manual, and plays a deck. What it changes must stand in
# the files of the root.
# usage: scripts/preferences-test.sh PROGRAM [FOLDER]    pictures of the window are left in FOLDER
set -euo pipefail
if [ -z "${PREFERENCES_TEST_DISPLAY:-}" ]; then
    PREFERENCES_TEST_DISPLAY=own exec "$(dirname "$0")/on-display.sh" 1400x900 "$0" "$@"
fi
program=$(realpath "$1")
. "$(dirname "$0")/window-helpers.sh"
keep_pictures "${2:-$work/pictures}"

# So long that it does not end during the test.
ffmpeg -loglevel error -f lavfi -i sine=frequency=110:duration=600 -ac 2 "$work/deck.wav"

export JACK_NO_AUDIO_RESERVATION=1 JACK_DEFAULT_SERVER=platterdex-none-$$
"$program" "$work/deck.wav" --root "$work/root" --report >"$work/app.log" 2>&1 &
process=$!
started+=($process)
window=$(window_of '^Platterdex$')
find_window "$window"

# is_set NAME VALUE: the settings file says so.
is_set() {
    "$program" settings --tsv --root "$work/root" | awk -F '\t' -v name="$1" '$1 == name { print $2 }' | grep -qx "$2"
}
# The lamp of deck A in its colour.
plays() { [ "$(colour_at $((left + 10)) $((top + 63)))" = 56b4e9 ]; }
stands() { ! plays; }
# has_ring X Y WIDTH HEIGHT: in this part of the window are points of the ring's colour, as many as its sides have.
has_ring() {
    local count
    count=$(ffmpeg -loglevel error -f x11grab -draw_mouse 0 -video_size "$3x$4" -i "$DISPLAY+$((left + $1)),$((top + $2))" \
        -frames:v 1 -pix_fmt rgb24 -f rawvideo - | od -An -v -tx1 -w3 | grep -c 'be ef ff' || true)
    [ "$count" -ge 60 ]
}
has_ring_above() { has_ring 160 8 260 48; }
has_no_ring_above() { ! has_ring_above; }
ends() { ! kill -0 $process; }

# A key that comes before the window has the keyboard, or its first track, is lost, so it is pressed again.
begins_to_play() {
    xdotool windowfocus --sync "$window" key space
    at_rest
    comes plays
}
until_true "Space does not play" begins_to_play
has_no_ring_above || fail "there is a ring before Shift+Tab"

# To the second control of the header, which opens the preferences.
xdotool key shift+Tab
until_true "Shift+Tab shows no ring" has_ring_above
picture ring
xdotool key Tab
picture preferences-button
xdotool key space
until_true "Space on the button opens no preferences" is_shown '^Preferences$'
until_true "the preferences have no keyboard" has_keyboard '^Preferences$'
until_true "Space on a framed button stops the deck" plays

# The list of pages has the keyboard, and Tab goes on to the first box of the page.
at_rest
xdotool key Down
at_rest
xdotool key Tab
at_rest
picture layout-page
is_set fourDeckMode 0 || fail "four decks are shown already"
xdotool key space
until_true "Space does not tick the box" is_set fourDeckMode 1
until_true "the preferences lose the keyboard" has_keyboard '^Preferences$'
picture ticked
xdotool key space
until_true "Space does not clear the box" is_set fourDeckMode 0

# Back through the list to the search field, and by Return to the page that has the words.
xdotool key shift+Tab
at_rest
xdotool key shift+Tab
at_rest
xdotool type --delay 50 "key lock engine"
at_rest
picture found
xdotool key Return
at_rest
xdotool key Tab
at_rest
picture found-box
is_set bypassStretcher 0 || fail "the box is ticked already"
xdotool key space
until_true "Space does not tick the box that was found" is_set bypassStretcher 1

# Another language, by the last control of its page: the window has it at once, and the dialog is there again.
is_preferred() { grep -qx "$1=$2" "$work/root/setup/preferences.txt"; }
xdotool key shift+Tab
at_rest
xdotool key shift+Tab
at_rest
xdotool key --clearmodifiers ctrl+a
xdotool type --delay 50 "select language"
at_rest
xdotool key shift+Tab shift+Tab shift+Tab
at_rest
picture language-box
xdotool key Down
until_true "Down on the box chooses no other language" is_preferred language fr
until_true "the dialog is not there in French" is_shown '^Préférences$'
until_true "the French dialog has no keyboard" has_keyboard '^Préférences$'
picture french
xdotool key Escape
until_true "Escape does not close the preferences" is_gone '^Préférences$'
until_true "the preferences stop the deck" plays

# The manual, at the page of what the mouse is over, opens over the decks.
xdotool mousemove $((left + 24)) $((top + 160))
xdotool windowfocus --sync "$window" key F1
until_true "F1 opens no manual" is_shown '^Manuel$'
at_rest
picture manual
xdotool windowfocus --sync "$(window_of '^Manuel$')" key Escape
until_true "Escape does not close the manual" is_gone '^Manuel$'

# The next walk goes on where this one ended, and Escape gives the keys back to the decks.
xdotool windowfocus --sync "$window" key shift+Tab
until_true "Shift+Tab shows no ring again" has_ring_above
xdotool key Escape
until_true "Escape leaves the ring" has_no_ring_above
xdotool key space
until_true "Space does not reach the deck after Escape" stands
picture given-back

kill -TERM $process
until_true "it does not end" ends
wait $process || fail "it ends with a fault"
is_set bypassStretcher 1 || fail "the setting is lost at the end"
is_set fourDeckMode 0 || fail "the cleared box is ticked at the end"
