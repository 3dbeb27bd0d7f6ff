#!/usr/bin/env bash
# Runs the tests under sanitizers: address and undefined behaviour (asan), data races (tsan), or both in turn.
# usage: scripts/sanitize.sh [asan|tsan] [CTEST-OPTION...]
set -euo pipefail
cd "$(dirname "$0")/.."
case "${1:-}" in
    asan | tsan) exec ./test.sh "$@" ;;
esac
./test.sh asan "$@"
./test.sh tsan "$@"
