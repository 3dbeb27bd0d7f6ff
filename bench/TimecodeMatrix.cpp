#include "timecode/TimecodeDecoder.h"

#include "ControlSignal.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <numbers>
#include <random>
#include <string>
#include <vector>

// bench_timecode_matrix: how well control records are read, as the table of docs/timecode.md: each motion through the four sets of
// faults of a deck, and each further fault under one mixed motion, on the system's own disc and on a record of 1 kHz.

namespace
{
constexpr double tau = 2 * std::numbers::pi;
constexpr double rate = 44100, peak = 0.5, delay = 0.0017, settling = 0.2, tolerance = 0.02;

struct Motion
{
    const char* name;
    double seconds;
    std::function<std::optional<double> (double)> speedAt; // nothing: the needle is up
};

/** Faults of needle, cable and card; levels in dB against the carrier's peak, 0 for none. */
struct Fault
{
    const char* name;
    double noiseDb = 0, rumbleDb = 0, humDb = 0, imbalanceDb = 0, crosstalkDb = 0, phaseDegrees = 0;
    double clicksASecond = 0, dropoutsASecond = 0, dc = 0, gainDb = 0, inputRate = rate;
};

double sway (double t, double height, double hz)
{
    return height * std::sin (tau * hz * t);
}

double ramp (double t, double from, double to, double seconds)
{
    return from + (to - from) * std::clamp (t / seconds, 0.0, 1.0);
}

const std::vector<Motion>& motions()
{
    static const std::vector<Motion> all {
        { "steady", 8, [] (double) { return std::optional (1.0); } },
        { "reverse", 8, [] (double) { return std::optional (-1.0); } },
        { "pitch", 8, [] (double t) { return std::optional (1 + sway (t, 0.08, 0.2)); } },
        { "baby", 6, [] (double t) { return std::optional (t < 1 ? 1.0 : sway (t - 1, 2.5, 2)); } },
        { "fast", 5, [] (double t) { return std::optional (t < 1 ? 1.0 : sway (t - 1, 6, 5)); } },
        { "slow", 8,
          [] (double t) { return std::optional (t < 1 ? 0.5 : (t < 3 ? 0.2 : (t < 5 ? 0.1 : 0.05))); } },
        { "turns", 5,
          [] (double t) {
              return std::optional (t < 1 ? 1.0
                                          : (t < 1.5 ? ramp (t - 1, 1, 0, 0.3) : sway (t - 1.5, 0.08, 1)));
          } },
        { "stops", 9,
          [] (double t)
          {
              const auto within = std::fmod (t, 3);
              return std::optional (within < 1.5 ? ramp (within, 0, 1, 0.5) : ramp (within - 1.5, 1, 0, 0.7));
          } },
        { "drops", 8, [] (double t) { return std::fmod (t, 2) < 1.6 ? std::optional (1.0) : std::nullopt; } },
        { "mixed", 10,
          [] (double t)
          {
              if (t < 2 || (t >= 4.5 && t < 6))
                  return std::optional (1.0);
              if (t < 4)
                  return std::optional (sway (t - 2, 2.5, 2));
              if (t < 4.5)
                  return std::optional (0.0);
              if (t < 6.4)
                  return std::optional<double> {};
              return std::optional (t < 8 ? 1.0 : ramp (t - 8, 1, 0, 0.8));
          } },
    };
    return all;
}

const std::vector<Fault>& decks()
{
    static const std::vector<Fault> all {
        { "clean" },
        { .name = "deck",
          .noiseDb = -45,
          .rumbleDb = -35,
          .humDb = -50,
          .imbalanceDb = 0.5,
          .crosstalkDb = -28,
          .phaseDegrees = 3 },
        { .name = "club",
          .noiseDb = -30,
          .rumbleDb = -14,
          .humDb = -32,
          .imbalanceDb = 1.5,
          .crosstalkDb = -20,
          .phaseDegrees = 8,
          .clicksASecond = 3 },
        { .name = "worn",
          .noiseDb = -20,
          .rumbleDb = -8,
          .humDb = -26,
          .imbalanceDb = 3,
          .crosstalkDb = -15,
          .phaseDegrees = -12,
          .clicksASecond = 10,
          .dropoutsASecond = 0.5 },
    };
    return all;
}

const std::vector<Fault>& single()
{
    static const std::vector<Fault> all {
        { .name = "noise -18 dB", .noiseDb = -18 },
        { .name = "rumble -10 dB", .rumbleDb = -10 },
        { .name = "rumble 0 dB", .rumbleDb = -0.01 },
        { .name = "hum -26 dB", .humDb = -26 },
        { .name = "hum -14 dB", .humDb = -14 },
        { .name = "clicks, 10 a second", .clicksASecond = 10 },
        { .name = "dropouts, 2 a second", .dropoutsASecond = 2 },
        { .name = "right 6 dB louder", .imbalanceDb = -6 },
        { .name = "crosstalk -12 dB", .crosstalkDb = -12 },
        { .name = "phase 15 degrees", .phaseDegrees = 15 },
        { .name = "DC 0.05", .dc = 0.05 },
        { .name = "level -40 dB", .gainDb = -40 },
        { .name = "clipped by 6 dB", .gainDb = 12 },
        { .name = "96 kHz", .inputRate = 96000 },
    };
    return all;
}

/** A platter that can't leap: means over 4 ms. */
std::optional<double> rounded (const Motion& motion, double t)
{
    auto sum = 0.0;
    for (const auto around : { -0.002, -0.001, 0.0, 0.001, 0.002 })
    {
        const auto speed = motion.speedAt (std::clamp (t + around, 0.0, motion.seconds));
        if (!speed.has_value())
            return motion.speedAt (t);
        sum += *speed;
    }
    return sum / 5;
}

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

void spoil (ControlSignal& signal, const Fault& fault)
{
    std::mt19937 random (5);
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

struct Figures
{
    double steady = 0, moving = 0, known = 0, wrongMs = 0, restMs = 0;
    bool hasSteady = false, hasMoving = false, rests = false;
};

Figures measure (const ControlMedium& medium, const Motion& motion, const Fault& fault)
{
    auto signal = play (
        medium, 60, motion.seconds, [&] (double t) { return rounded (motion, t); }, fault.inputRate);
    spoil (signal, fault);
    const auto decoder = std::make_unique<TimecodeDecoder>();
    decoder->prepare (medium, codeOf (medium), signal.rate);

    const auto speedAt = [&] (double t)
    { return rounded (motion, std::clamp (t, 0.0, motion.seconds)).value_or (0); };
    Figures found;
    std::size_t steadyFrames = 0, movingFrames = 0, placeFrames = 0, knownFrames = 0;
    auto down = 0.0, still = 0.0;
    for (std::size_t i = 0; i < signal.size(); ++i)
    {
        decoder->process (signal.left[i], signal.right[i]);
        const auto t = static_cast<double> (i + 1) / signal.rate;
        const bool isUp = !motion.speedAt (t).has_value();
        const auto truth = speedAt (t), speed = decoder->speed();
        down = isUp ? 0 : down + 1 / signal.rate;
        still = std::abs (truth) < 0.001 ? still + 1 / signal.rate : 0;
        if (still > 0)
        {
            found.rests = true;
            if (std::abs (speed) > 0.01)
                found.restMs = std::max (found.restMs, 1000 * still);
        }
        const auto place = decoder->position();
        const bool right = place.has_value() && !isUp && std::abs (*place - signal.place[i]) <= tolerance;
        if (place.has_value() && !right && (!isUp || still > 0.15))
            found.wrongMs += 1000 / signal.rate;
        if (down < settling)
            continue;
        if (std::abs (truth) > 0.04)
        {
            ++placeFrames;
            knownFrames += right ? 1 : 0;
        }
        auto lowest = truth, highest = truth;
        for (const auto around : { -0.06, -0.03, -0.015, 0.015, 0.03, 0.06 })
        {
            lowest = std::min (lowest, speedAt (t + around));
            highest = std::max (highest, speedAt (t + around));
        }
        const bool even = highest - lowest < 0.02;
        if (even && std::abs (truth) <= 0.02)
            continue;
        const auto error = speed - speedAt (even ? t : t - delay);
        (even ? found.steady : found.moving) += error * error;
        ++(even ? steadyFrames : movingFrames);
    }
    found.hasSteady = steadyFrames > 0;
    found.hasMoving = movingFrames > 0;
    found.steady = std::sqrt (found.steady / static_cast<double> (std::max<std::size_t> (1, steadyFrames)));
    found.moving = std::sqrt (found.moving / static_cast<double> (std::max<std::size_t> (1, movingFrames)));
    found.known = 100.0 * static_cast<double> (knownFrames)
                  / static_cast<double> (std::max<std::size_t> (1, placeFrames));
    found.wrongMs *= 60 / motion.seconds;
    return found;
}

std::string cell (bool isThere, const char* format, double value)
{
    std::array<char, 32> text {};
    if (isThere)
        std::snprintf (text.data(), text.size(), format, value);
    return text.data();
}

void printRow (const Motion& motion, const Fault& fault)
{
    std::printf ("| %s | %s ", motion.name, fault.name);
    std::array<Figures, 2> both { measure (*findControlMedium ("cd"), motion, fault),
                                  measure (*findControlMedium ("serato_2a"), motion, fault) };
    const auto print = [&] (auto textOf)
    { std::printf ("| %s | %s ", textOf (both[0]).c_str(), textOf (both[1]).c_str()); };
    print ([] (const Figures& f) { return cell (f.hasSteady, "%.5f", f.steady); });
    print ([] (const Figures& f) { return cell (f.hasMoving, "%.3f", f.moving); });
    print ([] (const Figures& f) { return cell (true, "%.1f", f.known); });
    print ([] (const Figures& f) { return cell (true, "%.0f", f.wrongMs); });
    print ([] (const Figures& f) { return cell (f.rests, "%.0f", f.restMs); });
    std::printf ("|\n");
    std::fflush (stdout);
}
}

int main()
{
    std::printf (
        "| motion | faults | steady, disc | record | moving, disc | record | known %%, disc | record "
        "| wrong, disc | record | rest, disc | record "
        "|\n|---|---|---|---|---|---|---|---|---|---|---|---|\n");
    for (const auto& fault : decks())
        for (const auto& motion : motions())
            printRow (motion, fault);
    for (const auto& fault : single())
        printRow (motions().back(), fault);
}
