#!/usr/bin/env bash
# Runs clang-tidy over the sources given, all of src/ if none is.
# usage: scripts/lint.sh [FILE.cpp...]
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/install-packages.sh build develop
files=("$@")
[ ${#files[@]} -gt 0 ] || mapfile -t files < <(git ls-files -- 'src/*.cpp')
mkdir -p build/clang
if ! { cmake --preset clang && cmake --build --preset clang --target px_headers; } >build/clang/build.log 2>&1; then
    tail -n 20 build/clang/build.log >&2
    exit 1
fi
printf '%s\0' "${files[@]}" |
    xargs -0 -n 4 -P "$(nproc)" clang-tidy-22 -p build/clang --quiet --extra-arg=-Wno-function-effects 2>/dev/null
