#pragma once

#include "fx/EffectRack.h"
#include "mixer/Equaliser.h"
#include "mixer/Meters.h"
#include "mixer/StripKnobs.h"
#include "settings/EngineSettings.h"
#include "support/GainRamp.h"

#include <array>

/** A pair of channels of the running block. */
struct ChannelPair
{
    float *left, *right;
    int frames;
};

/** A deck's channel of the mixer: its knobs and what they work on. A block goes through the functions in their order, each
    in place on the deck's pair. Audio thread, under the callback lock that the host holds. */
class Channel
{
public:
    StripKnobs knobs;
    Equaliser equaliser;
    EffectRack effects;

    Meters meters;                       ///< what the gain makes of the channel, before its fader
    Relaxed<double> lastLeft, lastRight; ///< the last samples after the fader

    Channel() noexcept { cueTap.setSampleRate (44100.0); }

    /** In Hz, above 0. */
    PX_AUDIO_THREAD void setSampleRate (double) noexcept;

    /** Takes one side down as the balance leaves the middle, over 5 ms. @param smoothing   the block's coefficient for 5 ms */
    PX_AUDIO_THREAD void applyBalance (const ChannelPair&, double smoothing) noexcept;

    /** Runs the equaliser at its knobs and kills. With all bands killed the pair fades to exact silence. */
    PX_AUDIO_THREAD void equalise (const ChannelPair&, double sampleRate) noexcept;

    /** @param bpm   the deck's tempo */
    PX_AUDIO_THREAD void runEffects (const ChannelPair&, double bpm) noexcept;

    /** Adds the pair to the monitor at the gain's knob while the cue (PFL) is on. The gain moves over 5 ms. */
    PX_AUDIO_THREAD void tapCue (const ChannelPair&, const ChannelPair& monitor, bool isOn) noexcept;

    /** The autogain that keeps a track below full scale: its own, but above 1 at most to where the peak reaches full scale.
        @param peak   of the track, 1 while it is not known */
    PX_AUDIO_THREAD static double cappedAutogain (double factor, double peak) noexcept;

    /** Follows the track's autogain: at once when a track begins to play, else within 2 s, as a level that is found late must
        not jump. @param factor   linear */
    PX_AUDIO_THREAD void followAutogain (double factor, bool isPlaying, double blockSeconds) noexcept;

    /** The gain that the fader moves to: fader (less what a SmartKnob takes of it), autogain,
        gain and crossfader; Punch and Cut stand in for the crossfader.
        @param side   of the crossfader, 0 or 1 */
    PX_AUDIO_THREAD double targetGain (const EngineSettings&, int side) const noexcept;

    /** Takes the meters before the fader, then applies the fader's gain, which follows its target over 5 ms, and keeps the last
        products. */
    PX_AUDIO_THREAD void applyFader (const ChannelPair&, double target, double smoothing) noexcept;

    /** The level that controllers and scripts read: the larger of the last two samples after the fader, 0 to 1. Any thread. */
    double level() const noexcept;

private:
    GainRamp cueTap { 0.0 };
    double autogain = 1.0;
    bool wasPlaying = false;
    double fader = 0.0;                       ///< the gain as it stands on its way
    std::array<double, 2> sides { 1.0, 1.0 }; ///< the balance's gains
};

using Channels = std::array<Channel, std::tuple_size_v<decltype (EngineSettings::deckSetup)>>;
