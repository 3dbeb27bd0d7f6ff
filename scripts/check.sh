#!/usr/bin/env bash
# Looks for faults without running anything: formatting, includes against the floors, language, texts without a translation,
# calls of the audio thread that clang can't follow, and clang-tidy over the sources that differ from the branch origin/main, or
# else from the last commit.
# usage: scripts/check.sh
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/install-packages.sh build develop
status=0
check() { echo "Checking: $*"; "$@" || status=1; }

check scripts/format.sh --check
check scripts/include-graph --check
check scripts/check-style
check scripts/check-audio-thread
check scripts/check-texts
check scripts/texts --check

base=$(git merge-base HEAD origin/main 2>/dev/null || git rev-parse HEAD)
[ "$base" != "$(git rev-parse HEAD)" ] || base=$(git rev-parse --verify -q HEAD~1 || git rev-parse HEAD)
mapfile -t changed < <(git diff --name-only --diff-filter=d "$base" -- 'src/*.cpp')
[ ${#changed[@]} -eq 0 ] || check scripts/lint.sh "${changed[@]}"
exit $status
