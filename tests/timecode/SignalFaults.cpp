#include "SignalFaults.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>
#include <random>

const SignalFaults goodDeck { .name = "deck",
                              .noiseDb = -45,
                              .rumbleDb = -35,
                              .humDb = -50,
                              .imbalanceDb = 0.5,
                              .crosstalkDb = -28,
                              .phaseDegrees = 3 };
const SignalFaults clubDeck { .name = "club",
                              .noiseDb = -30,
                              .rumbleDb = -14,
                              .humDb = -32,
                              .imbalanceDb = 1.5,
                              .crosstalkDb = -20,
                              .phaseDegrees = 8,
                              .clicksASecond = 3 };
const SignalFaults wornDeck { .name = "worn",
                              .noiseDb = -20,
                              .rumbleDb = -8,
                              .humDb = -26,
                              .imbalanceDb = 3,
                              .crosstalkDb = -15,
                              .phaseDegrees = -12,
                              .clicksASecond = 10,
                              .dropoutsASecond = 0.5 };

namespace
{
constexpr double tau = 2 * std::numbers::pi, peak = 0.5;

double ofDb (double db)
{
    return db == 0 ? 0 : std::pow (10, db / 20);
}

void addClicks (ControlSignal& signal, double aSecond, std::mt19937& random)
{
    std::uniform_real_distribution<double> chance (0, 1);
    for (std::size_t at = 0; aSecond > 0;)
    {
        at += static_cast<std::size_t> (-std::log (1 - chance (random)) / aSecond * signal.rate) + 1;
        const auto length = (0.0001 + 0.0009 * chance (random)) * signal.rate;
        const auto height = peak * (0.3 + 1.7 * chance (random));
        const auto left = chance (random) < 0.5 ? -1.0 : 1.0, right = 2 * chance (random) - 1;
        if (at >= signal.size())
            return;
        for (std::size_t i = 0; i < static_cast<std::size_t> (6 * length) && at + i < signal.size(); ++i)
        {
            const auto x = static_cast<double> (i) / length;
            const auto click = height * std::exp (-x) * std::cos (std::numbers::pi * x);
            signal.left[at + i] += static_cast<float> (left * click);
            signal.right[at + i] += static_cast<float> (right * click);
        }
    }
}

}

void spoil (ControlSignal& signal, const SignalFaults& fault, unsigned seed)
{
    std::mt19937 random (seed);
    std::normal_distribution<double> normal;
    std::uniform_real_distribution<double> chance (0, 1);
    const auto crosstalk = ofDb (fault.crosstalkDb), hum = peak * ofDb (fault.humDb),
               noise = peak * ofDb (fault.noiseDb) / std::numbers::sqrt2,
               rumble = peak * ofDb (fault.rumbleDb) / std::numbers::sqrt2;
    const auto leak = std::min (1.0, tau * 25 / signal.rate);
    const auto rightGain = std::pow (10, -fault.imbalanceDb / 20), gain = std::pow (10, fault.gainDb / 20);
    const auto turn = fault.phaseDegrees / 360 * tau;
    double away = 0;
    std::array<std::array<double, 3>, 2> low {}; // three poles at 25 Hz
    const auto rumbleOf = [&] (std::array<double, 3>& poles)
    {
        auto value = normal (random);
        for (auto& pole : poles)
            value = pole += leak * (value - pole);
        return rumble * value * std::sqrt (16 / 3.0 / leak); // three poles' noise bandwidth
    };
    std::size_t frame = 0;
    change (signal,
            [&] (float& left, float& right, double t)
            {
                const auto needle = signal.place[frame++] == ControlSignal::needleUp ? 0.0 : 1.0;
                if (away <= 0 && chance (random) < fault.dropoutsASecond / signal.rate)
                    away = 0.005 + 0.045 * chance (random);
                away -= 1 / signal.rate;
                const auto l = away > 0 ? 0.0 : static_cast<double> (left),
                           r = away > 0 ? 0.0 : static_cast<double> (right);
                const auto turned = r * std::cos (turn) + l * std::sin (turn);
                const auto h = hum
                               * (std::sin (tau * 50 * t) + std::sin (tau * 150 * t + 1) / 3
                                  + std::sin (tau * 250 * t) / 5);
                left = static_cast<float> (l + crosstalk * turned + needle * rumbleOf (low[0]) + h);
                right = static_cast<float> ((turned + crosstalk * l) * rightGain + needle * rumbleOf (low[1])
                                            + h);
            });
    addClicks (signal, fault.clicksASecond, random);
    frame = 0;
    change (signal,
            [&] (float& left, float& right, double)
            {
                // At rest and with the needle up only the electronics' noise is left.
                const bool isUp = signal.place[frame] == ControlSignal::needleUp;
                const auto way = frame > 0 ? std::abs (signal.place[frame] - signal.place[frame - 1]) : 0;
                const auto surface = isUp ? 0.3 : 0.3 + 0.7 * std::min (1.0, way * signal.rate);
                ++frame;
                const auto finished = [&] (float sample)
                {
                    return static_cast<float> (std::clamp (
                        (static_cast<double> (sample) + surface * noise * normal (random)) * gain + fault.dc,
                        -1.0, 1.0));
                };
                left = finished (left);
                right = finished (right);
            });
}
