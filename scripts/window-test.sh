#!/usr/bin/env bash
# Opens the application on a display of its own, once with a JACK server and once without: plays a track by a click,
# looks whether the deck lights up, and ends it as the system would.
# usage: scripts/window-test.sh PROGRAM [FOLDER]    pictures of the window are left in FOLDER
# WINDOW_TEST_JACK=no leaves the run with JACK out.
set -euo pipefail
program=$(realpath "$1")
work=$(mktemp -d)
pictures=$(realpath -m "${2:-$work/pictures}")
mkdir -p "$pictures"
started=()

clean_up() {
    for process in "${started[@]}"; do kill "$process" 2>/dev/null || true; done
    wait 2>/dev/null || true
    rm -rf "$work"
}
trap clean_up EXIT
fail() { [ -n "${DISPLAY:-}" ] && picture failed; echo "FAILED: $*" >&2; for log in "$work"/*.log; do echo "--- $log" >&2; tail -n 20 "$log" >&2; done; exit 1; }

# Waits until a command succeeds, up to 60 seconds.
until_true() {
    local what=$1 deadline=$((SECONDS + 60))
    shift
    until "$@" >/dev/null 2>&1; do
        [ $SECONDS -lt $deadline ] || fail "$what"
        sleep 0.1
    done
}

# The colour of a point of the screen as six hexadecimal digits.
colour_at() {
    ffmpeg -loglevel error -f x11grab -video_size 8x8 -i "$DISPLAY+$1,$2" -frames:v 1 -pix_fmt rgb24 -f rawvideo - |
        od -An -v -tx1 -N3 | tr -d ' \n'
}
has_colour() { [ "$(colour_at "$1" "$2")" = "$3" ]; }
lacks_colour() { ! has_colour "$@"; }
picture() { ffmpeg -loglevel error -y -f x11grab -video_size 1400x900 -i "$DISPLAY" -frames:v 1 "$pictures/$1.png"; }

mkfifo "$work/display"
Xvfb -displayfd 3 -screen 0 1400x900x24 3>"$work/display" >"$work/xvfb.log" 2>&1 &
started+=($!)
read -r number <"$work/display"
export DISPLAY=:$number
openbox --sm-disable >"$work/openbox.log" 2>&1 &
started+=($!)
# A window that opens before its manager is there is moved when that comes.
until_true "the window manager does not start" xdotool get_num_desktops

"$program" demo-tracks "$work/tracks" >"$work/tracks.log" || fail "the demo tracks can't be written"
track=$(find "$work/tracks" -name '*.flac' | sort | head -1)

# run NAME DEVICE: one life of the application; its output must name the audio device.
run() {
    local name=$1 device=$2 root=$work/root-$1
    "$program" "$track" --root "$root" >"$work/$name.log" 2>&1 &
    local process=$!
    started+=($process)

    until_true "$name: no window" xdotool search --onlyvisible --name '^Platterdex$'
    local window last=none
    window=$(xdotool search --onlyvisible --name '^Platterdex$' | tail -1)
    until [ "$last" = "$(xdotool getwindowgeometry "$window")" ]; do # it may still be on its way to its place
        last=$(xdotool getwindowgeometry "$window")
        sleep 0.5
    done
    eval "$(xdotool getwindowgeometry --shell "$window")"
    local height=$HEIGHT right=$((WIDTH - 70))
    # The window's place as the pointer finds it; its geometry counts the frame twice.
    eval "$(xdotool mousemove --window "$window" 0 0 getmouselocation --shell)"
    local left=$X top=$Y
    # In the first row: the corner of the deck's letter, the middle of the waveform, and Play.
    local row=$(((height - 40 - 48 - 8 - 12) / 4))
    local letter_x=$((left + 24)) letter_y=$((top + 56))
    local wave_x=$((left + 300)) wave_y=$((top + 44 + 40 + (row - 112) / 2 + 8))
    local play_x=$((left + 190)) play_y=$((top + 44 + row - 52))

    until_true "$name: the waveform does not appear" lacks_colour "$wave_x" "$wave_y" 16181a
    has_colour "$letter_x" "$letter_y" 2b2e32 || fail "$name: the deck is lit before it plays"
    picture "$name-loaded"
    xdotool mousemove "$play_x" "$play_y" click 1
    until_true "$name: a click on Play does not start the deck" has_colour "$letter_x" "$letter_y" 56b4e9
    xdotool mousemove "$((left + 500))" "$((top + 20))"
    picture "$name-playing"
    xdotool key space
    until_true "$name: the space bar does not stop the deck" has_colour "$letter_x" "$letter_y" 2b2e32
    xdotool mousemove "$((left + right))" "$((top + 20))" click 1
    until_true "$name: no audio dialog" xdotool search --onlyvisible --name '^Audio settings$'
    xdotool mousemove 5 5
    picture "$name-audio"
    kill -0 $process || fail "$name: the application is gone"

    local before=$SECONDS status=0
    kill -TERM $process
    wait $process || status=$?
    [ $status -eq 0 ] || fail "$name: SIGTERM ended it with $status"
    [ $((SECONDS - before)) -le 10 ] || fail "$name: SIGTERM took $((SECONDS - before)) seconds"
    [ -s "$root/setup/platterdex.set" ] || fail "$name: no settings were saved"
    grep -Eq "$device" "$work/$name.log" || fail "$name: not the expected audio device, $device"
    echo "$name: $(grep -E "$device" "$work/$name.log")"
}

export JACK_NO_AUDIO_RESERVATION=1
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
