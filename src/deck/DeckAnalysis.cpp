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
    if (deck.track.numBeats > 0)
        return deck.track.numBeats;
    return deck.track.sampleRate > 0.0
               ? deck.track.loadedFrames / deck.track.sampleRate * deck.marks.bpm / 30.0
               : 0.0;
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
    deck.track.isAnalysed = hasGrid ? 1 : 0;
    deck.beats.swap (marks);
    deck.track.numBeats = static_cast<int32_t> (deck.beats.size());
    deck.marks.downbeatIndex = analysis.downbeatId;
    deck.marks.downbeatPosition = analysis.downbeatPos;
    deck.marks.bpm = analysis.tempoTracker;
    deck.marks.bpmAverage = analysis.tempoAverage;
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

TrackAnalysis analysisOf (DeckWorld& world, DeckPlayer& deck)
{
    assertMayBlock();
    TrackAnalysis analysis;
    auto& cues = analysis.cues.emplace();
    const std::lock_guard table (deck.beatsLock);
    analysis.beatMarks = deck.beats;

    // From here on nothing is allocated: what a loader resets meanwhile is reset as a whole.
    const CallbackLock lock (world.callbackLock, "what is saved of a deck");
    if (deck.track.isAnalysed == 0)
        analysis.beatMarks.reset();
    analysis.tempoTracker = deck.marks.bpm;
    analysis.tempoAverage = deck.marks.bpmAverage;
    analysis.downbeatId = deck.marks.downbeatIndex;
    analysis.downbeatPos = deck.marks.downbeatPosition;
    analysis.gridMode = deck.marks.fixedGrid.get();
    analysis.autogain = deck.track.autogain.get();
    std::copy (deck.marks.cues.begin(), deck.marks.cues.end(), cues.cuePos.begin());
    cues.phaseStart = deck.marks.startPoint;
    cues.transportCueSel = deck.play.currentCue.get();
    cues.transportStart = deck.marks.startPointOn.get();
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
}

bool loadAnalysis (DeckWorld& world, DeckPlayer& deck)
{
    setStored (deck, std::nullopt);
    auto analysis = AnalysisFile::read (deck.texts().analysisPath);
    if (!analysis)
        return false;
    const auto hasGrid = analysis->beatMarks.has_value();
    if (!hasGrid)
    {
        // Whoever wrote it had measured nothing yet.
        analysis->tempoTracker = deck.marks.bpm;
        analysis->tempoAverage = deck.marks.bpmAverage;
        analysis->autogain.reset();
    }
    applyAnalysis (world, deck, std::move (*analysis));
    if (hasGrid)
        setStored (deck, analysisOf (world, deck));
    return hasGrid;
}

bool saveAnalysis (DeckWorld& world, DeckPlayer& deck)
{
    assertMayBlock();
    const auto path = deck.texts().analysisPath;
    if (path.isEmpty() || deck.track.loadedFrames < 1 || numberOfBeats (deck) <= 0.0)
        return true;
    auto analysis = analysisOf (world, deck);
    if (isStored (deck, analysis))
        return true;
    const auto ofDeck = analysis;
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
    if (!AnalysisFile::write (path, analysis))
        return false;
    setStored (deck, ofDeck);
    return true;
}

void requestSaveAnalysis (DeckWorld& world, DeckPlayer& deck) noexcept
{
    world.requests.ask (EngineRequest::saveAnalysis, deck.index);
}
