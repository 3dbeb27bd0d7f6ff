#pragma once

#include "engine/commands/CommandHelpers.h"

/** The commands whose part of the system does not exist yet: their writes do nothing and their reads give the neutral
    value. Numbers, names and kinds are final. A family moves from here to a table of its part; this list is
    empty when the system is complete. */
namespace CommandTable
{
// clang-format off
constexpr CommandFamily unbuiltFamilies[] {
    { 153, 1, 0, 4, 1, "DVS Absolute Mode {d}", "DVS_ABSOLUTE_MODE_{d}", K::trigger, S::trigger, nullptr, nullptr, 0, "timecode on, absolute", "1 if so" },
    { 157, 1, 0, 4, 1, "DVS Relative Mode {d}", "DVS_RELATIVE_MODE_{d}", K::trigger, S::trigger, nullptr, nullptr, 0, "timecode on, relative", "1 if so" },
    { 161, 1, 0, 4, 1, "DVS Internal Mode {d}", "DVS_INTERNAL_MODE_{d}", K::trigger, S::trigger, nullptr, nullptr, 0, "timecode off, pitch to its centre", "1 if so" },
    { 173, 2, 1, 4, 2, "Smartknob #{n} {d}", "SMARTKNOB_{n}_{d}", K::value, S::continuous, nullptr, nullptr, 0, "the knob, 0 to 1", "the value" },
    { 181, 2, 1, 4, 2, "Smartknob #{n} On {d}", "SMARTKNOB_{n}_ON_{d}", K::trigger, S::trigger, nullptr, nullptr, 0, "toggles", "the flag" },
    { 354, 1, 0, 1, 0, "Sampler Master Volume", "SAMPLER_MASTER_VOLUME", K::value, S::continuous, nullptr, nullptr, 0.5, "the volume, 0 to 1", "the value" },
    { 355, 1, 0, 1, 0, "Sampler Master Volume Reset", "SAMPLER_MASTER_VOLUME_RESET", K::trigger, S::trigger, nullptr, nullptr, 0.5, "the volume to 0.5", "the value" },
    { 356, 1, 0, 1, 0, "Sampler PFL", "SAMPLER_PFL", K::trigger, S::trigger, nullptr, nullptr, 0, "toggles", "the flag" },
    { 357, 1, 0, 1, 0, "Sampler Preview Play/Stop", "SAMPLER_PREVIEW_PLAY_STOP", K::trigger, S::trigger, nullptr, nullptr, 0, "plays or stops the preview voice", "1 while it plays" },
    { 358, 1, 0, 1, 0, "Sampler Record Loop", "SAMPLER_RECORD_LOOP", K::trigger, S::trigger, nullptr, nullptr, 0, "records a loop", "1 while it records" },
    { 359, 1, 0, 1, 0, "Sampler Loop Size", "SAMPLER_LOOP_SIZE", K::relative, S::stepped, nullptr, nullptr, 0, "steps the size", "the size" },
    { 360, 1, 0, 1, 0, "Sampler Sync", "SAMPLER_SYNC", K::trigger, S::trigger, nullptr, nullptr, 0, "toggles", "the flag" },
    { 361, 16, 1, 1, 0, "Sampler Play Pad #{n}", "SAMPLER_PLAY_PAD_{n}", K::state, S::held, nullptr, nullptr, 0, "plays while held", "1 while playing" },
    { 377, 8, 1, 4, 8, "Slicegate Pad {d}.{n}", "SLICEGATE_PAD_{d}_{n}", K::trigger, S::trigger, nullptr, nullptr, 0, "toggles the pad", "1 if active" },
    { 437, 1, 0, 4, 1, "VST Dry/Wet Slot {d}", "VST_DRY_WET_SLOT_{d}", K::value, S::continuous, nullptr, nullptr, 0, "dry 0 to wet 1", "the value" },
    { 441, 1, 0, 4, 1, "VST On Slot {d}", "VST_ON_SLOT_{d}", K::trigger, S::trigger, nullptr, nullptr, 0, "toggles", "the flag" },
    { 445, 1, 0, 4, 1, "VST Set Insert/Send Signal Routing Slot {d}", "VST_INSERT_SEND_SIGNAL_ROUTING_SLOT_{d}", K::trigger, S::trigger, nullptr, nullptr, 0, "toggles", "the flag" },
    { 449, 1, 0, 4, 1, "VST Param 1 Slot {d}", "VST_PARAM_1_SLOT_{d}", K::value, S::continuous, nullptr, nullptr, 0, "the parameter, 0 to 1", "the value" },
    { 453, 1, 0, 4, 1, "VST Param 2 Slot {d}", "VST_PARAM_2_SLOT_{d}", K::value, S::continuous, nullptr, nullptr, 0, "the parameter, 0 to 1", "the value" },
    { 435, 1, 0, 1, 0, "Automix On/Off", "AUTOMIX_ON_OFF", K::trigger, S::trigger, nullptr, nullptr, 0, "toggles", "the flag" },
};
// clang-format on
}
