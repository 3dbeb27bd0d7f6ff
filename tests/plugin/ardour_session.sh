#!/usr/bin/env bash
# Usage: ardour_session.sh PLUGINS. A session of Ardour on its dummy backend plays through the VST 2.
source "$(dirname "$0")/hosts.sh"

need ardour7-lua
need /usr/lib/ardour7/ardour-vst-scanner
mkdir "$work/vst2"
mv "$plugins/Platterdex.so" "$work/vst2/"
[ ! -e "$plugins/adec.so" ] || mv "$plugins/adec.so" "$work/vst2/"
LD_LIBRARY_PATH=/usr/lib/ardour7 /usr/lib/ardour7/ardour-vst-scanner -f "$work/vst2/Platterdex.so" > /dev/null 2>&1
# Ardour believes a scan only if the plug-in is older by whole seconds.
touch -d '1 minute ago' "$work/vst2/Platterdex.so"

LXVST_PATH="$work/vst2" SESSION="$work/session" FORMAT=LXVST FIRST=0 \
    timeout 120 ardour7-lua "$(dirname "$0")/ardour_session.lua" > "$work/output" 2>&1 < /dev/null || {
    echo "FAILED: the session ended with $?"
    cat "$work/output"
    exit 1
}
expect '^name Platterdex, maker Tonal-Yard$' "$work/output"
expect '^channels 10 14$' "$work/output"
expect '^parameters 465$' "$work/output"
expect '^parameter 1 is Play/Pause A$' "$work/output"
expect '^parameter 277 is Crossfader$' "$work/output"
expect '^parameter 464 is Cue/Play D$' "$work/output"
expect '^played half a second: true$' "$work/output"
expect '^crossfader 0.25$' "$work/output"
expect '^key lock 1.00 0.00 1.00 0.00 1.00$' "$work/output"
expect '^stopped: true$' "$work/output"
expect '^closed$' "$work/output"
cat "$work/output"
