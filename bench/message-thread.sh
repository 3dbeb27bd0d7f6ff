#!/usr/bin/env bash
# The share of a core that the application's message thread takes, by processor time, in a real window on a display of
# its own: with nothing loaded, and while four decks play, at 1x and 2x. Prints a row for each, and last how the audio went.
# usage: bench/message-thread.sh [PROGRAM [SECONDS]]    MESSAGE_THREAD_PICTURES=FOLDER keeps a picture of each row
set -euo pipefail
here=$(realpath "$(dirname "$0")")
program=$(realpath "${1:-$here/../build/release/bin/platterdex}")
seconds=${2:-20}
if [ "${MESSAGE_THREAD_SCALE:-}" = "" ]; then
    echo "load average $(cut -d' ' -f1 /proc/loadavg), $seconds s a row"
    for scale in 1 2; do
        MESSAGE_THREAD_SCALE=$scale "$here/../scripts/on-display.sh" $((1920 * scale + 80))x$((1080 * scale + 120)) \
            "$0" "$program" "$seconds"
    done
    exit
fi

scale=$MESSAGE_THREAD_SCALE
work=$(mktemp -d)
process=
trap '[ -z "$process" ] || kill $process 2>/dev/null || true; wait; rm -rf "$work"' EXIT
fail() { echo "FAILED: $*" >&2; exit 1; }
"$program" demo-tracks "$work/tracks" >/dev/null
mapfile -t tracks < <(find "$work/tracks" -name '*.flac' | sort | head -4)

# Clock ticks that a thread has used: utime and stime, behind the name in brackets.
ticks_of() { sed 's/.*) //' "$1" | awk '{ print $12 + $13 }'; }

# measure NAME: one row. The first thread is the message thread; all others together are audio, loaders, JUCE's.
measure() {
    local message=/proc/$process/task/$process/stat whole=/proc/$process/stat before all
    [ -z "${MESSAGE_THREAD_PICTURES:-}" ] ||
        ffmpeg -loglevel error -y -f x11grab -video_size $((1920 * scale + 80))x$((1080 * scale + 120)) -i "$DISPLAY" \
            -frames:v 1 "$MESSAGE_THREAD_PICTURES/$1-${scale}x.png"
    before=$(ticks_of "$message") all=$(ticks_of "$whole")
    sleep "$seconds"
    awk -v name="$1" -v scale="$scale" -v s="$seconds" -v hz="$(getconf CLK_TCK)" \
        -v own=$(($(ticks_of "$message") - before)) -v all=$(($(ticks_of "$whole") - all)) 'BEGIN {
        printf "%-14s %dx  message thread %5.2f %%  other threads %5.2f %%\n",
            name, scale, 100 * own / hz / s, 100 * (all - own) / hz / s }'
}

# start TRACK...: the application at the size, its window in $window.
start() {
    mkdir -p "$work/root/setup"
    echo "interface size=$((100 * scale))" >"$work/root/setup/preferences.txt"
    JACK_NO_START_SERVER=1 JACK_DEFAULT_SERVER=none-$$ "$program" --root "$work/root" --report "$@" >"$work/log" 2>&1 &
    process=$!
    for _ in $(seq 100); do
        window=$(xdotool search --onlyvisible --name '^Platterdex$' 2>/dev/null | tail -1) && [ -n "$window" ] && break
        sleep 0.2
    done
    [ -n "$window" ] || fail "no window"
    sleep 1
    xdotool windowsize --sync "$window" $((1920 * scale)) $((1080 * scale)) windowmove "$window" 20 40
    sleep 1
    eval "$(xdotool mousemove --window "$window" 0 0 getmouselocation --shell)"
    left=$X top=$Y
}

stop() {
    kill -TERM $process
    wait $process || fail "the application ended with $?"
    process=
}

click() { xdotool mousemove $((left + $1 * scale)) $((top + $2 * scale)) click 1; sleep 0.3; }

# A first start would fill decks A and B with demo tracks; a second with empty ones finds nothing to do.
mkdir -p "$work/root/audio"
start
stop
start
sleep 3
measure idle
stop

start "${tracks[@]}"
sleep 12
# Play on A, B, C and D, each in its strip's transport column; the right strips begin behind the block of pages.
right=$((5 + (1920 - 230) / 2 + 220 + 24))
for place in "29 225" "$right 225" "29 466" "$right 466"; do
    # shellcheck disable=SC2086 # two numbers
    click $place
done
xdotool mousemove $((left + 960 * scale)) $((top + 1000 * scale))
sleep 2
measure four-decks
stop
tail -n 1 "$work/log"
