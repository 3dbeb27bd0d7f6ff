#!/usr/bin/env bash
# The LV2's descriptions are as the standard asks for, but for the hint that a parameter is a switch, which it knows for
# ports only; and nothing has an empty name.
source "$(dirname "$0")/hosts.sh"
need sord_validate
need lv2_validate

lv2_validate "$plugins"/Platterdex.lv2/*.ttl >"$work/said" 2>&1 || true
expect '^Found [0-9]+ errors among' "$work/said"
faults=$(grep '^error' "$work/said" | grep -v 'domain <http://lv2plug.in/ns/lv2core#Port>' || true)
faults+=$(grep -h 'rdfs:label ""' "$plugins"/Platterdex.lv2/*.ttl || true)
[ -z "$faults" ] || { echo "FAILED: $faults"; exit 1; }
