#!/usr/bin/env bash
# Usage: kill.sh PROGRAM. On a display of its own: a second copy on the same folders says so, and a program that is killed
# two seconds after the last touch of a hand has lost nothing.
set -euo pipefail
if [ -z "${KILL_TEST_DISPLAY:-}" ]; then
    command -v Xvfb > /dev/null && command -v xdotool > /dev/null || exit 77
    KILL_TEST_DISPLAY=own exec "$(dirname "$0")/../../scripts/on-display.sh" 1400x900 "$0" "$@"
fi
program=$(realpath "$1")
. "$(dirname "$0")/../../scripts/window-helpers.sh"
# now SET...: prints what the lines of a set read of the program's files, one value a line.
now() {
    printf '%s\n' "$@" >"$work/set.txt"
    "$program" perform "$work/set.txt" --root "$work/copy" --out "$work/now.wav" | awk '/^[0-9]/ { print $3 }'
}

echo "20 end" >"$work/silence.txt"
"$program" perform "$work/silence.txt" --out "$work/track.wav" >"$work/perform.log"
start() {
    "$program" "$@" --root "$work/root" >>"$work/app.log" 2>&1 &
    started+=($!)
}
start "$work/track.wav"
window=$(window_of '^Platterdex$')

start
until_true "the second copy does not say that it is one" is_shown '^Platterdex runs twice$'
until_true "what the second copy says lies behind its window" is_on_top "Platterdex runs twice"
kill -9 "${started[1]}"
until_true "the window does not come back to the front" xdotool windowfocus --sync "$window"

# Hot cue 2 at the track's beginning, and the crossfader one step to the left.
at_rest --whole # the track loads
xdotool key 2 key comma
at_rest
sleep 2.2 # the promise
kill -9 "${started[0]}"

cp -r "$work/root" "$work/copy"
mapfile -t read < <(now "0 load A track.wav" "1 print HOT_CUE_2_A" "1 print CROSSFADER")
[ "${read[0]}" = 1.000000 ] || fail "the hot cue is lost: ${read[0]}"
[ "${read[1]}" = 0.450000 ] || fail "the crossfader's place is lost: ${read[1]}"
echo "nothing was lost"
