#!/usr/bin/env bash
# The VST 2 binary exports its two entries and nothing else, and leaves no symbol of ours open.
source "$(dirname "$0")/hosts.sh"

exported=$(nm -D --defined-only "$plugins/Platterdex.so" | awk '{ print $3 }' | LC_ALL=C sort | tr '\n' ' ')
echo "exports: $exported"
[ "$exported" = "VSTPluginMain main " ]
