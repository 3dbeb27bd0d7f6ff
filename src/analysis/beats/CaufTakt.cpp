#include "analysis/beats/CaufTakt.h"

#include "analysis/beats/DaLoopa.h"

#include <algorithm>
#include <cmath>

namespace
{
constexpr int judgedSeconds = 24;

/** Two estimates that agree this far are the same tempo. */
constexpr double leastAgreement = 0.94;
}

void CaufTAKT::take (std::span<const float> mono)
{
    framesTaken += static_cast<int64_t> (mono.size());
}

void CaufTAKT::concludeTempo()
{
    const auto judged = std::min (framesTaken, static_cast<int64_t> (rate) * judgedSeconds);
    const auto end = static_cast<double> (framesTaken);
    const auto found = CDaLoopa::tempoOf (onsets.intern(), end - static_cast<double> (judged), end);
    const auto loop = found.bpm;
    if (loop <= 0.0)
        return;
    tempo = static_cast<float> (loop);
    best.confidence = found.confidence;
    best.margin = found.margin;
    layMarks (0.0f);
    if (auto second = tempoOfMarks(); second > 0.0)
    {
        if (second > 150.0)
            second /= 2.0;
        if (1.0 - std::abs (loop - second) / loop >= leastAgreement)
            tempo = static_cast<float> (second);
    }
    if (tempo < 55.0f)
        tempo *= 2.0f;
    framesInSegment = static_cast<int> (judged);
    estimate = tempo;
}

double CaufTAKT::tempoOfMarks() const
{
    const auto binOf = [this] (double bpm) { return static_cast<size_t> (std::ceil (0.6 * rate / bpm)); };
    const auto first = static_cast<size_t> (0.0025 * rate), last = static_cast<size_t> (0.012 * rate) + 1;
    std::vector<int> histogram (last + 1, 0);
    std::vector<double> sums (last + 1, 0.0);
    for (int i = 0; i < marks.count(); ++i)
    {
        const double bpm = marks.at (i).bpm;
        if (!(bpm >= 50.0 && bpm <= 240.0))
            continue;
        const auto bin = std::clamp (binOf (std::ceil (10.0 * bpm) / 10.0), first, last);
        ++histogram[bin];
        sums[bin] += bpm;
    }
    const auto fullest =
        static_cast<size_t> (std::max_element (histogram.begin(), histogram.end()) - histogram.begin());
    // A bin is half a percent wide; the mean of its marks is the tempo it stands for.
    return histogram[fullest] > 0 ? std::round (100.0 * sums[fullest] / histogram[fullest]) / 100.0 : 0.0;
}
