#!/usr/bin/env bash
# Kills a program that writes to a library, many times, and looks each time at what is left.
# usage: scripts/kill-library.sh [ROUNDS]     200 if none is given; needs a release build
set -euo pipefail
cd "$(dirname "$0")/.."
PX_KILL_ROUNDS="${1:-200}" exec build/release/tests/library/test_library_db --gtest_filter='KilledLibrary.*'
