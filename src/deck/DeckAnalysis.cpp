#include "deck/DeckAnalysis.h"

#include "analysis/files/AnalysisFile.h"
#include "deck/DeckWorld.h"

#include <algorithm>

namespace
{
static_assert (TrackAnalysis::cueCount == cueSlotCount && TrackAnalysis::unsetCue == emptyCue);

/** Half beats of the track: those of its table or, without one, those of its tempo. */
double numberOfBeats (const DeckPlayer& deck)
{
    if (deck.numBeats > 0)
        return deck.numBeats;
    return deck.sampleRate > 0.0 ? deck.loadedFrames / deck.sampleRate * deck.bpm / 30.0 : 0.0;
}

bool isHandMade (const TrackAnalysis::Cues& cues)
{
    const auto isSet = [] (double cue) { return cue > emptyCue; };
    return std::any_of (cues.cuePos.begin(), cues.cuePos.end(), isSet)
           || cues.transportStart.value_or (0) != 0;
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
    deck.isAnalysed = hasGrid ? 1 : 0;
    deck.beats.swap (marks);
    deck.numBeats = static_cast<int32_t> (deck.beats.size());
    deck.downbeatIndex = analysis.downbeatId;
    deck.downbeatPosition = analysis.downbeatPos;
    deck.bpm = analysis.tempoTracker;
    deck.bpmAverage = analysis.tempoAverage;
    if (analysis.gridMode)
        deck.fixedGrid = *analysis.gridMode != 0 ? 1 : 0;
    if (analysis.autogain)
        deck.autogain = *analysis.autogain;
    if (!analysis.cues)
        return;
    std::copy (analysis.cues->cuePos.begin(), analysis.cues->cuePos.end(), deck.cues.begin());
    deck.startPoint = analysis.cues->phaseStart;
    if (analysis.cues->transportCueSel)
        deck.currentCue = *analysis.cues->transportCueSel;
    if (analysis.cues->transportStart)
        deck.startPointOn = *analysis.cues->transportStart;
}

TrackAnalysis analysisOf (DeckWorld& world, DeckPlayer& deck)
{
    assertMayBlock();
    TrackAnalysis analysis;
    auto& cues = analysis.cues.emplace();
    const std::lock_guard table (deck.beatsLock);
    analysis.beatMarks = deck.beats;

    // From here on nothing is allocated: what a loader resets meanwhile is reset as a whole.
    const CallbackLock lock (world.callbackLock, "what is saved of a deck");
    if (deck.isAnalysed == 0)
        analysis.beatMarks.reset();
    analysis.tempoTracker = deck.bpm;
    analysis.tempoAverage = deck.bpmAverage;
    analysis.downbeatId = deck.downbeatIndex;
    analysis.downbeatPos = deck.downbeatPosition;
    analysis.gridMode = deck.fixedGrid.get();
    analysis.autogain = deck.autogain.get();
    std::copy (deck.cues.begin(), deck.cues.end(), cues.cuePos.begin());
    cues.phaseStart = deck.startPoint;
    cues.transportCueSel = deck.currentCue.get();
    cues.transportStart = deck.startPointOn.get();
    return analysis;
}

bool loadAnalysis (DeckWorld& world, DeckPlayer& deck)
{
    auto analysis = AnalysisFile::read (deck.texts().analysisPath);
    if (!analysis)
        return false;
    const auto hasGrid = analysis->beatMarks.has_value();
    if (!hasGrid)
    {
        // Whoever wrote it had measured nothing yet.
        analysis->tempoTracker = deck.bpm;
        analysis->tempoAverage = deck.bpmAverage;
        analysis->autogain.reset();
    }
    applyAnalysis (world, deck, std::move (*analysis));
    return hasGrid;
}

bool saveAnalysis (DeckWorld& world, DeckPlayer& deck)
{
    assertMayBlock();
    const auto path = deck.texts().analysisPath;
    if (path.isEmpty() || deck.loadedFrames < 1 || numberOfBeats (deck) <= 0.0)
        return true;
    auto analysis = analysisOf (world, deck);
    if (deck.texts().analysisPath != path)
        return true; // a loader was quicker, and has saved the old track itself
    if (!analysis.beatMarks)
    {
        if (!isHandMade (*analysis.cues))
            return true;
        // Somebody else may have analysed the track meanwhile.
        if (auto stored = AnalysisFile::read (path); stored && stored->beatMarks)
        {
            stored->cues = analysis.cues;
            analysis = std::move (*stored);
        }
    }
    return AnalysisFile::write (path, analysis);
}

void requestSaveAnalysis (DeckWorld& world, DeckPlayer& deck) noexcept
{
    world.listeners.post (EngineEvent::analysisChanged, deck.index);
}
