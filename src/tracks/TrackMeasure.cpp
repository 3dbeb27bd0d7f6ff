#include "tracks/TrackMeasure.h"

#include "analysis/loudness/Autogain.h"

#include <algorithm>
#include <cmath>

TrackMeasure::TrackMeasure (double trackRate, std::optional<bool> isClip)
    : rate (trackRate),
      clipFrames (static_cast<size_t> (std::ceil (TrackAnalyser::clipSeconds * rate))),
      loudness (rate)
{
    if (isClip)
        analyser.emplace (rate, *isClip);
}

void TrackMeasure::add (const float* left, const float* right, int frames)
{
    loudness.add (left, right, frames);
    if (listener != nullptr)
        listener->add (left, right, frames);
    if (analyser)
        return analyser->add (left, right, frames);
    heldLeft.insert (heldLeft.end(), left, left + frames);
    heldRight.insert (heldRight.end(), right, right + frames);
    if (heldLeft.size() >= clipFrames)
        decide (false);
}

void TrackMeasure::add (const int16_t* left, const int16_t* right, int frames)
{
    jassert (analyser.has_value());
    loudness.add (left, right, frames);
    if (listener != nullptr)
        listener->add (left, right, frames);
    analyser->add (left, right, frames);
}

TrackAnalysis TrackMeasure::finish (int tempoRangeIndex, TrackAnalysis found)
{
    if (!analyser)
        decide (true);
    analyser->finish (tempoRangeIndex, found);
    if (const auto gain = loudness.gainDb())
        found.autogain = Autogain::factorFor (*gain);
    found.untouched = { found.tempoTracker, found.downbeatPos };
    found.confidence = analyser->confidence();
    return found;
}

void TrackMeasure::decide (bool isClip)
{
    analyser.emplace (rate, isClip);
    const auto frames = static_cast<int> (heldLeft.size());
    for (int done = 0; done < frames; done += TrackAnalyser::blockFrames)
        analyser->add (heldLeft.data() + done, heldRight.data() + done,
                       std::min (TrackAnalyser::blockFrames, frames - done));
    heldLeft = {};
    heldRight = {};
}
