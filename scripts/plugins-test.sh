#!/usr/bin/env bash
# Scans plug-ins from the window on a display of its own: one that takes 20 seconds has the user asked and comes in late, one
# that takes longer is skipped by the button, one that crashes is marked; then opens the windows of a plug-in.
# usage: scripts/plugins-test.sh PROGRAM PLUGINS [FOLDER]   PLUGINS: the folder of the tests' plug-ins; pictures are left in FOLDER
set -euo pipefail
if [ -z "${PLUGINS_TEST_DISPLAY:-}" ]; then
    PLUGINS_TEST_DISPLAY=own exec "$(dirname "$0")/on-display.sh" 1400x900 "$0" "$@"
fi
program=$(realpath "$1")
plugins=$(realpath "$2")
. "$(dirname "$0")/window-helpers.sh"
keep_pictures "${3:-$work/pictures}"

root=$work/root
list=$root/setup/vst_plugins_list.xml
mkdir -p "$work/known" "$root/vst_plugins"
cp "$plugins/gain.so" "$work/known"
"$program" plugins scan "$work/known" --root "$root" >"$work/scan.log"
cp "$plugins"/{crash_scan,delay,hang_20,hang_200,nothing}.so "$root/vst_plugins"
echo '<vstSlots><slot deck="A" plugin="gain" on="1" insert="0" dryWet="0.5" param1="0" param2="1"/></vstSlots>' \
    >"$root/setup/vst_slots.xml"
"$program" --root "$root" >"$work/app.log" 2>&1 &
started+=($!)
find_window "$(window_of '^Platterdex$')"
middle=$((left + (WIDTH - 220) / 2)) # the block between the decks begins here
until_true "the slot is not restored" grep -q 'param1="0".*>.\+</slot>' "$root/setup/vst_slots.xml"
at_rest
xdotool mousemove $((middle + 170)) $((top + 34)) click 1
at_rest
picture slot

# The plug-in's window by its button: one without an editor of its own shows the list of its parameters.
xdotool mousemove $((middle + 190)) $((top + 64)) click 1
window_of '^gain - Deck A$' >/dev/null
at_rest
picture editor
close_window '^gain - Deck A$'
until_true "the plug-in's window stays" is_gone '^gain - Deck A$'

# The page by the last line of the slot's menu.
page_opens() {
    open_menu $((middle + 80)) $((top + 64))
    picture menu
    choose Up Return
    comes is_shown '^VST Plugins$'
}
until_true "no page" page_opens
find_window "$(window_of '^VST Plugins$')"
xdotool mousemove $((left + 314)) $((top + 72)) click 1 # not the system's folders
at_rest
xdotool mousemove $((left + 68)) $((top + 72)) click 1
at_rest
picture scanning
is_in_list() { grep -q "<PLUGIN[^>]*name=\"$1\"[^>]*$2" "$list"; }
sleep 12
picture hanging
# The offer is not taken: the answer comes after all.
until_true "the late plug-in does not come in" is_in_list hang_20 'verified=""'
find_window "$(window_of '^VST Plugins$')"
# The button comes with the offer, after ten seconds without an answer.
is_skipped() {
    sleep 6
    picture hanging-on
    xdotool mousemove $((left + 440)) $((top + 328)) click 1
    comes is_in_list hang_200 FAILED
}
until_true "the button skips nothing" is_skipped
until_true "the plug-in that crashes is not marked" is_in_list crash_scan CRASHED
at_rest
xdotool mousemove $((left + 40)) $((top + 178)) click 1
at_rest
picture scanned
kill -0 "${started[0]}" || fail "the application is gone"
kill -TERM "${started[0]}"
wait "${started[0]}" || fail "SIGTERM ended it with $?"
echo "scanned, skipped and marked"
