#pragma once

#include "engine/commands/AutomixRows.h"
#include "engine/commands/BrowserRows.h"
#include "engine/commands/ChannelRows.h"
#include "engine/commands/CueRows.h"
#include "engine/commands/EffectRows.h"
#include "engine/commands/GridRows.h"
#include "engine/commands/InstrumentRows.h"
#include "engine/commands/LoopRows.h"
#include "engine/commands/MeterRows.h"
#include "engine/commands/MixerRows.h"
#include "engine/commands/PlayRows.h"
#include "engine/commands/PluginRows.h"
#include "engine/commands/SamplerRows.h"
#include "engine/commands/TempoRows.h"
#include "engine/commands/TimecodeRows.h"

#include <span>

namespace CommandTable
{
/** The rows of all commands and meters. */
constexpr std::span<const CommandRow> parts[] { playRows,       tempoRows,   cueRows,     loopRows,
                                                gridRows,       channelRows, mixerRows,   effectRows,
                                                instrumentRows, automixRows, browserRows, samplerRows,
                                                timecodeRows,   meterRows,   pluginRows };
}
