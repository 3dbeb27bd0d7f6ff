#pragma once

#include "analysis/signal/Eq.h"

/** A deck's equaliser: a low shelf at 100 Hz, a peak at 1 kHz and a high shelf at 10 kHz in series, each a biquad of the
    audio equalizer cookbook with a Q of 1.5. Both channels at once.

    A gain glides to its new value by 7.8 dB a millisecond, so a kill takes 10 ms. Coefficients that jumped that far would
    throw the shelves' history off, and a low band that comes back would thump at ten times the music's level. A step of
    up to 5.6 dB, such as a knob that is turned makes, is there at once. Audio thread. */
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

    /** Takes the gains to move to. A band's coefficients are computed anew only if its gain has moved by 0.02 dB or more,
        or the rate has changed. @param sampleRate   Hz, above 0; where a band's frequency comes near half of it, the
        band moves down to 0.45 of the rate */
    PX_AUDIO_THREAD void setGains (const Gains&, double sampleRate) noexcept;

    /** Filters in place. When input and history have died away the filters come to rest, and cost nothing until there is a
        signal. */
    PX_AUDIO_THREAD void process (float* left, float* right, int frames) noexcept;

    /** Forgets the history, not the gains. */
    PX_AUDIO_THREAD void reset() noexcept;

private:
    bool mustGlide() const noexcept;
    void glide (double furthestDb) noexcept;

    CEQ bands { bandCount };
    Gains targets {};
    double rate = 0.0;
    int untilGlide = 0; ///< frames until coefficients may change again
};
