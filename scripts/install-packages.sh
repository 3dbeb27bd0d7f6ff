#!/usr/bin/env bash
# Installs the packages of the named groups of packages.txt that are not there yet.
# usage: scripts/install-packages.sh GROUP...
set -euo pipefail
cd "$(dirname "$0")/.."

wanted=()
for group in "$@"; do
    mapfile -t names < <(awk -v group="[$group]" '/^\[/ { on = ($0 == group) } on && /^[a-z0-9]/ { print $1 }' packages.txt)
    wanted+=("${names[@]}")
done

missing=()
for name in "${wanted[@]}"; do
    status=$(dpkg-query -W -f '${db:Status-Status}' "$name" 2>/dev/null || true)
    [ "$status" = installed ] || missing+=("$name")
done
[ ${#missing[@]} -eq 0 ] && exit 0

as_root=()
if [ "$(id -u)" -ne 0 ]; then
    command -v sudo >/dev/null || { echo "These packages are missing and need root to install: ${missing[*]}" >&2; exit 1; }
    as_root=(sudo)
fi
echo "Installing: ${missing[*]}"
"${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get update -qq
"${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
