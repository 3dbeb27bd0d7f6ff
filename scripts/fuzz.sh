#!/usr/bin/env bash
# Fuzzes one reader under the address and undefined-behaviour sanitizers. New inputs are kept in build/fuzz/corpus/NAME,
# what breaks the reader in build/fuzz/broken/NAME-*.
# usage: scripts/fuzz.sh NAME SECONDS     NAME: a folder of fuzz/seeds; --build alone only builds all of them
set -euo pipefail
cd "$(dirname "$0")/.."
[ $# -eq 2 ] || [ "${1:-}" = --build ] || { sed -n '2,4s/^# //p' "$0" >&2; exit 1; }
name=$1
seconds=${2:-0}

targets=()
for folder in fuzz/seeds/*/; do targets+=("fuzz_$(basename "$folder")"); done
[ "$name" = --build ] || { [ -d "fuzz/seeds/$name" ] || { echo "There are no seeds for $name." >&2; exit 1; }; targets=("fuzz_$name"); }

scripts/install-packages.sh build develop
mkdir -p build/fuzz
if ! { cmake --preset fuzz && cmake --build --preset fuzz --target "${targets[@]}"; } >build/fuzz/build.log 2>&1; then
    tail -n 30 build/fuzz/build.log >&2
    exit 1
fi
[ "$name" != --build ] || exit 0

mkdir -p "build/fuzz/corpus/$name" build/fuzz/broken
options=(-max_total_time="$seconds" -timeout=10 -rss_limit_mb=1024 -print_final_stats=1 "-artifact_prefix=build/fuzz/broken/$name-")
[ ! -f "fuzz/$name.dict" ] || options+=("-dict=fuzz/$name.dict")
export ASAN_OPTIONS=quarantine_size_mb=64${ASAN_OPTIONS:+:$ASAN_OPTIONS}
exec "build/fuzz/fuzz/fuzz_$name" "${options[@]}" "build/fuzz/corpus/$name" "fuzz/seeds/$name"
