#!/usr/bin/env bash
# Usage: session.sh PLUGINS SESSION_HOST PROGRAM. Two instances in a plain host on one library: automix plays its songs, and
# the question that Play asks meanwhile is answered by a key.
if [ -z "${SESSION_TEST_DISPLAY:-}" ]; then
    command -v Xvfb xdotool openbox > /dev/null || exit 77
    SESSION_TEST_DISPLAY=own exec "$(dirname "$0")/../../scripts/on-display.sh" 1400x900 "$0" "$@"
fi
source "$(dirname "$0")/hosts.sh"
host=$2 program=$3

# Minutes of silence are music enough for a playlist.
echo "30 end" > "$work/silence.txt"
for song in one two; do
    "$program" perform "$work/silence.txt" --out "$work/$song.wav"
done
"$program" import "$work/one.wav" "$work/two.wav" --automix > /dev/null

"$host" "$plugins/Platterdex.so" > "$work/log" &
started+=($!)
deadline=$((SECONDS + 120))
in_time() { kill -0 "${started[0]}" 2> /dev/null && [ $SECONDS -lt $deadline ]; }
while in_time && ! grep -q "^ASKED" "$work/log"; do sleep 0.1; done
while in_time && ! box=$(xdotool search --onlyvisible --name "^Play Locked"); do sleep 0.1; done
# The key is sent until it is heard: the window may be on its way to the focus.
while in_time && xdotool windowfocus "$box" key y 2> /dev/null; do sleep 0.3; done
code=0
wait "${started[0]}" || code=$?
started=()
cat "$work/log"
exit $code
