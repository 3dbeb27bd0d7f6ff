#include "timecode/TimecodeDecoder.h"

#include "SignalFaults.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <numbers>
#include <string>
#include <vector>

// bench_timecode_matrix: how well control records are read, as the table of docs/timecode.md: each motion through the four sets of
// faults of a deck, and each further fault under one mixed motion, on the system's own disc and on a record of 1 kHz.

namespace
{
constexpr double tau = 2 * std::numbers::pi;
constexpr double rate = 44100, discDelay = 0.0014, recordDelay = 0.0012, settling = 0.2, tolerance = 0.02;

struct Motion
{
    const char* name;
    double seconds;
    std::function<std::optional<double> (double)> speedAt; // nothing: the needle is up
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

const std::vector<SignalFaults>& decks()
{
    static const std::vector<SignalFaults> all { { .name = "clean" }, goodDeck, clubDeck, wornDeck };
    return all;
}

const std::vector<SignalFaults>& single()
{
    static const std::vector<SignalFaults> all {
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

struct Figures
{
    double steady = 0, moving = 0, known = 0, wrongMs = 0, restMs = 0;
    bool hasSteady = false, hasMoving = false, rests = false;
};

Figures measure (const ControlMedium& medium, const Motion& motion, const SignalFaults& fault)
{
    auto signal = play (
        medium, 60, motion.seconds, [&] (double t) { return rounded (motion, t); }, fault.inputRate);
    spoil (signal, fault, 5);
    const auto decoder = std::make_unique<TimecodeDecoder>();
    decoder->prepare (medium, codeOf (medium), signal.rate);

    const auto speedAt = [&] (double t)
    { return rounded (motion, std::clamp (t, 0.0, motion.seconds)).value_or (0); };
    const auto delay = medium.isOwnDisc() ? discDelay : recordDelay;
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

void printRow (const Motion& motion, const SignalFaults& fault)
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
