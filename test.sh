#!/usr/bin/env bash
# Installs what is missing, builds everything and runs every test.
# usage: ./test.sh [PRESET] [CTEST-OPTION...]     PRESET: release (default), debug, asan or tsan
set -euo pipefail
export LC_ALL=C.UTF-8 # the texts that tests compare are English
cd "$(dirname "$0")"

preset=release
case "${1:-}" in
    release | debug | asan | tsan) preset=$1; shift ;;
esac

scripts/install-packages.sh build test
mkdir -p "build/$preset"
log="build/$preset/build.log"
echo "Building ($preset) ..."
if ! { cmake --preset "$preset" && cmake --build --preset "$preset"; } >"$log" 2>&1; then
    grep -E 'error|Error|FAILED' "$log" | head -n 40 >&2 || true
    tail -n 20 "$log" >&2
    echo "The build failed; all of its output is in $log." >&2
    exit 1
fi
ctest --preset "$preset" --parallel "$(nproc)" "$@"
