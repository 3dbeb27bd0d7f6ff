#!/usr/bin/env bash
# Opens the application on a display of its own, once with a JACK server and once without: plays a track by a click,
# moves crossfader and record by the mouse, plays four decks, changes mode and size, and ends it as the system would.
# usage: scripts/window-test.sh PROGRAM [FOLDER]    pictures of the window are left in FOLDER
# WINDOW_TEST_JACK=no leaves the run with JACK out.
set -euo pipefail
if [ -z "${WINDOW_TEST_DISPLAY:-}" ]; then
    WINDOW_TEST_DISPLAY=own exec "$(dirname "$0")/on-display.sh" 1400x900 "$0" "$@"
fi
program=$(realpath "$1")
. "$(dirname "$0")/window-helpers.sh"
keep_pictures "${2:-$work/pictures}"

has_colour() { [ "$(colour_at "$1" "$2")" = "$3" ]; }
lacks_colour() { ! has_colour "$@"; }
# The colours of points in a row of the screen: left end, row, length.
row_at() {
    ffmpeg -loglevel error -f x11grab -video_size "$3x2" -i "$DISPLAY+$1,$2" -frames:v 1 -pix_fmt rgb24 -f rawvideo - | md5sum
}
resized_to() { xdotool getwindowgeometry "$1" | grep -q "Geometry: $2x"; }

"$program" demo-tracks "$work/tracks" >"$work/tracks.log" || fail "the demo tracks can't be written"
mapfile -t tracks < <(find "$work/tracks" -name '*.flac' | sort | head -4)

# load_by_typing: a path that is typed into the dialog of Shift+F1, which has the keyboard, is loaded by one Return.
load_by_typing() {
    "$program" "${tracks[0]}" --root "$work/root-typed" >"$work/typed.log" 2>&1 &
    local process=$! window
    started+=($process)
    window=$(window_of '^Platterdex$')
    find_window "$window"
    local wave="$((left + 300)) $((top + 55 + 120)) 110" before
    until_true "the waveform does not appear" has_colour "$((left + (WIDTH - 230) / 4))" "$((top + 55 + 222))" 3c7ea3
    at_rest
    # shellcheck disable=SC2086 # three numbers
    before=$(row_at $wave)
    xdotool windowfocus --sync "$window" key shift+F1
    until_true "Shift+F1 opens no dialog" is_shown '^Load a track into deck A$'
    until_true "the dialog lies behind the window" is_on_top "Load a track into deck A"
    await_keyboard '^Load a track into deck A$'
    xdotool type --delay 20 "${tracks[3]}"
    xdotool key Return
    # shellcheck disable=SC2086
    until_true "a typed path is not loaded by one Return" lacks_row "$before" $wave
    kill -TERM $process
    wait $process || fail "it does not end after a typed path"
}
# plays_by X Y LETTER_X LETTER_Y COLOUR: a click on Play lights the deck's letter. One that comes before the track is lost.
plays_by() {
    has_colour "$3" "$4" "$5" && return
    xdotool mousemove "$1" "$2" click 1
    at_rest
    comes has_colour "$3" "$4" "$5"
}
lacks_look() { [ "$1" != "$(row_at "$2" "$3" "$4")" ]; }
lacks_row() { [ "$1" != "$(row_at "$2" "$3" "$4")" ] && is_gone '^Load a track'; }

# open_and_close: the window goes while its tracks still load, by itself and by its frame.
open_and_close() {
    "$program" "${tracks[@]}" --root "$work/root-quick" --quit-after 1 >"$work/quick.log" 2>&1 ||
        fail "it does not end by itself"
    "$program" "${tracks[@]}" --root "$work/root-quick" >"$work/quick.log" 2>&1 &
    local process=$! status=0
    started+=($process)
    close_window '^Platterdex$'
    until_true "the window's frame does not close it" has_ended $process
    wait $process || status=$?
    [ $status -eq 0 ] || fail "closing the window ended it with $status"
}
has_ended() { ! kill -0 "$1"; }

