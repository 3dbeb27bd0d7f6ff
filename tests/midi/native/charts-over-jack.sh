#!/usr/bin/env bash
# Plays the charts of controllers through a real JACK MIDI port, and prints what is covered.
# usage: charts-over-jack.sh TEST_PROGRAM [MODEL...]      without models: all that have a chart
set -euo pipefail
if ! command -v jackd >/dev/null; then
    echo "SKIPPED: there is no jackd (package jackd2)"
    exit 77
fi
program=$1
shift
export JACK_NO_AUDIO_RESERVATION=1 JACK_NO_START_SERVER=1 PX_OVER_JACK=1
log=$(mktemp)
results=$(mktemp)
server=

# Ends the server, and removes what clients that ended without a farewell have left of it.
stop_server() {
    [ -n "$server" ] || return 0
    kill "$server" 2>/dev/null || true
    for _ in $(seq 50); do
        kill -0 "$server" 2>/dev/null || break
        sleep 0.1
    done
    kill -9 "$server" 2>/dev/null || true
    wait "$server" 2>/dev/null || true
    server=
    rm -f "/dev/shm/jack_sem.$(id -u)_${JACK_DEFAULT_SERVER}_"* "/dev/shm/jack_${JACK_DEFAULT_SERVER}_$(id -u)_"*
}
clean_up() {
    stop_server
    rm -f "$log"* "$results"
}
trap clean_up EXIT
trap 'exit 1' INT TERM

# The tests of the wanted models, each with a process of its own and with it a fresh client.
wanted_tests() {
    local models=" $* "
    "$program" --gtest_list_tests --gtest_filter='*ChartOf*' | while read -r test _ _ _ number; do
        case "$test" in Every*) [ $# -gt 0 ] && [[ "$models" != *" $number "* ]] || echo "$test" ;; esac
    done
}

play() {
    local status=0 test tests
    tests=$(wanted_tests "$@")
    for test in $tests; do
        timeout -k 5 900 "$program" --gtest_filter="*ChartOf.$test" >"$log.out" 2>&1 || status=1
        grep -E '^ ?[0-9]+ [^ ]+ .*inputs|^always|Failure|FAILED|^(in|out) ' "$log.out" || true
        grep -E '^all models|^ *[0-9]+ rows: ' "$log.out" >>"$results" || status=1
    done
    return $status
}

add_up() {
    awk '
        / rows: / { number = $1; sub (/^ *[0-9]+ rows: /, ""); reasons[$0] += number; next }
        { fields = 0; ++models; for (i = 1; i <= NF; ++i) if ($i ~ /^[0-9]+$/) sum[++fields] += $i }
        END {
            printf "%d models: inputs %d acted, %d as their names say, %d not served; ", models, sum[1], sum[2], sum[3]
            printf "outputs %d seen, %d true by their names, %d by their controls, %d lit and dark, %d steady, %d not served\n",
                sum[4], sum[5], sum[6], sum[7], sum[8], sum[9]
            for (reason in reasons) printf "%5d rows: %s\n", reasons[reason], reason
        }' "$results"
}

# Synchronous, so that a busy machine makes JACK slow instead of losing messages. JACK remembers eight names, also of servers
# that were killed: one of a few names is taken again.
for number in 0 1 2 3 4 5 6 7; do
    export JACK_DEFAULT_SERVER=px-$number
    jackd -n "$JACK_DEFAULT_SERVER" -S -R -P 10 -t 5000 -d dummy -r 48000 -p 32 -C 2 -P 2 >"$log" 2>&1 &
    server=$!
    for try in $(seq 50); do
        sleep 0.1
        kill -0 "$server" 2>/dev/null || break # another server has the name
        [ "$try" -ge 20 ] || continue
        if jack_lsp -s "$JACK_DEFAULT_SERVER" >/dev/null 2>&1; then
            play "$@" && status=0 || status=$?
            add_up
            exit "$status"
        fi
    done
    if kill -0 "$server" 2>/dev/null; then
        stop_server
    else
        wait "$server" 2>/dev/null || true
        server=
    fi
done
echo "FAILED: no JACK server starts" >&2
exit 1
