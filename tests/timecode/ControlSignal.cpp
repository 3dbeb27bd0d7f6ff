#include "ControlSignal.h"

#include "timecode/CarrierPresence.h"

#include <cmath>
#include <numbers>
#include <random>

namespace
{
constexpr double tau = 2 * std::numbers::pi;

void groove (const ControlMedium& medium, const GrooveCode& code, double cycles, float& left, float& right)
{
    const auto number = std::floor (cycles);
    const auto angle = tau * (cycles - number);
    const auto bits = code.bitsAt (static_cast<std::int64_t> (number));
    if (medium.isOwnDisc())
    {
        const auto slot = static_cast<int> ((cycles - number) * 6);
        left = static_cast<float> (0.5 * std::sin (angle)
                                   + (bits >> slot & 1 ? 0.25 * std::sin (3 * angle) : 0));
        right = static_cast<float> (-0.25 * std::cos (angle));
        return;
    }
    const auto height = 0.5 * (bits != 0 ? 1 : 1 - (1 - std::cos (angle)) / 4);
    const auto primary = static_cast<float> (height * std::sin (angle));
    const auto secondary = static_cast<float> ((medium.reversedPhase ? height : -height) * std::cos (angle));
    left = medium.primaryIsLeft ? primary : secondary;
    right = medium.primaryIsLeft ? secondary : primary;
}
}

ControlSignal play (const ControlMedium& medium, double start, double seconds,
                    const std::function<std::optional<double> (double)>& speedAt, double rate)
{
    ControlSignal signal;
    signal.rate = rate;
    const auto code = codeOf (medium);
    const auto frames = static_cast<std::size_t> (seconds * rate);
    signal.left.resize (frames);
    signal.right.resize (frames);
    signal.place.resize (frames);
    auto place = start;
    for (std::size_t i = 0; i < frames; ++i)
    {
        const auto speed = speedAt (static_cast<double> (i) / rate);
        place += speed.value_or (0) / rate;
        signal.place[i] = speed.has_value() ? place : ControlSignal::needleUp;
        if (!speed.has_value())
            continue;
        groove (medium, *code, place * medium.carrierHz, signal.left[i], signal.right[i]);
        const auto level = medium.levelFollowsSpeed ? cartridgeLevel (*speed, medium.carrierHz) : 1.0f;
        signal.left[i] *= level;
        signal.right[i] *= level;
    }
    return signal;
}

void addNoise (ControlSignal& signal, float level)
{
    std::mt19937 random (7);
    std::normal_distribution<float> noise (0, level);
    change (signal,
            [&] (float& left, float& right, double)
            {
                left += noise (random);
                right += noise (random);
            });
}

void change (ControlSignal& signal, const std::function<void (float&, float&, double)>& what)
{
    for (std::size_t i = 0; i < signal.size(); ++i)
        what (signal.left[i], signal.right[i], static_cast<double> (i) / signal.rate);
}
