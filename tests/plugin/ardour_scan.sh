#!/usr/bin/env bash
# Usage: ardour_scan.sh PLUGINS. Ardour's own scanners load the VST 2 and the VST3 and describe them.
source "$(dirname "$0")/hosts.sh"

scanners=/usr/lib/ardour7
need "$scanners/ardour-vst-scanner"
need "$scanners/ardour-vst3-scanner"
export LD_LIBRARY_PATH="$scanners"

"$scanners/ardour-vst-scanner" -f -v "$plugins/Platterdex.so" > "$work/vst2" 2>&1
expect 'Found Plugin: .* Platterdex$' "$work/vst2"
expect '<VST2Info .*name="Platterdex" creator="Tonal-Yard" category="Effect" .*n_inputs="10" n_outputs="14"' "$work/vst2"
expect 'n_midi_inputs="0" n_midi_outputs="0" is_instrument="0" can_process_replace="1" has_editor="1"' "$work/vst2"

"$scanners/ardour-vst3-scanner" -f -v "$plugins/Platterdex.vst3" > "$work/vst3" 2>&1
expect '<VST3Info .*name="Platterdex" vendor="Tonal-Yard" category="Fx"' "$work/vst3"
expect 'n_inputs="2" n_outputs="2" n_aux_inputs="8" n_aux_outputs="12" n_midi_inputs="0"' "$work/vst3"

grep -h 'Info .*name=' "$work/vst2" "$work/vst3"
