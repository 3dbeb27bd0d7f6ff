#!/usr/bin/env bash
# Runs the tests under sanitizers: address and undefined behaviour (asan), data races (tsan), or both in turn.
# usage: scripts/sanitize.sh [asan|tsan] [CTEST-OPTION...]
set -euo pipefail
cd "$(dirname "$0")/.."
sanitizer=${1:-}
case "$sanitizer" in
    asan | tsan) shift ;;
    *) sanitizer= ;;
esac
[ "$sanitizer" = tsan ] || ./test.sh asan "$@"
# The demo tracks are rendered by one thread and take minutes under this one.
[ "$sanitizer" = asan ] || ./test.sh tsan --exclude-regex '^Demo' "$@"
