#include "analysis/beats/bar/BarTrack.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <map>
#include <utility>

namespace
{
using BarTrack::Beat;

constexpr int shortestBar = 3, longestBar = 7;
constexpr int numStates = 3 + 4 + 5 + 6 + 7;

/** The log odds of a first beat: a logistic regression over the tuning songs of docs/accuracy.md, rounded. Features in
    units of their spread; the change counts against that of the beats beside it. */
constexpr double changeWeight = 2.4, neighbourWeight = -1.15, bassWeight = 1.1, bias = -2.0;

/** Snares on two and four of a bar of four, in log odds. */
constexpr double backbeatWeight = 0.1;

/** Log probabilities of what is rare: bars of another length, a bar that ends early, and how common each length is. */
constexpr double newLength = -8.0, cutShort = -12.0;
constexpr std::array<double, longestBar + 1> lengthPrior { 0, 0, 0, -0.5, 0, -2, -2, -2 };

/** A change that is no larger than this, in the units of HarmonicChange, tells nothing. */
constexpr double changeFloor = 4.0;

/** The limits of a rise of the bass that still tells more, in decibels. */
constexpr double leastRise = -20.0, mostRise = 30.0;

struct State
{
    int length = 0, place = 0;
};

constexpr std::array<State, numStates> states = []
{
    std::array<State, numStates> made;
    size_t at = 0;
    for (int length = shortestBar; length <= longestBar; ++length)
        for (int place = 0; place < length; ++place)
            made[at++] = { length, place };
    return made;
}();

/** Values less their mean, in units of their spread. */
template <typename Of>
std::vector<double> standardised (std::span<const Beat> beats, Of of)
{
    std::vector<double> values;
    auto sum = 0.0, squares = 0.0;
    for (const auto& beat : beats)
    {
        values.push_back (of (beat));
        sum += values.back();
        squares += values.back() * values.back();
    }
    const auto count = static_cast<double> (values.size());
    const auto mean = sum / count;
    const auto spread = std::sqrt (std::max (0.0, squares / count - mean * mean)) + 1e-6;
    for (auto& value : values)
        value = (value - mean) / spread;
    return values;
}

/** The log probability of each beat in each state, less what is the same for all. */
std::vector<std::array<double, numStates>> evidence (std::span<const Beat> beats)
{
    const auto change = standardised (beats, [] (auto& b) { return std::log (b.change + changeFloor); });
    const auto bass =
        standardised (beats, [] (auto& b) { return std::clamp (b.bassRise, leastRise, mostRise); });
    const auto snare = standardised (beats, [] (auto& b) { return b.snare; });
    std::vector<std::array<double, numStates>> made (beats.size());
    for (size_t k = 0; k < beats.size(); ++k)
    {
        const auto before = k > 0 ? change[k - 1] : 0.0, after = k + 1 < beats.size() ? change[k + 1] : 0.0;
        const auto odds =
            changeWeight * change[k] + neighbourWeight * (before + after) + bassWeight * bass[k] + bias;
        for (size_t s = 0; s < numStates; ++s)
        {
            const auto [length, place] = states[s];
            made[k][s] = (place == 0 ? odds : 0.0) + lengthPrior[static_cast<size_t> (length)] / length;
            if (length == 4)
                made[k][s] += (place % 2 == 1 ? backbeatWeight : -backbeatWeight) * snare[k];
        }
    }
    return made;
}

std::vector<size_t> bestStates (const std::vector<std::array<double, numStates>>& own)
{
    auto best = own.front();
    std::vector<std::array<uint8_t, numStates>> from (own.size());
    for (size_t k = 1; k < own.size(); ++k)
    {
        const auto before = best;
        const auto value = [&] (size_t s) { return before[s]; };
        size_t anyState = 0, anyEnd = 0;
        auto endValue = -1e300;
        for (size_t s = 0; s < numStates; ++s)
        {
            if (value (s) > value (anyState))
                anyState = s;
            if (states[s].place + 1 == states[s].length && value (s) > endValue)
            {
                anyEnd = s;
                endValue = value (s);
            }
        }
        for (size_t s = 0; s < numStates; ++s)
        {
            auto source = s - 1; // one beat on in the same bar
            auto sum = 0.0;
            if (states[s].place == 0)
            {
                const auto end = s + static_cast<size_t> (states[s].length) - 1;
                const auto early =
                    static_cast<size_t> (std::max_element (before.begin() + static_cast<std::ptrdiff_t> (s),
                                                           before.begin() + static_cast<std::ptrdiff_t> (end))
                                         - before.begin());
                const std::array<std::pair<double, size_t>, 4> ways { {
                    { value (end), end },
                    { value (anyEnd) + newLength, anyEnd },
                    { value (early) + cutShort, early },
                    { value (anyState) + newLength + cutShort, anyState },
                } };
                const auto way = std::max_element (ways.begin(), ways.end(),
                                                   [] (auto& a, auto& b) { return a.first < b.first; });
                sum = way->first;
                source = way->second;
            }
            else
            {
                sum = value (source);
            }
            best[s] = sum + own[k][s];
            from[k][s] = static_cast<uint8_t> (source);
        }
    }
    std::vector<size_t> path (own.size());
    auto s = static_cast<size_t> (std::max_element (best.begin(), best.end()) - best.begin());
    for (auto k = own.size(); k-- > 0;)
    {
        path[k] = s;
        s = from[k][s];
    }
    return path;
}
}

BarTrack::Bars BarTrack::follow (std::span<const Beat> beats)
{
    Bars bars;
    if (beats.empty())
        return bars;
    const auto path = bestStates (evidence (beats));
    // The even count that most beats agree with: by length of the bar and by the first beat's number modulo that.
    std::map<std::pair<int, int>, int> agreeing;
    for (size_t k = 0; k < path.size(); ++k)
    {
        const auto [length, place] = states[path[k]];
        const auto number = static_cast<int> (k);
        if (place == 0)
            bars.firsts.push_back (number);
        ++agreeing[{ length, ((number - place) % length + length) % length }];
    }
    const auto most = std::max_element (agreeing.begin(), agreeing.end(),
                                        [] (auto& a, auto& b) { return a.second < b.second; });
    bars.beatsPerBar = most->first.first;
    bars.downbeat = most->first.second;
    bars.certainty = static_cast<double> (most->second) / static_cast<double> (path.size());
    return bars;
}
