#!/usr/bin/env bash
# Runs a command on a display of its own, with a window manager, and ends with its code.
# usage: scripts/on-display.sh WIDTHxHEIGHT COMMAND...
set -euo pipefail
size=$1
shift
display=$(mktemp -d)
started=()
clean_up() {
    for process in "${started[@]}"; do kill "$process" 2>/dev/null || true; done
    wait 2>/dev/null || true
    rm -rf "$display"
}
trap clean_up EXIT

mkfifo "$display/number"
Xvfb -displayfd 3 -screen 0 "${size}x24" 3>"$display/number" >"$display/xvfb.log" 2>&1 &
started+=($!)
read -r number <"$display/number"
export DISPLAY=:$number
openbox --sm-disable >"$display/openbox.log" 2>&1 &
started+=($!)
export WINDOW_MANAGER=$!
# A window that opens before its manager is there is moved when that comes.
deadline=$((SECONDS + 60))
until xdotool get_num_desktops >/dev/null 2>&1; do
    [ $SECONDS -lt $deadline ] || { echo "FAILED: the window manager does not start" >&2; exit 1; }
    sleep 0.1
done
"$@"
