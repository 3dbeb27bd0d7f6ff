#pragma once

#include "fx/effect/BeatSteps.h"
#include "fx/effect/FxEffect.h"
#include "fx/modulation/SimpleFlanger.h"
#include "fx/modulation/SimplePhaser.h"
#include "support/Relaxed.h"

#include <cmath>

/** The Flanger or the Phaser: two channels whose oscillators keep the deck's tempo, the right one ahead by the stereo
    phase. While bypassed the oscillators run on and the lines are empty, so that no old sound comes back.
    @tparam Channel   a fx_dsp::modulation_effect with processPair, reset and defaultDepth */
template <class Channel>
class ModulationFx final : public FxEffect
{
public:
    ModulationFx()
    {
        setDepth();
        reset();
    }

    PX_AUDIO_THREAD void setSampleRate (double rate) noexcept override
    {
        left.setSampleRate (rate);
        right.setSampleRate (rate);
        reset();
    }

    PX_AUDIO_THREAD void setFxParameter (FxParameter parameter, double value) noexcept override
    {
        switch (parameter)
        {
        case FxParameter::dryWet:
            wet = value;
            left.setDryWet (value);
            right.setDryWet (value);
            break;
        case FxParameter::frequency:
            depth = value;
            setDepth();
            break;
        case FxParameter::feedback:
            // Too small a move is not worth the blend that it starts.
            if (std::fabs (value - stereoTurns) >= 0.0001)
            {
                right.turnLfo (value - stereoTurns);
                stereoTurns = value;
            }
            break;
        case FxParameter::step:
            rate = value;
            break;
        case FxParameter::bypass:
            left.setBypass (value >= 0.5);
            right.setBypass (value >= 0.5);
            break;
        case FxParameter::feedbackSign:
            sign = value < 0.5 ? -1.0 : 1.0;
            setDepth();
            break;
        }
    }

    std::string parameterText (FxParameter parameter) const override
    {
        switch (parameter)
        {
        case FxParameter::dryWet:
            return FxText::percent (wet);
        case FxParameter::frequency:
            return FxText::percent (depth);
        case FxParameter::feedback:
            return FxText::formatted ("%0.f%% deg", stereoTurns * 360.0);
        case FxParameter::step:
            return BeatSteps::at (BeatSteps::modulation, rate).text;
        default:
            return {};
        }
    }

    PX_AUDIO_THREAD void process (float* leftSamples, float* rightSamples, int frames,
                                  double bpm) noexcept override
    {
        const auto hertz = bpm / (BeatSteps::at (BeatSteps::modulation, rate).beats * 60.0);
        left.setLfoRate (hertz);
        right.setLfoRate (hertz);
        if (!left.isBypassed())
        {
            Channel::processPair (left, right, leftSamples, rightSamples, frames);
            isEmpty = false;
            return;
        }
        if (!isEmpty)
            reset();
        left.skip (frames);
        right.skip (frames);
    }

    PX_AUDIO_THREAD void reset() noexcept override
    {
        for (auto* channel : { &left, &right })
        {
            channel->settle();
            channel->reset();
        }
        isEmpty = true;
    }

private:
    void setDepth() noexcept
    {
        const auto share = 0.2 + 0.6 * depth;
        left.setFeedback (share, sign);
        right.setFeedback (share, sign);
    }

    Channel left, right;
    Relaxed<double> wet { 0.5 }, depth { (Channel::defaultDepth - 0.2) / 0.6 }, stereoTurns { 0.0 };
    Relaxed<double> rate { BeatSteps::valueOf (BeatSteps::modulation, 8.0) };
    double sign = 1.0;
    bool isEmpty = true;
};

using FlangerFx = ModulationFx<fx_dsp::simple_flanger<float, 128>>;
using PhaserFx = ModulationFx<fx_dsp::simple_phaser>;
