#include "timecode/deckmode/RecordServo.h"

#include "support/OnePole.h"

#include <algorithm>
#include <cmath>

namespace
{
constexpr double usualSeconds = 0.05;  // over which the usual speed is taken
constexpr double handFrom = 0.04;      // of the usual speed: beyond flutter and a pitch fader's move
constexpr double slowestPulled = 0.25; // below it a pull would be heard as movement
constexpr double closingSeconds = 1.0;
}

void RecordServo::reset() noexcept
{
    usual = evenSeconds = 0;
}

void RecordServo::observe (const float* speeds, int frames, double engineRate) noexcept
{
    if (frames < 1)
        return;
    const auto [lowest, highest] = std::minmax_element (speeds, speeds + frames);
    const auto stray = std::max (std::abs (static_cast<double> (*highest) - usual),
                                 std::abs (static_cast<double> (*lowest) - usual));
    const auto seconds = frames / engineRate;
    evenSeconds = stray > handFrom * std::abs (usual) ? 0.0 : std::min (1.0, evenSeconds + seconds);
    usual = OnePole::approached (usual, static_cast<double> (speeds[frames - 1]),
                                 std::exp (-seconds / usualSeconds));
}

float RecordServo::pullFor (double gap) const noexcept
{
    const auto pace = std::abs (usual);
    if (!isEven() || pace < slowestPulled)
        return 0.0f;
    return static_cast<float> (std::clamp (gap / closingSeconds, -greatestPull * pace, greatestPull * pace));
}
