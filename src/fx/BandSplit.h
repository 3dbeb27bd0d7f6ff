#pragma once

#include "fx/StateVariable.h"
#include "support/GainRamp.h"

#include <array>
#include <cstddef>

/** Parts a stereo signal at 300 and 3000 Hz into a working pair (bands that are on) and a side pair (the others).

    Two crossovers of 4th order (Linkwitz-Riley) stand one behind the other: the upper one parts what the lower one's high
    side gives. The low band passes the upper crossover's all-pass, so that working and side pair together are the input
    through an all-pass, flat whatever the switches say. A switch moves its band over 64 samples. */
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

    /** True if nothing rings in it: silence goes in and out alike. */
    PX_AUDIO_THREAD bool isAtRest() const noexcept;

    PX_AUDIO_THREAD void reset() noexcept;

private:
    using Section = StateVariable::Coefficients;

    struct Sides
    {
        Stereo low, high;
    };

    static Section sectionAt (double hz, double rate) noexcept;
    static Sides crossover (const Section&, StateVariable& both, StateVariable& second, Stereo in) noexcept;
    Stereo bandsOf (Stereo in, std::array<Stereo, bandCount>& bands) noexcept;

    Section lower, upper;
    std::array<StateVariable, 5> states;
    std::array<GainRamp, bandCount> gains;
};
