#include "fx/LadderFilter.h"

#include "support/OnePole.h"

namespace
{
constexpr double glide = 0.999;
}

void LadderFilter::setSampleRate (double rate) noexcept
{
    wet.setSampleRate (rate);
    dry.setSampleRate (rate);
    reset();
}

void LadderFilter::setOn (bool isOn) noexcept
{
    on = isOn;
    wet.setTarget (on ? 1.0 : 0.0);
    dry.setTarget (on ? 0.0 : 1.0);
}

void LadderFilter::reset() noexcept
{
    openness = 0.99;
    lastIn = y1 = y2 = y3 = y4 = Stereo {};
    wet.settle();
    dry.settle();
}

inline Stereo LadderFilter::output (Stereo in) const noexcept
{
    switch (type)
    {
    case Type::highPass:
        return in - y4;
    case Type::band:
        return (y3 - y4) * 3.0;
    case Type::notch:
        return in - (y3 - y4) * 3.0;
    case Type::lowPass:
        break;
    }
    return y4;
}

void LadderFilter::process (float* left, float* right, int frames) noexcept
{
    using namespace StereoMath;
    if (!on && wet.isAt (0.0))
    {
        reset();
        return;
    }

    const auto scale = type == Type::lowPass ? 1.5 : 2.0;
    for (int i = 0; i < frames; ++i)
    {
        const auto n = noise.next();
        openness = OnePole::approached (openness, 1.0 - word + n, glide);
        const auto f = openness, q = 1.0 - f;
        const auto p = f + 0.8 * f * q;
        const auto k = 2.0 * p - 1.0;
        const auto r = ((q * 5.6 * q + (1.0 - q)) * (q * 0.5) + 1.0) * resonance;

        const auto x = load (left, right, i);
        const auto in = x + n - r * y4;
        const auto y1Old = y1, y2Old = y2, y3Old = y3;
        y1 = (in + lastIn) * p - k * y1;
        y2 = (y1 + y1Old) * p - k * y2;
        y3 = (y2 + y2Old) * p - k * y3;
        y4 = (y3 + y3Old) * p - k * y4;
        lastIn = in;
        store (output (in) * (scale * wet.next()) + x * dry.next(), left, right, i);
    }
}
