#include "analysis/files/TrackAnalysis.h"

#include <algorithm>
#include <cmath>

namespace
{
// Far wider than what decks and tracker make, and still nothing that a grid or an ear suffers from.
constexpr double lowestTempo = 1.0, highestTempo = 1000.0, highestGain = 64.0;
constexpr double lastFrame = INT32_MAX;

/** Marks follow tempo changes within a track; a hand's halving and doubling is far beyond that. */
constexpr double tempoTolerance = 0.02;

bool isTempo (double bpm)
{
    return bpm >= lowestTempo && bpm <= highestTempo;
}

double tempoOr (double bpm, double otherwise)
{
    return isTempo (bpm) ? bpm : otherwise;
}

bool isFrame (double frame)
{
    return frame >= 0.0 && frame <= lastFrame;
}

void repair (TrackAnalysis::Cues& cues)
{
    for (auto& cue : cues.cuePos)
        if (!isFrame (cue))
            cue = TrackAnalysis::unsetCue;
    if (!isFrame (cues.phaseStart))
        cues.phaseStart = 0.0;
    if (const auto slot = cues.transportCueSel.value_or (0);
        slot < 0 || slot >= static_cast<int> (TrackAnalysis::cueCount))
        cues.transportCueSel.reset();
    if (cues.transportStart)
        cues.transportStart = *cues.transportStart != 0 ? 1 : 0;
}

double middleTempo (const std::vector<BeatMark>& marks)
{
    std::vector<double> tempos;
    tempos.reserve (marks.size());
    for (const auto& mark : marks)
        tempos.push_back (mark.bpm);
    const auto middle = tempos.begin() + static_cast<std::ptrdiff_t> (tempos.size() / 2);
    std::nth_element (tempos.begin(), middle, tempos.end());
    return *middle;
}
}

void repair (TrackAnalysis& analysis)
{
    analysis.tempoTracker = tempoOr (analysis.tempoTracker, TrackAnalysis::defaultTempo);
    analysis.tempoAverage = tempoOr (analysis.tempoAverage, TrackAnalysis::defaultTempo);
    if (analysis.beatMarks && !analysis.beatMarks->empty())
    {
        auto& marks = *analysis.beatMarks;
        int64_t before = -1;
        const auto end = std::find_if (marks.begin(), marks.end(),
                                       [&before] (const BeatMark& mark)
                                       {
                                           const auto ascends = mark.pos > before;
                                           before = mark.pos;
                                           return !ascends;
                                       });
        marks.erase (end, marks.end());
        for (auto& mark : marks)
            mark.bpm = tempoOr (mark.bpm, analysis.tempoTracker);
        if (marks.empty())
            analysis.beatMarks.reset();
    }

    const auto count = analysis.beatMarks ? static_cast<int32_t> (analysis.beatMarks->size()) : 0;
    if (analysis.downbeatId < 0 || analysis.downbeatId >= count)
        analysis.downbeatId = 0;
    analysis.downbeatPos = std::max (analysis.downbeatPos, 0);
    if (analysis.cues)
        repair (*analysis.cues);
    if (analysis.untouched && (!isTempo (analysis.untouched->tempo) || analysis.untouched->downbeatPos < 0))
        analysis.untouched.reset();
    analysis.confidence = std::clamp (analysis.confidence, -1, TrackAnalysis::sureByHand);
    if (const auto gain = analysis.autogain.value_or (1.0); !(gain > 0.0 && gain <= highestGain))
        analysis.autogain.reset();
}

bool isTempoByHand (const TrackAnalysis& analysis)
{
    if (analysis.untouched)
        return analysis.tempoTracker != analysis.untouched->tempo;
    const auto hasMarks = analysis.beatMarks && !analysis.beatMarks->empty();
    return analysis.tempoTracker != analysis.tempoAverage
           || (hasMarks
               && std::abs (analysis.tempoTracker / middleTempo (*analysis.beatMarks) - 1.0)
                      > tempoTolerance);
}

bool isHandMoved (const TrackAnalysis& analysis)
{
    if (!analysis.cues || !analysis.beatMarks)
        return false;
    const auto& marks = *analysis.beatMarks;
    const auto downbeat = static_cast<size_t> (analysis.downbeatId);
    return analysis.gridMode.value_or (0) != 0 || isTempoByHand (analysis)
           || analysis.confidence == TrackAnalysis::sureByHand
           || (downbeat < marks.size() && marks[downbeat].pos != analysis.downbeatPos);
}

