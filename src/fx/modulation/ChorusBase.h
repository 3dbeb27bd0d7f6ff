#pragma once

#include "fx/modulation/LfoTable.h"

#include <cmath>

namespace fx_dsp
{
/** The common part of modulated lines: a sample rate, and an oscillator that swings its delay or its frequency.

    Constructed off the audio thread; everything else may run there. */
class chorus_base
{
public:
    static constexpr double lowestRate = 8000.0, highestRate = 384000.0;

    PX_AUDIO_THREAD double sampleRate() const noexcept { return rate; }

    /** The oscillator's frequency in Hz, 0 (frozen) to half the sample rate; anything else changes nothing. */
    PX_AUDIO_THREAD void setLfoRate (double hertz) noexcept
    {
        if (hertz >= 0.0 && hertz <= 0.5 * rate)
            step = static_cast<uint32_t> (std::llround (hertz / rate * LfoTable::turn));
    }

    /** Moves the oscillator by a part of a turn, -1 to 1. */
    PX_AUDIO_THREAD void turnLfo (double turns) noexcept
    {
        phase += static_cast<uint32_t> (std::llround (turns * LfoTable::turn));
    }

    /** Moves the oscillator on by samples that were not processed. */
    PX_AUDIO_THREAD void skip (int samples) noexcept { phase += step * static_cast<uint32_t> (samples); }

    /** The oscillator's place in its turn, 0 to 1. */
    PX_AUDIO_THREAD double lfoPhase() const noexcept { return phase / LfoTable::turn; }

protected:
    chorus_base() : table (LfoTable::sine()) {}
    ~chorus_base() = default;

    PX_AUDIO_THREAD void limitAndSetRate (double hertz) noexcept
    {
        rate = hertz >= lowestRate ? std::fmin (hertz, highestRate) : lowestRate;
    }

    const LfoTable& table;
    uint32_t phase = 0, step = 0;

private:
    double rate = 44100.0;
};
}
