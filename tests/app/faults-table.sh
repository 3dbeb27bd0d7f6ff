#!/usr/bin/env bash
# usage: faults-table.sh BUILD. Every row of docs/faults.md names tests, and CTest knows each of them.
set -euo pipefail
cd "$(dirname "$0")/../.."
tests=$(ctest --test-dir "$1" -N | sed -n 's/^ *Test *#[0-9]*: //; s/  *#.*//; /\./p')
rows=0 failed=0
while read -r row; do
    rows=$((rows + 1))
    mapfile -t names < <(awk -F'|' '{ print $(NF - 1) }' <<<"$row" | grep -o '`[^`]*`' | tr -d '`')
    [ ${#names[@]} -gt 0 ] || { echo "names no test: $row" >&2; failed=1; }
    for name in "${names[@]}"; do
        # A suite of parameters has a prefix, and a number behind the name.
        grep -qE "^([A-Za-z]+/)?${name//./\\.}(/[A-Za-z0-9]+)?\$" <<<"$tests" || { echo "no such test: $name" >&2; failed=1; }
    done
done < <(sed -n '/^|---/,/^$/p' docs/faults.md | sed '1d;/^$/d')
[ $rows -gt 15 ] || { echo "only $rows rows" >&2; exit 1; }
[ $failed = 0 ] && echo "$rows rows"