std::optional<int> confidenceOf (const TrackAnalysis& analysis)
{
    if (!analysis.beatMarks || analysis.beatMarks->empty())
        return std::nullopt;
    if (isHandMoved (analysis))
        return TrackAnalysis::sureByHand;
    return analysis.confidence >= 0 ? std::optional (analysis.confidence) : std::nullopt;
}

namespace
{
/** Moves the downbeat to the mark that is nearest to a position. */
void setNearestDownbeat (TrackAnalysis& analysis, int32_t position)
{
    const auto& marks = *analysis.beatMarks;
    const auto distance = [position] (const BeatMark& mark)
    { return std::abs (static_cast<int64_t> (mark.pos) - position); };
    const auto nearest =
        std::min_element (marks.begin(), marks.end(),
                          [&] (const auto& a, const auto& b) { return distance (a) < distance (b); });
    analysis.downbeatId = static_cast<int32_t> (nearest - marks.begin());
}
}

TrackAnalysis mergeFields (const TrackAnalysis& base, const TrackAnalysis& mine, const TrackAnalysis& theirs)
{
    auto merged = theirs;
    const auto take = [] (const auto& before, const auto& now, auto& field)
    {
        if (now != before)
            field = now;
    };
    take (base.tempoTracker, mine.tempoTracker, merged.tempoTracker);
    take (base.tempoAverage, mine.tempoAverage, merged.tempoAverage);
    take (base.beatMarks, mine.beatMarks, merged.beatMarks);
    take (base.gridMode, mine.gridMode, merged.gridMode);
    take (base.autogain, mine.autogain, merged.autogain);
    take (base.untouched, mine.untouched, merged.untouched);
    take (base.confidence, mine.confidence, merged.confidence);
    if (mine.beatMarks != base.beatMarks || mine.downbeatPos != base.downbeatPos
        || mine.downbeatId != base.downbeatId)
    {
        merged.downbeatId = mine.downbeatId;
        merged.downbeatPos = mine.downbeatPos;
        if (merged.beatMarks && !merged.beatMarks->empty() && merged.beatMarks != mine.beatMarks)
            setNearestDownbeat (merged, mine.downbeatPos);
    }
    if (!mine.cues)
        return merged;
    if (!merged.cues)
        merged.cues.emplace();
    const auto before = base.cues.value_or (TrackAnalysis::Cues());
    for (size_t slot = 0; slot < TrackAnalysis::cueCount; ++slot)
        take (before.cuePos[slot], mine.cues->cuePos[slot], merged.cues->cuePos[slot]);
    take (before.phaseStart, mine.cues->phaseStart, merged.cues->phaseStart);
    take (before.transportCueSel, mine.cues->transportCueSel, merged.cues->transportCueSel);
    take (before.transportStart, mine.cues->transportStart, merged.cues->transportStart);
    return merged;
}

TrackAnalysis mergeFresh (const TrackAnalysis& old, TrackAnalysis fresh)
{
    if (!old.cues)
        return fresh;
    fresh.cues = old.cues;
    const auto hasFreshGrid = fresh.beatMarks && !fresh.beatMarks->empty();
    if (isHandMoved (old) || (old.beatMarks && !hasFreshGrid))
    {
        const auto autogain = fresh.autogain;
        fresh = old;
        if (autogain)
            fresh.autogain = autogain;
        return fresh;
    }
    fresh.gridMode = old.gridMode;
    if (old.untouched && isTempoByHand (old))
    {
        fresh.tempoTracker = old.tempoTracker;
        fresh.tempoAverage = old.tempoAverage;
    }
    const auto hasOldGrid = old.beatMarks && !old.beatMarks->empty();
    if (!hasOldGrid || !hasFreshGrid || (old.untouched && old.untouched->downbeatPos == old.downbeatPos))
        return fresh;

    setNearestDownbeat (fresh, old.downbeatPos);
    fresh.downbeatPos = (*fresh.beatMarks)[static_cast<size_t> (fresh.downbeatId)].pos;
    return fresh;
}
