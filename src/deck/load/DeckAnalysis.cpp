#include "deck/load/DeckAnalysis.h"

#include "analysis/files/AnalysisFile.h"
#include "deck/DeckWorld.h"

#include <algorithm>

namespace
{
static_assert (TrackAnalysis::cueCount == cueSlotCount && TrackAnalysis::unsetCue == emptyCue);

/** Half beats of the track: those of its table or, without one, those of its tempo. */
double numberOfBeats (const DeckPlayer& deck)
{
    if (deck.track.numBeats > 0)
        return deck.track.numBeats;
    return deck.track.sampleRate > 0.0
               ? deck.track.loadedFrames / deck.track.sampleRate * deck.marks.bpm / 30.0
               : 0.0;
}

/** True if anything of a track without a grid was set by hand. */
bool isHandMade (const TrackAnalysis& analysis)
{
    const auto isSet = [] (double cue) { return cue > emptyCue; };
    const auto& cues = *analysis.cues;
    return std::any_of (cues.cuePos.begin(), cues.cuePos.end(), isSet)
           || cues.transportStart.value_or (0) != 0 || isTempoByHand (analysis);
}
}

void applyAnalysis (DeckWorld& world, DeckPlayer& deck, TrackAnalysis analysis)
{
    assertMayBlock();
    const auto hasGrid = analysis.beatMarks.has_value();
    auto marks = std::move (analysis.beatMarks).value_or (std::vector<BeatMark>());
    // The old table is freed behind both locks.
    const std::lock_guard table (deck.beatsLock);
    const CallbackLock lock (world.callbackLock, "analysis");
    deck.track.isAnalysed = hasGrid ? 1 : 0;
    deck.beats.swap (marks);
    deck.untouched = analysis.untouched;
    deck.track.numBeats = static_cast<int32_t> (deck.beats.size());
    deck.marks.tableStep = 1.0;
    deck.marks.tableOffset = 0.0;
    deck.marks.downbeatIndex = analysis.downbeatId;
    deck.marks.downbeatPosition = analysis.downbeatPos;
    deck.marks.bpm = analysis.tempoTracker;
    deck.marks.bpmAverage = analysis.tempoAverage;
    deck.marks.confidence = static_cast<int8_t> (analysis.confidence);
    if (analysis.gridMode)
        deck.marks.fixedGrid = *analysis.gridMode != 0 ? 1 : 0;
    if (analysis.autogain)
        deck.track.autogain = *analysis.autogain;
    if (!analysis.cues)
        return;
    std::copy (analysis.cues->cuePos.begin(), analysis.cues->cuePos.end(), deck.marks.cues.begin());
    deck.marks.startPoint = analysis.cues->phaseStart;
    if (analysis.cues->transportCueSel)
        deck.play.currentCue = *analysis.cues->transportCueSel;
    if (analysis.cues->transportStart)
        deck.marks.startPointOn = *analysis.cues->transportStart;
}

TrackAnalysis untouchedAnalysisOf (DeckWorld& world, DeckPlayer& deck)
{
    auto analysis = analysisOf (world, deck);
    if (analysis.untouched)
    {
        analysis.tempoTracker = analysis.tempoAverage = analysis.untouched->tempo;
        analysis.downbeatPos = analysis.untouched->downbeatPos;
    }
    return analysis;
}

void applyWhereUntouched (DeckWorld& world, DeckPlayer& deck, const TrackAnalysis& before,
                          TrackAnalysis found)
{
    applyAnalysis (world, deck, mergeFields (before, analysisOf (world, deck), found));
}

