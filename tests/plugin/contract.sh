#!/usr/bin/env bash
# Usage: contract.sh PLUGINS RAW_HOST
source "$(dirname "$0")/hosts.sh"

"$2" "$plugins/Platterdex.so"
