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

# Tests at a display share it with programs of others (window manager, JACK, hosts, a keyboard made of X events). One that fails
# is run once more, alone and with all it prints; any other test that fails, and one that fails twice, is a failure.
failed=build/$preset/Testing/Temporary/LastTestsFailed.log
rm -f "$failed"
if ! ctest --preset "$preset" --parallel "$(nproc)" "$@"; then
    [ -s "$failed" ] && ! grep -vE '^[0-9]+:(Window|PluginHosts|Surface|Controllers)\.' "$failed" || exit 1
    cut -d: -f2 "$failed" | xargs echo "Repeating, one at a time:"
    ctest --preset "$preset" --parallel 1 --rerun-failed --verbose
fi
