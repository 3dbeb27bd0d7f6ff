#pragma once

#include "fx/modulation/ModulationEffect.h"

namespace fx_dsp
{
/** A chain of first-order all-pass stages whose corner swings between two frequencies, fed back: one channel of the
    Phaser. */
class simple_phaser : public modulation_effect
{
public:
    static constexpr double defaultDepth = 0.8;

    // Six stages give three notches: enough for a vowel-like sweep, few enough that each is heard on its own.
    static constexpr int stages = 6;

    /** Samples between two looks at the oscillator. */
    static constexpr int coefficientFrames = 32;

    simple_phaser() { setSampleRate (sampleRate()); }

    /** In Hz, 8000 to 384000. The chain is emptied. */
    PX_AUDIO_THREAD void setSampleRate (double hertz) noexcept;

    /** The two ends of the sweep in Hz, limited to below half the sample rate. Costs some hundred transcendental
        functions. */
    PX_AUDIO_THREAD void setSweep (double lowest, double highest) noexcept;

    /** Empties the chain; the oscillator stays. */
    PX_AUDIO_THREAD void reset() noexcept;

    /** Both channels in place. They are worked in turns, sample by sample: a chain is a long row of dependent
        operations, and the other channel's fit between them. */
    PX_AUDIO_THREAD static void processPair (simple_phaser& left, simple_phaser& right, float* leftSamples,
                                             float* rightSamples, int count) noexcept;

private:
    static constexpr int sweepPoints = 256;

    /** A channel's state in local variables while a piece is worked. */
    struct Chain
    {
        // The input of the first stage, then the output of each, at the last sample.
        std::array<float, stages + 1> past {};
        float coefficient = 0.0f;

        float next (float input, float feedback) noexcept;
    };

    float sweepCoefficient() const noexcept;

    double lowestHertz = 1000.0, highestHertz = 2600.0;
    std::array<float, sweepPoints + 2> sweep {}; // coefficients over the swing, and one for the last fraction
    int untilCoefficient = 0;
    Chain chain;
};
}
