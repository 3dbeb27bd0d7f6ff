#pragma once

#include "support/AudioThread.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdio>
#include <string>

/** A knob of as many equal steps as the table has rows. */
namespace BeatSteps
{
struct Step
{
    double beats;
    const char* text; ///< in bars
};

/** Times of the delay. */
inline constexpr std::array delay {
    Step { 0.125, "1/32" }, Step { 0.25, "1/16" }, Step { 0.5, "1/8" }, Step { 0.75, "3/16" },
    Step { 1.0, "1/4" },    Step { 1.5, "3/8" },   Step { 4.0, "1" },
};

/** Periods of everything that moves to and fro. */
inline constexpr std::array modulation {
    Step { 0.25, "1/16" }, Step { 0.5, "1/8" }, Step { 0.75, "3/16" }, Step { 1.0, "1/4" },
    Step { 1.5, "3/8" },   Step { 2.0, "2/4" }, Step { 4.0, "1" },     Step { 8.0, "2" },
    Step { 16.0, "4" },    Step { 32.0, "8" },  Step { 64.0, "16" },
};

/** The row that a knob from 0 to 1 points at. */
template <size_t count>
PX_AUDIO_THREAD constexpr const Step& at (const std::array<Step, count>& steps, double value) noexcept
{
    const auto index = static_cast<int> (value * static_cast<double> (count));
    return steps[static_cast<size_t> (std::clamp (index, 0, static_cast<int> (count) - 1))];
}

/** The knob's value in the middle of the step of so many beats. */
template <size_t count>
constexpr double valueOf (const std::array<Step, count>& steps, double beats) noexcept
{
    size_t index = 0;
    while (index + 1 < count && steps[index].beats < beats)
        ++index;
    return (static_cast<double> (index) + 0.5) / static_cast<double> (count);
}
}

/** Texts of parameters that are no steps. */
namespace FxText
{
inline std::string formatted (const char* format, double value)
{
    char text[32];
    std::snprintf (text, sizeof text, format, value);
    return text;
}

inline std::string percent (double value)
{
    return formatted ("%0.f%%", value * 100.0);
}
}
