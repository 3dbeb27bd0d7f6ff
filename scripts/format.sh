#!/usr/bin/env bash
# Formats our own C++ sources in place, not the scripts for controllers; with --check, fails where that would change something.
set -euo pipefail
cd "$(dirname "$0")/.."
mode=(-i)
[ "${1:-}" = --check ] && mode=(--dry-run --Werror)
git ls-files -z -- '*.cpp' '*.h' '*.c' ':!resources' ':!fuzz/seeds' | xargs -0 -r clang-format "${mode[@]}"
