#pragma once

#include "timecode/ControlMedium.h"

#include <functional>
#include <vector>

/** The signal of a needle that moves along a medium, with its true place. */
struct ControlSignal
{
    static constexpr double needleUp = -1;

    double rate = 44100;
    std::vector<float> left, right;
    std::vector<double> place; ///< seconds of the medium, or needleUp

    std::size_t size() const noexcept { return place.size(); }
    std::size_t at (double seconds) const noexcept { return static_cast<std::size_t> (seconds * rate); }
};

/** @param speedAt  speed at a time in seconds, 1 nominal; nothing lifts the needle */
ControlSignal play (const ControlMedium&, double start, double seconds,
                    const std::function<std::optional<double> (double)>& speedAt, double rate = 44100);

/** Adds equal noise of a level, as a share of full scale, to both channels. */
void addNoise (ControlSignal&, float level);

/** Changes each frame: (left, right, seconds). */
void change (ControlSignal&, const std::function<void (float&, float&, double)>&);
