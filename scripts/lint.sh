#!/usr/bin/env bash
# Looks for faults without running anything: formatting, clang-tidy over the sources given (all of src/ by default).
# usage: scripts/lint.sh [FILE.cpp...]     needs a configured build/release (./test.sh makes it)
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/install-packages.sh develop
scripts/format.sh --check
files=("$@")
[ ${#files[@]} -gt 0 ] || mapfile -t files < <(git ls-files -- 'src/*.cpp')
# The database is the compiler's; clang knows other warnings and not all of its options.
mkdir -p build/lint
sed 's/ -fvect-cost-model=dynamic//g' build/release/compile_commands.json >build/lint/compile_commands.json
printf '%s\0' "${files[@]}" \
    | xargs -0 -n 4 -P "$(nproc)" clang-tidy -p build/lint --quiet \
        --extra-arg=-Wno-unknown-warning-option --extra-arg=-Wno-error 2>/dev/null
