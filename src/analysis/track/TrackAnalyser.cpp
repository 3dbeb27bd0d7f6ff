#include "analysis/track/TrackAnalyser.h"

#include <algorithm>
#include <cmath>

namespace
{
void toFloat (const int16_t* source, float* target, int frames)
{
    for (int i = 0; i < frames; ++i)
        target[i] = static_cast<float> (source[i]) * (1.0f / 32768.0f);
}
}

TrackAnalyser::TrackAnalyser (double rate, bool isClip)
{
    CaufTAKT_If* made = nullptr;
    const auto hertz = rate >= 1.0 && rate <= 1e9 ? static_cast<int> (std::lround (rate)) : 0;
    CaufTAKT_If::CreateInstance (&made, hertz, 2, isClip ? 0 : 1);
    tracker.reset (made);
}

void TrackAnalyser::add (const float* left, const float* right, int frames)
{
    const float* const channels[] { left, right };
    if (canAnalyse())
        tracker->process (channels, frames);
}

void TrackAnalyser::add (const int16_t* left, const int16_t* right, int frames)
{
    leftBlock.resize (blockFrames);
    rightBlock.resize (blockFrames);
    for (int done = 0; done < frames; done += blockFrames)
    {
        const auto piece = std::min (blockFrames, frames - done);
        toFloat (left + done, leftBlock.data(), piece);
        toFloat (right + done, rightBlock.data(), piece);
        add (leftBlock.data(), rightBlock.data(), piece);
    }
}

void TrackAnalyser::finish (int tempoRangeIndex, TrackAnalysis& target)
{
    auto& marks = target.beatMarks.emplace();
    target.downbeatId = target.downbeatPos = 0;
    if (!canAnalyse())
        return;
    tracker->flush (true);
    if (const auto tempo = tracker->getTempoEstimate();
        tempo > 0.0f && static_cast<double> (tempo) < lowestOf (tempoRangeIndex))
        tracker->setTempo (2.0f * tempo);
    tracker->trackBeats (0.0f, 0, 0, 0);

    const auto count = tracker->getNumberOfBeats (CaufTAKT_If::beatList);
    marks.resize (static_cast<size_t> (std::max (count, 0)));
    for (int i = 0; i < count; ++i)
    {
        CaufTAKT_If::Beat beat;
        tracker->getBeat (&beat, i, CaufTAKT_If::beatList);
        marks[static_cast<size_t> (i)] = { beat.position, beat.bpm };
    }
    if (marks.empty())
        return;
    const auto downbeat = std::clamp (tracker->getDownbeatIndex (CaufTAKT_If::beatList, 0), 0, count - 1);
    target.downbeatId = downbeat;
    target.downbeatPos = marks[static_cast<size_t> (downbeat)].pos;
    target.tempoTracker = target.tempoAverage =
        storedTempo (tracker->getAverageTempo (CaufTAKT_If::beatList));
}

double TrackAnalyser::finishNear (double seedBpm)
{
    if (!canAnalyse())
        return 0.0;
    tracker->flush (false);
    tracker->setTempo (static_cast<float> (seedBpm));
    tracker->trackBeats (0.0f, 0, 0, 0);
    const auto tempo = tracker->getAverageTempo (CaufTAKT_If::beatList);
    return tempo > 0.0 ? storedTempo (tempo) : 0.0;
}

double TrackAnalyser::storedTempo (double bpm) noexcept
{
    return std::clamp (std::ceil (100.0 * bpm - 0.49) / 100.0, lowestTempo, highestTempo);
}
