#include "analysis/beats/CaufTakt3.h"

#include <algorithm>

namespace
{
constexpr int segmentSeconds = 30, enoughSeconds = 45;

/** A result that holds for the whole signal counts this much beside a segment's. */
constexpr double wholeWeight = 2.0;
}

void CaufTAKT3::judge (double firstFrame, double endFrame, double weight)
{
    auto result = bars.evaluate (onsets.intern(), firstFrame, endFrame);
    result.weight = weight;
    if (!result.isKnown() || (best.isKnown() && result.confidence * weight <= best.confidence * best.weight))
        return;
    best = result;
    framesInSegment = static_cast<int> (endFrame - firstFrame);
    tempo = static_cast<float> (best.bpm (rate));
}

void CaufTAKT3::take (std::span<const float> mono)
{
    framesTaken += static_cast<int64_t> (mono.size());
    framesSeen += static_cast<int64_t> (mono.size());
    const int64_t segment = static_cast<int64_t> (rate) * segmentSeconds;
    if (framesSeen <= static_cast<int64_t> (rate) * enoughSeconds)
        return;
    judge (static_cast<double> (framesTaken - segment), static_cast<double> (framesTaken), 1.0);
    framesSeen -= segment;
}

void CaufTAKT3::concludeTempo()
{
    const auto end = static_cast<double> (framesTaken);
    const auto segment = static_cast<double> (rate) * segmentSeconds;
    if (!best.isKnown() || static_cast<double> (framesSeen) > segment)
        judge (std::max (0.0, end - segment), end, 1.0);
    judge (0.0, end, wholeWeight);
    if (!best.isKnown())
        return;
    tempo = static_cast<float> (best.bpm (rate));
    while (tempo > 165.0f)
        tempo /= 2.0f;
    while (tempo < 65.0f)
        tempo *= 2.0f;
    estimate = tempo;
}