# run NAME DEVICE: one life of the application; its output must name the audio device.
run() {
    local name=$1 device=$2 root=$work/root-$1
    "$program" "${tracks[@]}" --root "$root" --report >"$work/$name.log" 2>&1 &
    local process=$!
    started+=($process)

    local window
    window=$(window_of '^Platterdex$')
    find_window "$window"
    # Four tracks bring up four decks; the larger views of two are what follows.
    until_true "$name: deck C was given a track and is not shown" has_colour "$((left + 10))" "$((top + 296 + 8))" 2b2e32
    xdotool mousemove "$((left + 5 + 159 + 20))" "$((top + 5 + 24))" click 1
    until_true "$name: deck C does not go" lacks_colour "$((left + 10))" "$((top + 296 + 8))" 2b2e32

    # In deck A, from the editor's corner: its letter, lit while it plays; a row of the thumbnail and of the waveform;
    # Play. The strip is (width - 230) / 2 wide, the block between the decks begins 2 pixels after it.
    local deck=$(((WIDTH - 230) / 2))
    local letter_x=$((left + 10)) letter_y=$((top + 63))
    local thumb_y=$((top + 55 + 222)) wave_y=$((top + 55 + 120))
    local wave_x=$((left + 5 + (deck + 49) / 2))
    local play_x=$((left + 5 + 24)) play_y=$((top + 55 + 170))
    local lit=56b4e9 unlit=2b2e32

    until_true "$name: the waveform does not appear" has_colour "$((left + deck / 2))" "$thumb_y" 3c7ea3
    has_colour "$letter_x" "$letter_y" $unlit || fail "$name: the deck is lit before it plays"
    picture "$name-loaded"
    xdotool mousemove "$play_x" "$play_y" click 1
    until_true "$name: a click on Play does not start the deck" has_colour "$letter_x" "$letter_y" $lit
    xdotool mousemove "$((left + 500))" "$((top + HEIGHT - 40))"
    picture "$name-playing"
    xdotool key space
    until_true "$name: the space bar does not stop the deck" has_colour "$letter_x" "$letter_y" $unlit

    # The crossfader below the two channels: its cap follows the hand to the left.
    local fader_x=$((left + deck + 7 + 36)) fader_y=$((top + 22 + 275 - 44 + 11))
    local cap_before
    cap_before=$(colour_at "$((fader_x + 14))" "$fader_y")
    xdotool mousemove "$((fader_x + 72))" "$fader_y" mousedown 1 mousemove "$((fader_x + 44))" "$fader_y" \
        mousemove "$((fader_x + 4))" "$fader_y" mouseup 1
    until_true "$name: the crossfader does not follow the hand" lacks_colour "$((fader_x + 14))" "$fader_y" "$cap_before"

    # A hand on the waveform of the stopped deck moves the record; the picture under it changes.
    local row_before
    at_rest
    row_before=$(row_at "$((wave_x - 60))" "$wave_y" 40)
    xdotool mousemove "$wave_x" "$wave_y" mousedown 1
    for step in $(seq 1 10); do
        xdotool mousemove "$((wave_x - 6 * step))" "$wave_y"
        at_rest
    done
    xdotool mouseup 1
    until_true "$name: the waveform does not follow the hand" lacks_look "$row_before" "$((wave_x - 60))" "$wave_y" 40
    picture "$name-scratched"

    # A key that is held is one press: headphones and nudge change their lamps once, however often the key repeats.
    local pfl_x=$((left + deck + 7 + 68)) pfl_y=$((top + 22 + 24 + 20)) changes=0 last now
    last=$(colour_at "$pfl_x" "$pfl_y")
    xdotool keydown t
    until_true "$name: the held key changes no lamp" lacks_colour "$pfl_x" "$pfl_y" "$last"
    for _ in $(seq 20); do
        sleep 0.05
        now=$(colour_at "$pfl_x" "$pfl_y")
        [ "$now" = "$last" ] || changes=$((changes + 1))
        last=$now
    done
    sleep 1
    at_rest
    xdotool keyup t
    [ $changes -eq 1 ] || fail "$name: the held key changed its lamp $changes times"
    xdotool key t
    # Cue that is held at its cue point plays on: the letter stays lit until the key comes up.
    xdotool key q
    at_rest
    xdotool keydown q
    until_true "$name: a held Cue does not play" has_colour "$letter_x" "$letter_y" $lit
    for _ in $(seq 20); do
        has_colour "$letter_x" "$letter_y" $lit || fail "$name: a held Cue stops"
        sleep 0.05
    done
    xdotool keyup q
    until_true "$name: Cue does not end with its key" has_colour "$letter_x" "$letter_y" $unlit

    # A click that closes a menu acts on nothing under it.
    open_menu "$((left + 5 + 159 + 56))" "$((top + 5 + 24))" 3
    xdotool mousemove "$play_x" "$play_y"
    at_rest
    xdotool mousedown 1
    at_rest
    xdotool mouseup 1
    until_true "$name: a click beside it does not close the menu" is_gone '^menu$'
    at_rest
    has_colour "$letter_x" "$letter_y" $unlit || fail "$name: the click that closes a menu plays"

    # A value that is typed plays nothing: the field of the gain knob, chosen by the mouse, has the keyboard.
    local gain_x=$((left + deck + 7 + 46)) gain_y=$((top + 22 + 24 + 18)) knob_before
    knob_before=$(row_at "$((gain_x - 14))" "$((gain_y - 6))" 28)
    open_menu "$gain_x" "$gain_y" 3
    xdotool mousemove "$((gain_x + 40))" "$((gain_y + 53))"
    at_rest
    xdotool click 1
    until_true "$name: the menu stays" is_gone '^menu$'
    at_rest
    picture "$name-field"
    xdotool key minus 6 Return
    at_rest
    has_colour "$letter_x" "$letter_y" $unlit || fail "$name: what is typed into a field plays deck A"
    has_colour "$((left + 5 + deck + 220 + 5))" "$letter_y" $unlit || fail "$name: what is typed into a field plays deck B"
    until_true "$name: the field does not turn the knob" lacks_look "$knob_before" "$((gain_x - 14))" "$((gain_y - 6))" 28
    xdotool key space
    until_true "$name: the keyboard is not given back" has_colour "$letter_x" "$letter_y" $lit
    xdotool key space
    until_true "$name: the space bar does not stop the deck again" has_colour "$letter_x" "$letter_y" $unlit

    # Four decks and back: deck C's letter comes and goes. A resize in between, and a load while the mode changes.
    xdotool mousemove "$((left + 5 + 159 + 20))" "$((top + 5 + 24))" click 1
    until_true "$name: deck C does not appear" has_colour "$letter_x" "$((top + 296 + 8))" $unlit
    # Play on all four, each deck's letter tells; a hand on the record while they sound.
    local right_x=$((left + 5 + deck + 220 + 24))
    until_true "$name: deck A does not play" plays_by "$play_x" "$play_y" "$letter_x" "$letter_y" $lit
    until_true "$name: deck B does not play" plays_by "$right_x" "$play_y" "$((right_x - 19))" "$letter_y" e69f00
    until_true "$name: deck C does not play" plays_by "$play_x" "$((play_y + 241))" "$letter_x" "$((top + 296 + 8))" 2fbf8f
    until_true "$name: deck D does not play" plays_by "$right_x" "$((play_y + 241))" "$((right_x - 19))" "$((top + 296 + 20))" d985b5
    xdotool mousemove "$wave_x" "$wave_y" mousedown 1
    for step in $(seq 1 10); do
        xdotool mousemove "$((wave_x + (step % 2 == 0 ? 40 : -40)))" "$wave_y"
        sleep 0.05
    done
    xdotool mouseup 1
    at_rest
    has_colour "$letter_x" "$letter_y" $lit || fail "$name: a hand on the record stops the deck"
    picture "$name-four"
    xdotool windowsize "$window" 1100 760
    until_true "$name: the window keeps its size" resized_to "$window" 1100
    find_window "$window"
    # Full screen has no frame, and Escape gives the window back.
    xdotool mousemove "$((left + 5 + 159 + 128))" "$((top + 5 + 24))" click 1
    until_true "$name: it does not fill the screen" resized_to "$window" 1400
    find_window "$window"
    [ "$left,$top" = 0,0 ] || fail "$name: full screen keeps a frame"
    picture "$name-full"
    await_keyboard '^Platterdex$'
    xdotool key Escape
    until_true "$name: Escape does not leave the full screen" resized_to "$window" 1100
    find_window "$window"
    picture "$name-small"
    xdotool mousemove "$((left + 5 + 159 + 20))" "$((top + 5 + 24))" click 1
    until_true "$name: deck C does not go" lacks_colour "$((left + 10))" "$((top + 296 + 8))" $unlit

    # The preferences' menu opens the audio settings by its first line.
    open_menu "$((left + 5 + 159 + 56))" "$((top + 5 + 24))" 3
    picture "$name-menu"
    choose Down Return
    until_true "$name: no audio settings" is_shown '^Preferences$'
    xdotool mousemove 5 5
    picture "$name-audio"
    kill -0 $process || fail "$name: the application is gone"

    local before=$SECONDS status=0
    kill -TERM $process
    wait $process || status=$?
    [ $status -eq 0 ] || fail "$name: SIGTERM ended it with $status"
    [ $((SECONDS - before)) -le 60 ] || fail "$name: SIGTERM took $((SECONDS - before)) seconds"
    [ -s "$root/setup/platterdex.set" ] || fail "$name: no settings were saved"
    grep -Eq "$device" "$work/$name.log" || fail "$name: not the expected audio device, $device"
    echo "$name: $(grep -E "$device" "$work/$name.log")"

    # Audio ran all the time, and at most one block of four was late, on a machine that has other work as well.
    local report blocks late
    report=$(grep -E '^Audio: [0-9]+ blocks, [0-9]+ late, ' "$work/$name.log") || fail "$name: no report on the audio"
    read -r blocks late < <(sed -E 's/^Audio: ([0-9]+) blocks, ([0-9]+) late.*/\1 \2/' <<<"$report")
    [ "$blocks" -gt 500 ] || fail "$name: only $blocks blocks were played"
    [ $((late * 4)) -le "$blocks" ] || fail "$name: $report"
    echo "$name: $report"
}

export JACK_NO_AUDIO_RESERVATION=1
JACK_DEFAULT_SERVER=platterdex-none-$$ open_and_close
JACK_DEFAULT_SERVER=platterdex-none-$$ load_by_typing
JACK_DEFAULT_SERVER=platterdex-none-$$ run without-jack '^(No audio device found: running silently\.|Audio device: ALSA,)'

if [ "${WINDOW_TEST_JACK:-yes}" != yes ]; then
    echo "with-jack: left out"
elif command -v jackd jack_lsp >/dev/null; then
    export JACK_DEFAULT_SERVER=platterdex-test-$$
    jackd -n "$JACK_DEFAULT_SERVER" -r -d dummy -r 48000 -p 256 -C 10 -P 14 >"$work/jackd.log" 2>&1 &
    started+=($!)
    until_true "the JACK server does not start" jack_lsp -s "$JACK_DEFAULT_SERVER" system
    run with-jack '^Audio device: JACK, system, 10 in, 14 out, 48000 Hz, blocks of 256\.'
else
    echo "with-jack: skipped, there is no jackd"
fi
