#!/usr/bin/env bash
# Usage: kill.sh PROGRAM PLUGINS. Kills the program at all sorts of moments: no scanner and, from the next start on, no shared
# memory is left behind, and of the slots nothing is lost that is older than two seconds.
set -euo pipefail
if [ -z "${KILL_TEST_DISPLAY:-}" ]; then
    command -v Xvfb > /dev/null && command -v xdotool > /dev/null || exit 77
    KILL_TEST_DISPLAY=own exec "$(dirname "$0")/../../scripts/on-display.sh" 1400x900 "$0" "$@"
fi
program=$(realpath "$1")
plugins=$(realpath "$2")
. "$(dirname "$0")/../../scripts/window-helpers.sh"

# The processes and the memory of a program that had this number.
scanners_of() { pgrep -f "platterdex-scanner scan [a-z]+ /platterdex-$UID-$1-"; }
has_no_scanner() { ! scanners_of "$1"; }
memory_of() { compgen -G "/dev/shm/platterdex-$UID-$1-*"; }

mkdir "$work/hanging" "$work/nothing"
cp "$plugins/child_left.so" "$plugins/hang_200.so" "$work/hanging"
killed=()
for ms in 0 5 10 20 30 40 60 80 120 200 400 800; do
    "$program" plugins scan "$work/hanging" --root "$work/root-scan" >"$work/scan.log" 2>&1 &
    killed+=($!)
    sleep "$(printf '0.%03d' $ms)"
    kill -9 $! # the next start may come before the scanner has seen it
done
"$program" plugins scan "$work/nothing" --root "$work/root-scan" >"$work/scan.log"
for process in "${killed[@]}"; do
    until_true "a scanner outlives its program" has_no_scanner "$process"
    ! memory_of "$process" || fail "shared memory is left"
done

# A plug-in with a parameter on the first knob, as the last run left it.
mkdir "$work/known"
cp "$plugins/gain.so" "$work/known"
"$program" plugins scan "$work/known" --root "$work/root" >"$work/scan.log"
slots=$work/root/setup/vst_slots.xml
echo '<vstSlots><slot deck="A" plugin="gain" on="1" insert="0" dryWet="0.5" param1="0" param2="-1"/></vstSlots>' >"$slots"
start() {
    "$program" --root "$work/root" >>"$work/app.log" 2>&1 &
    started=($!)
    find_window "$(window_of '^Platterdex$')"
    until_true "the slot is not restored" test ! -e "$work/root/setup/vst_loading.txt" -a -s "$slots"
}
slot() { grep -o '<slot deck="A".*</slot>' "$slots"; }
has_state() { slot | grep -q '>.\+</slot>'; }
start
until_true "the state is not kept" has_state
state=$(slot | sed 's/.*>\(.*\)<.*/\1/')
middle=$((left + (WIDTH - 220) / 2)) # the block between the decks begins here
at_rest
xdotool mousemove $((middle + 170)) $((top + 34)) click 1
at_rest
xdotool mousemove $((middle + 18)) $((top + 94)) click 1                                   # off
xdotool mousemove $((middle + 66)) $((top + 94)) click 1                                   # insert
xdotool mousemove $((middle + 152)) $((top + 122)) mousedown 1 mousemove_relative 0 -40 mouseup 1 # the parameter
at_rest
sleep "${KEPT_WITHIN:-2.2}" # the promise
kill -9 "${started[0]}"
until_true "the window of a killed program stays" is_gone '^Platterdex$'
slot | grep -q 'on="0" insert="1"' || fail "choices are lost: $(slot)"
[ "$(slot | sed 's/.*>\(.*\)<.*/\1/')" != "$state" ] || fail "the plug-in's state is lost: $(slot)"

# It comes back as it was, and ends soon when the system asks.
start
until_true "the state is not kept" has_state
before=$SECONDS
kill -TERM "${started[0]}"
wait "${started[0]}" || fail "SIGTERM ended it with $?"
[ $((SECONDS - before)) -le 60 ] || fail "SIGTERM took $((SECONDS - before)) seconds"
slot | grep -q 'on="0" insert="1"' || fail "choices are lost at the end: $(slot)"
echo "nothing was lost, nothing is left"
