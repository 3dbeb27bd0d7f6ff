#!/usr/bin/env bash
# Usage: ardour_session.sh PLUGINS VST2|VST3. A session of Ardour on its dummy backend plays through the plug-in.
source "$(dirname "$0")/hosts.sh"

need ardour7-lua
need /usr/lib/ardour7/ardour-vst-scanner
need /usr/lib/ardour7/ardour-vst3-scanner
root="$work/root"
mkdir "$root"
case "$2" in
    VST2)
        mv "$plugins/Platterdex.so" "$plugins/adec.so" "$root/"
        scanner=ardour-vst-scanner plugin="$root/Platterdex.so"
        export LXVST_PATH="$root" VST3_PATH=/nonexistent FORMAT=LXVST FIRST=1
        parameters=465
        ;;
    VST3)
        mv "$plugins/Platterdex.vst3" "$root/"
        scanner=ardour-vst3-scanner plugin="$root/Platterdex.vst3"
        export LXVST_PATH=/nonexistent VST3_PATH="$root" FORMAT=VST3 FIRST=0
        parameters=466 # JUCE adds a bypass
        ;;
esac
LD_LIBRARY_PATH=/usr/lib/ardour7 "/usr/lib/ardour7/$scanner" -f "$plugin" > "$work/scan" 2>&1
# Ardour believes a scan only if the plug-in is older by whole seconds.
find "$plugin" -exec touch -d '1 minute ago' {} +

SESSION="$work/session" timeout 120 ardour7-lua "$(dirname "$0")/ardour_session.lua" \
    > "$work/output" 2>&1 < /dev/null || {
    echo "FAILED: the session ended with $?"
    cat "$work/output"
    exit 1
}
expect '^name Platterdex, maker Tonal-Yard$' "$work/output"
expect '^channels 10 14$' "$work/output"
expect "^parameters $parameters\$" "$work/output"
expect '^parameter 1 is Play/Pause A$' "$work/output"
expect '^parameter 277 is Crossfader$' "$work/output"
expect '^parameter 464 is Cue/Play D$' "$work/output"
expect '^played half a second: true$' "$work/output"
expect '^key tuning 0.25$' "$work/output"
[ "$2" = VST3 ] || expect '^key lock 1.00 0.00 1.00 0.00 1.00$' "$work/output"
expect '^stopped: true$' "$work/output"
expect '^closed$' "$work/output"
cat "$work/output"

# "Snap" was pressed once, so it is on in the settings that the engine left, at the second byte of deck A's block.
snap=$(od -An -tu1 -j $((4 + 0x2d08 + 1)) -N 1 "$root/setup/platterdex.set")
echo "snap in the saved settings:$snap"
[ "$snap" -eq 1 ]
