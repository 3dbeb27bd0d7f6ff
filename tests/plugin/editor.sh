#!/usr/bin/env bash
# Usage: editor.sh PLUGINS EDITOR_HOST. The plug-in's window in a plain host, on a display of its own.
source "$(dirname "$0")/hosts.sh"

need Xvfb
need xdotool
"$(dirname "$0")/../../scripts/on-display.sh" 1400x900 timeout 250 "$2" "$plugins/Platterdex.so" 10
