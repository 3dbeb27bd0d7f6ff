#pragma once

#include "deck/DeckWorld.h"
#include "mixer/Equaliser.h"

/** A deck's channel: equaliser, cue tap, and the gain of its fader and the crossfader, each in place on the deck's pair.
    The state is the deck's own. Audio thread, under the callback lock that the host holds. */
namespace ChannelStrip
{
/** Values of a deck's `mixOverride`, which stands in for the crossfader. */
enum MixOverride : int8_t
{
    none,
    punch, ///< full level
    cut    ///< silence
};

/** A pair of channels of the running block. */
struct Pair
{
    float *left, *right;
    int frames;
};

/** Runs the deck's equaliser at its knobs and kills. With all bands killed the pair is exact silence. */
PX_AUDIO_THREAD void equalise (const DeckPlayer&, Equaliser&, const Pair&, double sampleRate) noexcept;

/** Adds the pair to the monitor at the deck's gain, and raises the deck's `peak`, if its cue (PFL) is on. */
PX_AUDIO_THREAD void tapPfl (const DeckSetup&, DeckPlayer&, const Pair&, const Pair& monitor) noexcept;

/** The gain that the strip moves to: fader, autogain, gain and crossfader; Punch and Cut stand in for the crossfader. */
PX_AUDIO_THREAD double targetGain (const EngineSettings&, const DeckPlayer&) noexcept;

/** Applies the deck's gain, which follows its target over 5 ms, and keeps the last products for the level display.
    @param smoothing   the block's coefficient for 5 ms */
PX_AUDIO_THREAD void applyFader (DeckPlayer&, const Pair&, double target, double smoothing) noexcept;
}
