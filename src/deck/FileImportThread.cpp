#include "deck/FileImportThread.h"

#include "analysis/files/AnalysisFile.h"
#include "analysis/loudness/Autogain.h"
#include "analysis/track/TrackAnalyser.h"
#include "deck/AnalysisThread.h"
#include "deck/DeckAnalysis.h"
#include "deck/sync/MasterDeck.h"
#include "support/files/AudioFileTypes.h"
#include "tracks/TrackDecoder.h"

namespace
{
constexpr const char* loadError = "*** Load Error ***|File not found|or DRM protected";
constexpr const char* deckLocked = "*** Deck Locked ***|Stop the deck to|load new track";
}

FileImportThread::FileImportThread (DeckWorld& w, DeckPlayer& d, const juce::File& decoderLibrary)
    : Thread ("FileImportThread"),
      world (w),
      deck (d),
      decoder (decoderLibrary)
{
    startThread();
}

FileImportThread::~FileImportThread()
{
    deck.cancelLoad = 1;
    signalThreadShouldExit();
    wake.signal();
    while (isThreadRunning())
        sleep (1);
}

void FileImportThread::waitUntilIdle() const
{
    assertMayBlock();
    while (busy)
        sleep (1);
}

void FileImportThread::request (const juce::File& file)
{
    assertMayBlock();
    const std::lock_guard guard (requestLock);
    deck.cancelLoad = 1;
    waitUntilIdle();
    deck.cancelLoad = 0;
    requested = file;
    busy = true;
    // Before the job can say anything: a listener takes what follows for this load's.
    world.listeners.post (EngineEvent::loadBegan, deck.index);
    wake.signal();
}

void FileImportThread::run()
{
    for (;;)
    {
        wake.wait();
        if (threadShouldExit())
            break;
        runJob (requested);
        deck.analysisProgress = 0;
        busy = false;
    }
    busy = false;
}

void FileImportThread::prepareDeck (const juce::File& file)
{
    {
        const CallbackLock lock (world.callbackLock, "reset of a load");
        deck.resetTrack();
    }
    deck.overview->clear();
    const auto stored =
        world.beatmarks == juce::File() ? file : AnalysisFile::forTrack (world.beatmarks, file);
    deck.setTexts ({ file.getFullPathName(),
                     file.getFileNameWithoutExtension(),
                     {},
                     {},
                     stored == file ? juce::String() : stored.getFullPathName() });
}

void FileImportThread::dropTrack()
{
    {
        const CallbackLock lock (world.callbackLock, "reset of a load");
        deck.resetTrack();
    }
    deck.setTexts ({});
    deck.cancelLoad = 1;
    if (world.settings.automixOn != 0 && deck.index < 2)
        deck.play.loadNext = 1;
    world.listeners.postMessage (loadError, deck.index);
    world.listeners.post (EngineEvent::loadFailed, deck.index);
}

void FileImportThread::analyse()
{
    const int frames = deck.track.loadedFrames;
    const double rate = deck.track.sampleRate;
    const auto *left = deck.audioMemory.left(), *right = deck.audioMemory.right();
    TrackAnalyser analyser (rate, TrackAnalyser::isClip (frames, rate));
    for (int done = 0; done < frames; done += TrackAnalyser::blockFrames)
    {
        if (deck.cancelLoad != 0)
            return;
        analyser.add (left + done, right + done, std::min (TrackAnalyser::blockFrames, frames - done));
        deck.analysisProgress = done;
        if (world.settings.lowPriorityAnalysis != 0)
            world.pacing.pause();
    }
    TrackAnalysis found;
    found.tempoTracker = deck.marks.bpm;
    found.tempoAverage = deck.marks.bpmAverage;
    analyser.finish (world.settings.tempoRangeIndex, found);
    if (deck.cancelLoad != 0)
        return;
    applyAnalysis (world, deck, std::move (found));
    if (const auto factor = Autogain::measure (left, right, frames, rate, world.pacing, deck.cancelLoad))
        deck.track.autogain = *factor;
}

void FileImportThread::runJob (const juce::File& file)
{
    const AnalysisThread::Hold noMeasurement (deck.analysisThread.get());
    saveAnalysis (world, deck);
    world.listeners.post (EngineEvent::trackLeft, deck.index);
    prepareDeck (file);
    const auto isStored = loadAnalysis (world, deck);

    decodeTrack (file, decoder, deck.trackTarget(),
                 { world.pacing, [this] { return deck.cancelLoad == 0; },
                   [this] { world.listeners.post (EngineEvent::waveformReady, deck.index); } });

    const auto cancelled = deck.cancelLoad != 0;
    if (deck.track.loadedFrames < 1 && !cancelled)
        dropTrack();
    if (deck.track.loadedFrames < 1 || cancelled)
        return;
    deck.track.peak = deck.overview->peak.get();
    world.listeners.post (EngineEvent::trackLoaded, deck.index);
    if (!isStored)
        analyse();
    if (deck.cancelLoad != 0)
        return;
    if (deck.track.numBeats > 0)
        world.listeners.postTempo (file.getFullPathName(), deck.marks.bpm);
    if (!isStored)
        saveAnalysis (world, deck);
}

void loadTrack (DeckWorld& world, const juce::File& file, int deckIndex)
{
    auto* deck = world.deck (deckIndex);
    if (deck == nullptr || deck->importThread == nullptr || !AudioFileTypes::matches (file))
        return;
    if (!file.existsAsFile())
    {
        // Nothing was asked of the deck yet: it keeps its track.
        if (world.settings.automixOn != 0 && deckIndex < 2)
            deck->play.loadNext = 1;
        world.listeners.postMessage (loadError, deckIndex);
        world.listeners.post (EngineEvent::loadFailed, deckIndex);
        return;
    }

    const auto automix = world.settings.automixOn != 0;
    if (world.settings.lockLoadedDecks != 0 && !automix && deck->play.on != 0
        && deck->heardPosition() < deck->track.loadedFrames)
        return world.listeners.postMessage (deckLocked, deckIndex);

    if (!automix && deck->play.on != 0)
    {
        const CallbackLock lock (world.callbackLock, "stop for a load");
        deck->play.on = 0;
        deck->play.cueHold = 0;
        MasterDeck::choose (world, *deck);
    }
    deck->importThread->request (file);
}

void unloadTrack (DeckWorld& world, int deckIndex)
{
    auto* deck = world.deck (deckIndex);
    if (deck == nullptr || deck->track.loadedFrames < 1 || deck->importThread->isBusy())
        return;
    const AnalysisThread::Hold noMeasurement (deck->analysisThread.get());
    saveAnalysis (world, *deck);
    {
        const CallbackLock lock (world.callbackLock, "unload");
        deck->resetTrack();
        MasterDeck::choose (world, *deck);
    }
    deck->overview->clear();
    deck->setTexts ({});
    world.listeners.post (EngineEvent::trackLeft, deckIndex);
}
