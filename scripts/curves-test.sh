#!/usr/bin/env bash
# Works on a pad's and a SmartKnob's curves in real windows with a real mouse: opens both editors from their popups, drags,
# adds points, takes all of it back and does it again, saves, clears and loads a bank of pads, and finds the edits in the user's
# files after a kill.
# usage: scripts/curves-test.sh PROGRAM [FOLDER]    pictures of the windows are left in FOLDER
set -euo pipefail
if [ -z "${CURVES_TEST_DISPLAY:-}" ]; then
    CURVES_TEST_DISPLAY=own exec "$(dirname "$0")/on-display.sh" 1400x900 "$0" "$@"
fi
program=$(realpath "$1")
. "$(dirname "$0")/window-helpers.sh"
keep_pictures "${2:-$work/pictures}"
# The curves of an editor's window as they are seen, the pointer away from them.
curves() {
    xdotool mousemove $((left + 40)) $((top + HEIGHT - 20))
    at_rest
    ffmpeg -loglevel error -f x11grab -draw_mouse 0 -video_size $((WIDTH - plot - 20))x$((HEIGHT - 140)) \
        -i "$DISPLAY+$((left + plot)),$((top + 62))" -frames:v 1 -pix_fmt rgb24 -f rawvideo - | md5sum
}
# The button UNDO, which is dark while there is nothing to take back.
undo_button() {
    ffmpeg -loglevel error -f x11grab -draw_mouse 0 -video_size 50x16 -i "$DISPLAY+$((left + plot + 94)),$((top + 36))" \
        -frames:v 1 -pix_fmt rgb24 -f rawvideo - | md5sum
}
has_undo() { [ "$(undo_button)" != "$1" ]; }
has_no_undo() { [ "$(undo_button)" = "$1" ]; }
shows() { [ "$(curves)" = "$1" ]; }
differs() { [ "$(curves)" != "$1" ]; }
# drag X Y TO_X TO_Y [BUTTON]: in pixels of the window.
drag() {
    xdotool mousemove $((left + $1)) $((top + $2))
    at_rest
    xdotool mousedown "${5:-1}"
    for step in 1 2 3 4; do
        xdotool mousemove $((left + $1 + ($3 - $1) * step / 4)) $((top + $2 + ($4 - $2) * step / 4))
        at_rest
    done
    xdotool mouseup "${5:-1}"
    at_rest
}

# edit NAME: adds and drags a point in the window that is placed, takes it back and does it again.
edit() {
    local name=$1 before added nothing
    before=$(curves)
    nothing=$(undo_button)
    local middle=$((plot + (WIDTH - plot) / 3)) height=$((HEIGHT * 3 / 10))
    drag $middle $height $((middle + 30)) $((height - 30)) 3 # a new point, dragged as it comes
    until_true "$name: the right button adds no point" differs "$before"
    added=$(curves)
    drag $((middle + 30)) $((height - 30)) $((middle - 40)) $((height + 40))
    until_true "$name: a point can't be dragged" differs "$added"
    picture "$name-edited"
    xdotool mousemove $((left + middle - 40)) $((top + height + 40)) key ctrl+z
    until_true "$name: the drag is not taken back" shows "$added"
    xdotool key ctrl+z
    until_true "$name: the point is not taken back" has_no_undo "$nothing"
    xdotool key ctrl+shift+z
    until_true "$name: the point does not come again" has_undo "$nothing"
}

"$program" demo-tracks "$work/tracks" >"$work/tracks.log" || fail "the demo tracks can't be written"
track=$(find "$work/tracks" -name '*.flac' | sort | head -1)
"$program" "$track" --root "$work/root" >"$work/run.log" 2>&1 &
started+=($!)
window=$(window_of '^Platterdex$')
find_window "$window"
deck=$(((WIDTH - 230) / 2))
main_left=$left main_top=$top

# The page ENV is the last tab; the popup of the first pad opens its editor by its fifth line from below.
xdotool mousemove $((left + deck + 7 + 198)) $((top + 22 + 12)) click 1
at_rest
pad_x=$((left + deck + 7 + 30)) pad_y=$((top + 22 + 24 + 50))
open_menu $pad_x $pad_y 3
picture pad-popup
choose Up Up Up Up Up Return
until_true "the pad's editor does not open" is_shown '^Slicegate Editor for pad A.1$'
editor=$(window_of '^Slicegate Editor for pad A.1$')
plot=224
find_window "$editor"
edit pad
xdotool windowactivate --sync "$editor"
await_keyboard '^Slicegate Editor for pad A.1$'
xdotool key Escape # by itself: the window may be gone before the key comes up
until_true "Escape does not close the pad's editor" is_gone '^Slicegate Editor for pad A.1$'

# The menu beside the deck's letter saves its eight pads, clears them and loads them again.
bank() { # bank KEYS...: chooses a line of the menu
    xdotool windowactivate --sync "$window"
    open_menu $((main_left + deck + 7 + 178)) $((main_top + 22 + 24 + 14))
    choose "$@" Return
}
name_file() { # name_file TITLE: types the bank's path into the dialog
    until_true "no dialog \"$1\"" is_shown "^$1"
    await_keyboard "^$1"
    xdotool key ctrl+a
    xdotool type --delay 20 "$work/bank.xml"
    xdotool key Return
    until_true "the dialog \"$1\" stays" is_gone "^$1"
    at_rest
}
pads_of() { grep -c '<sliceGatePreset' "$1"; }
pads_kept() { [ "$(grep -c 'name="Empty"' "$work/root/setup/slicegate_A.xml")" = "$1" ]; }
bank Down Down
name_file "Save the bank of pads"
has_bank() { [ "$(pads_of "$work/bank.xml")" = 8 ]; }
until_true "the bank is not saved" has_bank
bank Down Down Down
until_true "the pads are not cleared" pads_kept 8
bank Down
name_file "Select a bank of pads"
until_true "the bank is not loaded" pads_kept 0

# The first panel left of the waveform becomes the SmartKnobs; EDIT opens the first knob's editor.
left=$main_left top=$main_top
xdotool windowactivate --sync "$window"
open_menu $((left + 5 + 49 + 50)) $((top + 55 + 12))
choose Up Up Up Return # Empty, Tempo, SmartKnob
picture knob-panel
open_menu $((left + 5 + 49 + 50)) $((top + 55 + 24 + 10))
picture knob-popup
choose Escape
xdotool mousemove $((left + 5 + 49 + 74)) $((top + 55 + 24 + 64)) click 1
until_true "the knob's editor does not open" is_shown '^Deck A SmartKnob #1 Editor$'
editor=$(window_of '^Deck A SmartKnob #1 Editor$')
plot=280
find_window "$editor"
edit knob
xdotool mousemove $((left + WIDTH - 48)) $((top + HEIGHT - 20)) click 1
until_true "CLOSE does not close the knob's editor" is_gone '^Deck A SmartKnob #1 Editor$'

# Edits reach the disk within seconds, so a kill takes none of them.
kept() { grep -q '<Env' "$work/root/setup/$1"; }
for file in slicegate_A.xml smartknob_A1.xml; do until_true "$file is not written" kept "$file"; done
kill -9 "${started[0]}"
for file in slicegate_A.xml smartknob_A1.xml; do kept "$file" || fail "$file is gone after a kill"; done
echo "pictures in $pictures"
