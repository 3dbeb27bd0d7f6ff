#!/usr/bin/env bash
# Plays the charts of all controllers through a real JACK MIDI port, and prints what is covered.
# usage: charts-over-jack.sh TEST_PROGRAM
set -euo pipefail
if ! command -v jackd >/dev/null; then
    echo "SKIPPED: there is no jackd (package jackd2)"
    exit 77
fi
export JACK_NO_AUDIO_RESERVATION=1 JACK_NO_START_SERVER=1 PX_OVER_JACK=1
log=$(mktemp)
results=$(mktemp)
server=
clean_up() {
    [ -z "$server" ] || kill "$server" 2>/dev/null || true
    wait 2>/dev/null || true
    rm -f "$log" "$results"
}
trap clean_up EXIT

# Each model has a process of its own, and with it a fresh client.
play_all() {
    local status=0 models number
    models=$("$1" --gtest_list_tests --gtest_filter='*ChartOf*' | grep -c GetParam)
    for ((number = 0; number < models; ++number)); do
        "$1" --gtest_filter="*ChartOf*/$number" >"$log.$number" 2>&1 || status=1
        grep -E '^ ?[0-9]+ [^ ]+ .*inputs|^  always|Failure|^(in|out) ' "$log.$number" || true
        grep -E '^all models|^ *[0-9]+ rows: ' "$log.$number" >>"$results" || status=1
        rm -f "$log.$number"
    done
    return $status
}

add_up() {
    awk '
        / rows: / { number = $1; sub (/^ *[0-9]+ rows: /, ""); reasons[$0] += number; next }
        { fields = 0; for (i = 1; i <= NF; ++i) if ($i ~ /^[0-9]+$/) sum[++fields] += $i }
        END {
            printf "all models: inputs %d acted, %d as their names say, %d not served; ", sum[1], sum[2], sum[3]
            printf "outputs %d seen, %d true by their names, %d by their controls, %d lit and dark, %d not served\n",
                sum[4], sum[5], sum[6], sum[7], sum[8]
            for (reason in reasons) printf "%5d rows: %s\n", reasons[reason], reason
        }' "$results"
}

# Synchronous, so that a busy machine makes JACK slow instead of losing messages. JACK remembers eight names, also of servers
# that were killed: one of a few names is taken again.
for number in 0 1 2 3 4 5 6 7; do
    export JACK_DEFAULT_SERVER=px-$number
    jackd -n "$JACK_DEFAULT_SERVER" -S -R -P 10 -t 5000 -d dummy -r 48000 -p 128 -C 2 -P 2 >"$log" 2>&1 &
    server=$!
    for try in $(seq 50); do
        sleep 0.1
        kill -0 "$server" 2>/dev/null || break # another server has the name
        [ "$try" -ge 20 ] || continue
        if jack_lsp -s "$JACK_DEFAULT_SERVER" >/dev/null 2>&1; then
            play_all "$1" && status=0 || status=$?
            add_up
            exit "$status"
        fi
    done
    wait "$server" 2>/dev/null || true
    server=
done
echo "FAILED: no JACK server starts" >&2
exit 1
