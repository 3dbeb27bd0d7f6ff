#pragma once

#include "engine/commands/MixerCommands.h"

/** Automix; its fades are the mixer's. */
namespace CommandTable
{
// clang-format off
constexpr CommandFamily automixFamilies[] {
    { 435, 1, 0, 1, 0, "Automix On/Off", "AUTOMIX_ON_OFF", K::trigger, S::trigger,
      [] (CPlatterdex& e, const CommandCall&) { e.listeners.post (EngineEvent::toggleAutomix, 0); }, readFlag<&EngineSettings::automixOn>, 0, "toggles", "the flag" },
};
// clang-format on
}
