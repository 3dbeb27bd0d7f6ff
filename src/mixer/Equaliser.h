#pragma once

#include "analysis/signal/Eq.h"
#include "support/CrossFade.h"

#include <vector>

/** A deck's equaliser: a low shelf at 100 Hz, a peak at 1 kHz and a high shelf at 10 kHz in series, each a biquad of the
    audio equalizer cookbook with a Q of 1.5. Both channels at once.

    New gains cross-fade two sets of filters over 5 ms: coefficients that jumped would throw a filter's history off, and a
    low band that comes back would thump. The new set first runs through the last 10 ms of input, so that it is in the
    signal when it is heard. A hand that turns a knob starts one cross-fade after the other. Audio thread. */
class Equaliser
{
public:
    enum Band
    {
        low,
        mid,
        high,
        bandCount
    };
    using Gains = std::array<double, bandCount>; ///< dB, -78 to 10

    Equaliser() noexcept;

    /** Takes the gains to move to. A set is computed anew only if a gain has moved by 0.02 dB or more, or the rate has
        changed. @param sampleRate   Hz, above 0; where a band's frequency comes near half of it, the band moves down to
        0.45 of the rate */
    PX_AUDIO_THREAD void setGains (const Gains&, double sampleRate) noexcept;

    /** Fades to exact silence, until the next setGains(). */
    PX_AUDIO_THREAD void setSilent() noexcept { wantsSilence = true; }

    /** Filters in place. When input and history have died away the filters come to rest, and cost nothing until there is a
        signal. */
    PX_AUDIO_THREAD void process (float* left, float* right, int frames) noexcept;

    /** Forgets the signal, and takes the gains at once to where they were going. */
    PX_AUDIO_THREAD void reset() noexcept;

private:
    struct Set
    {
        CEQ bands { bandCount };
        bool isSilent = false; ///< gives silence in place of the filtered sound

        void process (float* left, float* right, int frames) noexcept;
    };

    void configure (Set&) const noexcept;
    bool isUpToDate (const Set&) const noexcept;
    void startFade() noexcept;
    void warmUp (CEQ&) const noexcept;
    void remember (const float* left, const float* right, int frames) noexcept;
    void fade (float* left, float* right, int frames) noexcept;

    std::array<Set, 2> sets;
    size_t current = 0;
    GainRamp arrival { 1.0 }; ///< of the current set, over the other
    Gains targets {};
    bool wantsSilence = false;
    double rate = 0.0;

    /** The last input, a ring; its newest frame lies before `place`. */
    struct Recent
    {
        static constexpr int size = 2048;
        std::vector<float> left = std::vector<float> (size), right = std::vector<float> (size);
        int place = 0;
    };
    Recent recent;
};
