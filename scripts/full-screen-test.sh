#!/usr/bin/env bash
# The application comes back in full screen where it was ended so, and Escape leaves it, for the next start as well.
# usage: scripts/full-screen-test.sh PROGRAM [FOLDER]    a picture of a failure is left in FOLDER
set -euo pipefail
if [ -z "${WINDOW_TEST_DISPLAY:-}" ]; then
    WINDOW_TEST_DISPLAY=own exec "$(dirname "$0")/on-display.sh" 1400x900 "$0" "$@"
fi
program=$(realpath "$1")
. "$(dirname "$0")/window-helpers.sh"
keep_pictures "${2:-$work/pictures}"
export JACK_NO_AUDIO_RESERVATION=1 JACK_DEFAULT_SERVER=platterdex-none-$$
preferences=$work/root/setup/preferences.txt

start() {
    "$program" --root "$work/root" >"$work/run.log" 2>&1 &
    process=$!
    started+=("$process")
    window=$(window_of '^Platterdex$')
}
end() {
    kill -TERM "$process"
    wait "$process" || fail "SIGTERM ends it with $?"
    started=()
}
fills_screen() { xdotool getwindowgeometry "$window" | grep -q 'Geometry: 1400x900'; }
leaves_by_escape() {
    fills_screen || return 0
    xdotool windowfocus "$window" key Escape
    return 1
}

mkdir -p "$(dirname "$preferences")"
echo full_screen=1 >"$preferences"
for time in first second; do
    start
    until_true "it does not fill the screen, $time start" fills_screen
    find_window "$window"
    [ "$left,$top" = 0,0 ] || fail "full screen keeps a frame"
    [ "$time" = second ] || end
done
until_true "Escape does not leave the full screen" leaves_by_escape
find_window "$window"
! fills_screen || fail "the full screen comes back"
end
grep -qx full_screen=0 "$preferences" || fail "the preferences still say full screen"
start
find_window "$window"
! fills_screen || fail "it fills the screen after Escape has left it"
end
