#include "mixer/FaderLaws.h"

#include <algorithm>
#include <cmath>

double FaderLaws::faderGain (double volume) noexcept
{
    return (std::pow (11.0, volume) - 1.0) * 0.1;
}

double FaderLaws::crossfaderGain (const Crossfader& fader, int side) noexcept
{
    const auto right = (side != 0) != fader.reverse;
    const auto way = right ? fader.position : 1.0 - fader.position;
    if (!fader.smooth)
        return std::clamp (2.0 * way, 0.0, 1.0);

    const auto y = std::clamp (way / (fader.curve + 0.001), -3.0, 3.0); // where the fraction is -1 and 1
    return (y * y + 27.0) * y / (9.0 * y * y + 27.0);
}

double FaderLaws::bandGainDb (double value, bool killed) noexcept
{
    return killed ? -78.0 : 10.0 - 40.0 * (1.0 - value) * (1.0 - value);
}
