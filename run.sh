#!/usr/bin/env bash
# Builds the application and starts it. Where there is no display and nothing else is asked for, it performs the demo
# set into demo.wav instead.
# usage: ./run.sh [ARGUMENT...]    what the program takes; see ./run.sh --help
#        ./run.sh --mix [DIR]           mixes a folder, or the demo tracks, into mix.wav; with more arguments it is the verb "mix"
set -euo pipefail
here=$(cd "$(dirname "$0")" && pwd)
build=$here/build/run
program=$build/bin/platterdex
# Tracks, settings and recordings outlive a cleaned build folder.
export PLATTERDEX_ROOT=${PLATTERDEX_ROOT:-$HOME/.config/Platterdex2}

"$here/scripts/install-packages.sh" build >&2
mkdir -p "$build"
echo "Building..." >&2
if ! { cmake -S "$here" --preset release -B "$build" -DPX_BUILD_TESTS=OFF -DPX_BUILD_BENCH=OFF &&
    cmake --build "$build" --target platterdex; } >"$build/build.log" 2>&1; then
    tail -n 30 "$build/build.log" >&2
    echo "The build failed; all of it is in $build/build.log." >&2
    exit 1
fi

tracks=$build/demo-tracks
if [ "${1:-}" = --mix ]; then
    shift
    [[ $# -lt 2 && "${1:-}" != -* ]] || exec "$program" mix "$@"
    if [ $# -eq 0 ]; then
        echo "No folder was named: mixing the demo tracks." >&2
        "$program" demo-tracks "$tracks" >/dev/null
        set -- "$tracks"
    fi
    "$program" mix "$1" --out "$here/mix.wav" --report "$here/mix.csv"
    echo "The mix is in $here/mix.wav, what was played when in $here/mix.csv."
    exit
fi

status=0
"$program" "$@" || status=$?
if [ $status -ne 3 ] || [ $# -ne 0 ]; then
    exit $status
fi

echo "There is no display: performing the demo set instead." >&2
out=$here/demo.wav
"$program" demo-tracks "$tracks" >/dev/null
cp "$here/docs/sets/demo.txt" "$tracks/demo.txt"
"$program" perform "$tracks/demo.txt" --out "$out"
echo "The performance is in $out."