TrackAnalysis analysisOf (DeckWorld& world, DeckPlayer& deck)
{
    assertMayBlock();
    TrackAnalysis analysis;
    auto& cues = analysis.cues.emplace();
    BeatGrid grid;
    const std::lock_guard table (deck.beatsLock);
    analysis.beatMarks = deck.beats;
    analysis.untouched = deck.untouched;
    {
        // Nothing is allocated: what a loader resets meanwhile is reset as a whole.
        const CallbackLock lock (world.callbackLock, "what is saved of a deck");
        if (deck.track.isAnalysed == 0)
            analysis.beatMarks.reset();
        grid = deck.grid();
        analysis.tempoTracker = deck.marks.bpm;
        analysis.tempoAverage = deck.marks.bpmAverage;
        analysis.confidence = deck.marks.confidence;
        analysis.downbeatId = deck.marks.downbeatIndex;
        analysis.downbeatPos = deck.marks.downbeatPosition;
        analysis.gridMode = deck.marks.fixedGrid.get();
        analysis.autogain = deck.track.autogain.get();
        std::copy (deck.marks.cues.begin(), deck.marks.cues.end(), cues.cuePos.begin());
        cues.phaseStart = deck.marks.startPoint;
        cues.transportCueSel = deck.play.currentCue.get();
        cues.transportStart = deck.marks.startPointOn.get();
    }
    if (analysis.beatMarks && grid.isReadAnew())
        analysis.beatMarks = grid.readTable();
    return analysis;
}

namespace
{
void setStored (DeckPlayer& deck, std::optional<TrackAnalysis> analysis)
{
    const std::lock_guard guard (deck.beatsLock);
    deck.storedAnalysis.swap (analysis);
}

bool isStored (DeckPlayer& deck, const TrackAnalysis& analysis)
{
    const std::lock_guard guard (deck.beatsLock);
    return deck.storedAnalysis == analysis;
}

TrackAnalysis lastKnown (DeckPlayer& deck)
{
    const std::lock_guard guard (deck.beatsLock);
    return deck.storedAnalysis.value_or (TrackAnalysis());
}
}

bool loadAnalysis (DeckWorld& world, DeckPlayer& deck)
{
    setStored (deck, std::nullopt);
    auto analysis = AnalysisFile::read (deck.texts().analysisPath);
    const TrackAnalysis::Untouched beginning { deck.marks.bpm, deck.marks.downbeatPosition };
    if (!analysis)
    {
        const std::lock_guard guard (deck.beatsLock);
        deck.untouched = beginning;
        return false;
    }
    const auto hasGrid = analysis->beatMarks.has_value();
    if (!hasGrid)
    {
        // Whoever wrote it had measured nothing yet.
        if (!analysis->untouched || !isTempoByHand (*analysis))
        {
            analysis->tempoTracker = deck.marks.bpm;
            analysis->tempoAverage = deck.marks.bpmAverage;
            analysis->untouched = beginning;
        }
        analysis->autogain.reset();
    }
    applyAnalysis (world, deck, std::move (*analysis));
    setStored (deck, analysisOf (world, deck));
    return hasGrid;
}

bool saveAnalysis (DeckWorld& world, DeckPlayer& deck)
{
    assertMayBlock();
    const auto path = deck.texts().analysisPath;
    if (path.isEmpty() || isStored (deck, analysisOf (world, deck)))
        return true;
    return AnalysisFile::update (
        path,
        [&] (const std::optional<TrackAnalysis>& stored) -> std::optional<TrackAnalysis>
        {
            auto mine = analysisOf (world, deck);
            // In this order: a deck whose track is leaving loses first its frames and then its path.
            if (deck.isEmpty() || deck.texts().analysisPath != path || numberOfBeats (deck) <= 0.0
                || isStored (deck, mine) || (!mine.beatMarks && !isHandMade (mine)))
                return std::nullopt;
            auto merged = stored ? mergeFields (lastKnown (deck), mine, *stored) : mine;
            if (!mine.beatMarks && stored && stored->beatMarks)
            {
                // Somebody else has analysed the track meanwhile, and this deck has no values of its own yet.
                merged = *stored;
                merged.cues = mergeFields (lastKnown (deck), mine, *stored).cues;
            }
            setStored (deck, std::move (mine));
            return merged;
        });
}

void tellGrid (DeckWorld& world, DeckPlayer& deck)
{
    const auto analysis = analysisOf (world, deck);
    if (const auto path = deck.texts().filePath;
        path.isNotEmpty() && analysis.beatMarks && !analysis.beatMarks->empty())
        world.listeners.postGrid ({ path, analysis.tempoTracker, confidenceOf (analysis).value_or (-1) });
}
