#pragma once

#include "fx/Stereo.h"
#include "support/GainRamp.h"
#include "support/NoiseTable.h"

/** A resonant ladder of four poles for a stereo pair. Its cutoff is a word, not a frequency: the higher the word the lower
    the cutoff, in proportion to the sample rate. */
class LadderFilter
{
public:
    enum class Type
    {
        lowPass,
        highPass,
        band,
        notch
    };

    explicit LadderFilter (Type kind = Type::lowPass) noexcept : type (kind) { noise.fill (random); }

    /** @param next   0.01 (open) to 0.98; the filter glides to it, a thousandth of the way each sample */
    PX_AUDIO_THREAD void setWord (double next) noexcept { word = next; }

    /** @param next   from 0; it begins to ring by itself around 4 */
    PX_AUDIO_THREAD void setResonance (double next) noexcept { resonance = next; }

    /** Takes the rate in Hz, above 0, and resets. */
    PX_AUDIO_THREAD void setSampleRate (double rate) noexcept;

    PX_AUDIO_THREAD void setOn (bool isOn) noexcept;

    /** Works in place. One that is off and faded out leaves the signal alone. */
    PX_AUDIO_THREAD void process (float* left, float* right, int frames) noexcept;

    PX_AUDIO_THREAD void reset() noexcept;

private:
    Stereo output (Stereo in) const noexcept;

    const Type type;
    double word = 0.01, resonance = 0.5;
    bool on = false;
    double openness = 0.99; ///< 1 - word, gliding
    Stereo lastIn {}, y1 {}, y2 {}, y3 {}, y4 {};
    GainRamp wet { 0.0 }, dry { 1.0 };
    RandGeneratorLCG random;
    NoiseTable noise;
};
