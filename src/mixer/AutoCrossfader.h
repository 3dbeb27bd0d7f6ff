#pragma once

#include "settings/EngineSettings.h"
#include "support/AudioThread.h"

/** The crossfader that moves by itself, as long as the setting `automixFadeSeconds` from end to end. */
namespace AutoCrossfader
{
/** Values of the setting `autoFadeState`. */
enum State : int8_t
{
    toLeft,
    toRight,
    idle
};

/** Moves a running fade on by a block's length. Audio thread, under the callback lock that the host holds.
    @returns the side that has been reached in this block, else `idle` */
PX_AUDIO_THREAD State advance (EngineSettings&, double milliseconds) noexcept;
}
