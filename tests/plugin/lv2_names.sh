#!/usr/bin/env bash
# Usage: lv2_names.sh PLUGINS RAW_HOST. The LV2's parameters are the commands, in order, each under a name of its own.
source "$(dirname "$0")/hosts.sh"

description="$plugins/Platterdex.lv2/dsp.ttl"
"$2" --names "$plugins/Platterdex.so" > "$work/commands"
# In VST 2 a name has 31 characters at most; the last word stays.
cut_names() { awk 'length($0) > 31 { $0 = substr($0, 1, 31 - 1 - length($NF)) " " $NF } 1'; }
sed -n 's/^\trdfs:label "\(.*\)" ;$/\1/p' "$description" | head -n 465 | cut_names > "$work/labels"
diff "$work/commands" "$work/labels"

identifiers=$(grep -B1 '^	a lv2:Parameter ;$' "$description" | grep '^plug:' | sort -u | wc -l)
echo "$(wc -l < "$work/labels") parameters, $identifiers identifiers"
[ "$identifiers" -eq 465 ]
