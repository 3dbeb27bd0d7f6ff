#!/usr/bin/env bash
# Usage: jalv.sh PLUGINS. The LV2 runs as a JACK client of a private server without a sound card.
source "$(dirname "$0")/hosts.sh"

need jalv
need jackd
need jack_lsp
mkdir "$work/lv2"
mv "$plugins/Platterdex.lv2" "$work/lv2/"
export JACK_DEFAULT_SERVER="platterdex-test-$$" JACK_NO_START_SERVER=1 LV2_PATH="$work/lv2"

jackd -n "$JACK_DEFAULT_SERVER" -r -d dummy -r 48000 -p 256 -C 10 -P 14 > "$work/jackd" 2>&1 &
started+=($!)
timeout 30 jack_wait -w > /dev/null 2>&1

mkfifo "$work/commands"
jalv -n platterdex "urn:tonal-yard:platterdex2" < "$work/commands" > "$work/output" 2>&1 &
host=$!
started+=("$host")
exec 3> "$work/commands"

# until_true COMMAND...: waits up to 20 s for the command to succeed, as long as the host lives.
until_true()
{
    local end=$((SECONDS + 20))
    until "$@" > /dev/null 2>&1; do
        if [ $SECONDS -ge $end ] || ! kill -0 "$host" 2> /dev/null; then
            echo "FAILED: never came true: $*"
            head -n 40 "$work/output"
            exit 1
        fi
        sleep 0.1
    done
}
ports() { jack_lsp 2> /dev/null | grep -c "^platterdex:audio_$1_"; }
has_ports() { [ "$(ports in)" -eq 10 ] && [ "$(ports out)" -eq 14 ]; }
until_true has_ports

echo "controls" >&3
until_true grep -q '_c465 = ' "$work/output"
echo "$(ports in) inputs, $(ports out) outputs"

exec 3>&-
kill -INT "$host"
wait "$host"
expect 'Plugin: *urn:tonal-yard:platterdex2' "$work/output"
controls=$(grep -c '_c[0-9]* = ' "$work/output")
echo "$controls controls, closed"
[ "$controls" -eq 465 ]
