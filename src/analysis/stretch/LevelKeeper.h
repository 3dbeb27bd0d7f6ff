#pragma once

#include "support/OnePole.h"

#include <algorithm>
#include <cmath>

/** Makes up for the level that a stretch takes from noise, whose turned frames do not meet in phase.

    Compares the energy that came out with that of the frames it was made of, over about a second. Tones and onsets keep
    their level by themselves: a loss that is small is left alone, so that nothing moves under them. */
class LevelKeeper
{
public:
    PX_AUDIO_THREAD void reset() noexcept
    {
        given = made = 0.0;
        current = 1.0;
    }

    /** The gain of what comes next: exactly 1 where nothing is lost. */
    PX_AUDIO_THREAD float gain() const noexcept { return static_cast<float> (current); }

    /** @param givenEnergy   of the frames that a piece was made of
        @param madeEnergy    of the piece, before the gain
        @param seconds       its length */
    PX_AUDIO_THREAD void add (double givenEnergy, double madeEnergy, double seconds) noexcept
    {
        const auto kept = OnePole::coefficient (memorySeconds, 1.0 / seconds);
        given = given * kept + givenEnergy;
        made = made * kept + madeEnergy;
        const auto loss = made > silence ? std::sqrt (given / made) : 1.0;
        glideTo (loss > 1.0 ? std::clamp (loss / leftAlone, 1.0, greatest) : 1.0, seconds);
    }

    /** The same for a piece that nothing is turned in. */
    PX_AUDIO_THREAD void rest (double seconds) noexcept
    {
        given = made = 0.0;
        if (current != 1.0)
            glideTo (1.0, seconds);
    }

private:
    void glideTo (double wanted, double seconds) noexcept
    {
        current = OnePole::approached (current, wanted, OnePole::coefficient (glideSeconds, 1.0 / seconds));
        if (wanted == 1.0 && current < arrived)
            current = 1.0;
    }

    static constexpr double memorySeconds = 1.0, glideSeconds = 0.5;
    static constexpr double leftAlone = 1.0035, greatest = 1.08; ///< 0.03 and 0.67 dB
    static constexpr double silence = 1e-7, arrived = 1.00001;

    double given = 0.0, made = 0.0; ///< fading sums
    double current = 1.0;
};
