#pragma once

#include "fx/StateVariable.h"
#include "support/GainRamp.h"

#include <array>
#include <cstddef>

/** Splits a stereo signal at 300 and 3000 Hz into a working pair (bands that are on) and a side pair (the others).

    Two crossovers of 4th order (Linkwitz-Riley) stand one behind the other: the upper one splits the lower one's high
    side. The low band passes the upper crossover's all-pass, so that working and side pair together are the input
    through an all-pass, flat whatever the switches say. A switch moves its band over 5 ms.

    While all bands are on nothing is split, and the working pair is the input to the bit. When the first band goes off
    the filters run unheard for 3 ms, then the split sound fades in over the input in 5 ms; when the last comes back on
    the input fades in again. */
class BandSplit
{
public:
    enum Band
    {
        low,
        mid,
        high,
        bandCount
    };

    static constexpr double lowerHz = 300.0, upperHz = 3000.0;

    BandSplit() { setSampleRate (44100.0); }

    PX_AUDIO_THREAD void setSampleRate (double rate) noexcept;
    PX_AUDIO_THREAD void setBand (Band band, bool isOn) noexcept
    {
        gains[static_cast<std::size_t> (band)].setTarget (isOn ? 1.0 : 0.0);
    }

    /** Leaves the working pair in left and right.
        @returns false if the side pair is silent, and then is not written */
    PX_AUDIO_THREAD bool process (float* left, float* right, float* sideLeft, float* sideRight,
                                  int frames) noexcept;

    /** True while silence at the input means silence at the output. */
    PX_AUDIO_THREAD bool isAtRest() const noexcept;

    PX_AUDIO_THREAD void reset() noexcept;

private:
    using Section = StateVariable::Coefficients;

    struct Sides
    {
        Stereo low, high;
    };

    bool allOn() const noexcept;
    void engage() noexcept;
    static Section sectionAt (double hz, double rate) noexcept;
    static Sides crossover (const Section&, StateVariable& both, StateVariable& second, Stereo in) noexcept;
    Stereo bandsOf (Stereo in, std::array<Stereo, bandCount>& bands) noexcept;

    Section lower, upper;
    std::array<StateVariable, 5> states;
    std::array<GainRamp, bandCount> gains;
    GainRamp engaged { 0.0 }; ///< of the split sound, over the input
    int warmUp = 0, warmUpFrames = 0;
};
