#include "deck/load/DeckAnalysis.h"
#include "DeckFixture.h"
#include "adec/BuiltDecoder.h"
#include "analysis/files/AnalysisFile.h"
#include "shared/DrumFile.h"
#include "shared/TemporaryFolder.h"
#include "tracks/FileAnalysis.h"

#include <gtest/gtest.h>

namespace
{
/** Decks that store what they find. */
struct StoringDecks : DeckFixture, EngineListener
{
    StoringDecks() : DeckFixture (juce::File (builtDecoder()))
    {
        world.beatmarks = folder.file ("beatmarks");
        listeners.add (*this);
    }

    ~StoringDecks() override { listeners.remove (*this); }

    void engineEvent (EngineEvent, int) override {}
    void engineMessage (const juce::String&, int) override {}
    void gridFound (const FoundGrid& grid) override
    {
        tempos.emplace_back (grid.path, grid.bpm);
        confidence = grid.confidence;
    }

    void load (const juce::File& file, int index = 0)
    {
        loaders->load (file, index);
        loaders->waitUntilIdle (index);
        listeners.deliver();
    }

    /** Begins a load and returns when the first frames of that track are there. */
    void beginLoad (const juce::File& file)
    {
        loaders->load (file, 0);
        while (deck().texts().filePath != file.getFullPathName() || deck().track.loadedFrames < 1)
            juce::Thread::yield();
    }

    juce::File storedFor (const juce::File& track) const
    {
        return AnalysisFile::forTrack (world.beatmarks, track);
    }

    std::optional<TrackAnalysis> stored (const juce::File& track) const
    {
        return AnalysisFile::read (storedFor (track));
    }

    const TemporaryFolder folder;
    std::vector<std::pair<juce::String, double>> tempos;
    int confidence = -1; ///< told last
};

using Tempos = std::vector<std::pair<juce::String, double>>;
}

TEST (DeckAnalysis, ATrackIsAnalysedOnceAndReadFromThenOn)
{
    StoringDecks decks;
    const auto track = writeDrums (decks.folder.file ("drums.wav"), 35.0, 125.0);
    decks.load (track);
    auto& deck = decks.deck();
    EXPECT_NEAR (deck.marks.bpm, 125.0, 0.05);
    EXPECT_EQ (deck.marks.bpmAverage, deck.marks.bpm);
    EXPECT_NEAR (deck.track.numBeats, 2 * 35 * 125 / 60, 4);
    EXPECT_NE (deck.track.autogain, 1.0);
    EXPECT_EQ (decks.tempos, (Tempos { { track.getFullPathName(), deck.marks.bpm } }));
    EXPECT_EQ (decks.stored (track), std::optional (analysisOf (decks.world, deck)));
    // Full beats are every second mark, on the strong noises.
    const auto beat = deck.grid().nearestEvenBeat (441'000.0);
    ASSERT_TRUE (beat);
    const auto phase = *beat / 44100.0 * 125.0 / 60.0;
    EXPECT_NEAR (phase, std::round (phase), 0.03);

    // The values of the file are taken, to the last bit, by any deck and after a move.
    auto told = *decks.stored (track);
    told.tempoTracker = 99.125;
    told.gridMode = 1;
    told.cues->cuePos[3] = 1234.5;
    told.cues->transportCueSel = 3;
    told.cues->phaseStart = 77.0;
    told.cues->transportStart = 1;
    ASSERT_TRUE (AnalysisFile::write (decks.storedFor (track), told));
    const auto moved = decks.folder.file ("moved");
    moved.createDirectory();
    const auto elsewhere = moved.getChildFile (track.getFileName());
    ASSERT_TRUE (track.copyFileTo (elsewhere));
    decks.load (elsewhere, 1);
    EXPECT_EQ (decks.deck (1).marks.bpm, 99.125);
    EXPECT_EQ (decks.deck (1).marks.fixedGrid, 1);
    EXPECT_EQ (decks.deck (1).marks.cues[3], 1234.5);
    EXPECT_EQ (decks.deck (1).play.currentCue, 3);
    EXPECT_EQ (decks.deck (1).marks.startPoint, 77.0);
    EXPECT_EQ (decks.deck (1).marks.startPointOn, 1);
    EXPECT_EQ (decks.deck (1).beats, *told.beatMarks);
    EXPECT_EQ (analysisOf (decks.world, decks.deck (1)), told);
    EXPECT_EQ (decks.tempos.back().second, 99.125);
}

TEST (DeckAnalysis, WhatAHandHasSetIsSavedWhenTheTrackLeaves)
{
    StoringDecks decks;
    const auto track = writeDrums (decks.folder.file ("a.wav"), 5.0, 120.0);
    const auto other = writeDrums (decks.folder.file ("b.wav"), 5.0, 100.0);
    decks.load (track);
    EXPECT_EQ (decks.stored (track)->cues->cuePos, TrackAnalysis::Cues().cuePos); // all sixteen unset
    decks.deck().marks.cues[15] = 5000.0;
    decks.deck().marks.downbeatPosition = 512;
    decks.load (other);
    EXPECT_EQ (decks.stored (track)->cues->cuePos[15], 5000.0);
    EXPECT_EQ (decks.stored (track)->downbeatPos, 512);
    EXPECT_EQ (decks.deck().marks.cues[15], emptyCue);

    // Also when the disk with the track has gone, and nothing is written over a track.
    decks.deck().marks.cues[0] = 44.0;
    const auto bytes = decks.storedFor (other);
    other.deleteFile();
    decks.load (track);
    EXPECT_EQ (AnalysisFile::read (bytes)->cues->cuePos[0], 44.0);
    EXPECT_FALSE (other.exists());

    // Or on request, on the deck's own thread.
    decks.deck().marks.cues[1] = 55.0;
    decks.loaders->saveSoon (0);
    decks.loaders->waitUntilIdle (0);
    EXPECT_EQ (decks.stored (track)->cues->cuePos[1], 55.0);

    // A grid that is read anew lies in the file as it is read.
    ASSERT_TRUE (decks.grids.read (0, *GridReading::find ("4/3")));
    const auto read = decks.deck().grid().readTable();
    decks.load (writeDrums (decks.folder.file ("c.wav"), 5.0, 100.0));
    decks.load (track);
    EXPECT_EQ (decks.deck().beats, read);
    EXPECT_FALSE (decks.deck().grid().isReadAnew());
    EXPECT_NEAR (decks.deck().marks.bpm, 160.0, 1.0);
}

TEST (DeckAnalysis, AGridThatAHandTrustsIsToldAndStaysUntilTheHandTakesItBack)
{
    StoringDecks decks;
    const auto track = writeDrums (decks.folder.file ("a.wav"), 5.0, 120.0);
    decks.load (track);
    const auto found = decks.deck().marks.confidence.get();
    EXPECT_EQ (decks.confidence, found);
    EXPECT_LT (found, TrackAnalysis::sureByHand);
    const auto saved = [&]
    {
        decks.loaders->saveSoon (0);
        decks.loaders->waitUntilIdle (0);
        decks.listeners.deliver();
        return decks.stored (track)->confidence;
    };
    for (const auto* name : { "right", "half" })
    {
        ASSERT_TRUE (decks.grids.read (0, *GridReading::find (name)));
        EXPECT_EQ (saved(), TrackAnalysis::sureByHand) << name;
        EXPECT_EQ (decks.confidence, TrackAnalysis::sureByHand) << name;
        auto fresh = *decks.stored (track);
        fresh.beatMarks = std::vector<BeatMark> { { 0, 100.0 } };
        fresh.confidence = 20;
        EXPECT_EQ (mergeFresh (*decks.stored (track), fresh), *decks.stored (track)) << name;
        decks.grids.undo (0);
        EXPECT_EQ (saved(), found) << name;
        EXPECT_EQ (decks.confidence, found) << name;
    }
}

TEST (DeckAnalysis, AFileWithoutAGridIsMadeWholeAndItsCuesStay)
{
    StoringDecks decks;
    const auto track = writeDrums (decks.folder.file ("a.wav"), 5.0, 120.0);
    const auto file = decks.storedFor (track);
    TrackAnalysis gridless;
    gridless.cues.emplace().cuePos[4] = 900.0;
    ASSERT_TRUE (AnalysisFile::write (file, gridless));
    decks.load (track);
    EXPECT_GT (decks.deck().track.numBeats, 10);
    EXPECT_EQ (decks.deck().marks.cues[4], 900.0);
    ASSERT_TRUE (decks.stored (track) && decks.stored (track)->beatMarks);
    EXPECT_EQ (decks.stored (track)->cues->cuePos[4], 900.0);

    for (const char* text : { "no xml at all", "<audioAnalysis><agg/></audioAnalysis>", "" })
    {
        ASSERT_TRUE (file.replaceWithText (text));
        decks.deck().track.loadedFrames = 0; // nothing to save
        decks.load (track);
        ASSERT_TRUE (decks.stored (track)) << text;
        EXPECT_GT (decks.stored (track)->beatMarks->size(), 10u) << text;
    }
}

TEST (DeckAnalysis, ALoadThatIsBrokenOffWritesNoHalfAnalysis)
{
    StoringDecks decks;
    const auto track = writeDrums (decks.folder.file ("long.wav"), 100.0, 120.0);
    const auto next = writeDrums (decks.folder.file ("short.wav"), 3.0, 120.0);
    for (int round = 0; round < 4; ++round)
    {
        // While it is decoded, and while it is analysed.
        decks.beginLoad (track);
        while (round % 2 == 1 && decks.deck().analysisProgress < 1 && decks.deck().isLoading != 0)
            juce::Thread::yield();
        decks.load (next);
        const auto found = decks.stored (track);
        EXPECT_TRUE (!found || found->beatMarks->size() > 300);
        EXPECT_NEAR (decks.deck().marks.bpm, 120.0, 0.5);
    }

    // Cues of a track that was not analysed yet are kept all the same.
    const auto fresh = writeDrums (decks.folder.file ("fresh.wav"), 100.0, 120.0);
    decks.beginLoad (fresh);
    decks.deck().marks.cues[7] = 1000.0;
    decks.load (next);
    ASSERT_TRUE (decks.stored (fresh));
    EXPECT_EQ (decks.stored (fresh)->cues->cuePos[7], 1000.0);
    decks.load (fresh);
    EXPECT_EQ (decks.deck().marks.cues[7], 1000.0);
    EXPECT_GT (decks.deck().track.numBeats, 300);
    EXPECT_NE (decks.deck().track.autogain, 1.0) << "what was not measured yet is not kept as a gain";
}

TEST (DeckAnalysis, TheTempoIsMeasuredAnewNearTheSeedAndTheGridStays)
{
    StoringDecks decks;
    const auto track = writeDrums (decks.folder.file ("a.wav"), 40.0, 110.0);
    decks.load (track);
    auto& deck = decks.deck();
    const auto marks = deck.beats;
    const auto measureNear = [&] (double seed)
    {
        decks.world.measureTempo (0, seed);
        decks.loaders->waitUntilIdle (0);
        decks.listeners.deliver();
    };
    measureNear (56.0);
    EXPECT_NEAR (deck.marks.bpm, 55.0, 0.1);
    EXPECT_EQ (deck.marks.bpmAverage, deck.marks.bpm);
    EXPECT_EQ (decks.tempos.back().second, deck.marks.bpm);
    EXPECT_EQ (deck.beats, marks);
    EXPECT_EQ (deck.analysisProgress, 0);

    // Cut off by a load it changes nothing.
    decks.world.measureTempo (0, 56.0);
    decks.load (writeDrums (decks.folder.file ("b.wav"), 4.0, 140.0));
    EXPECT_NEAR (deck.marks.bpm, 140.0, 0.5);
}

TEST (DeckAnalysis, TheGridOfAPlayingDeckAppearsAsAWhole)
{
    StoringDecks decks;
    const auto track = writeDrums (decks.folder.file ("long.wav"), 60.0, 120.0);
    decks.loaders->load (track, 0);
    auto& deck = decks.deck();
    auto sawNone = false;
    while (deck.isLoading != 0)
    {
        const CallbackLock lock (decks.callbackLock, "block");
        deck.play.on = deck.track.loadedFrames > 44'100 ? 1 : 0;
        decks.render (512);
        const auto grid = deck.grid();
        sawNone = sawNone || grid.numBeats == 0;
        if (grid.numBeats > 0)
        {
            ASSERT_NEAR (grid.numBeats, 240, 3);
            ASSERT_NEAR (grid.beatAt (grid.numBeats - 1), 60 * 44100, 44100);
            ASSERT_EQ (grid.beatAt (grid.downbeatIndex), grid.downbeatPosition);
        }
    }
    EXPECT_TRUE (sawNone);
    EXPECT_GT (deck.track.numBeats, 0);
}

TEST (DeckAnalysis, ADeckFindsWhatTheAnalysisOfItsFileFinds)
{
    const TemporaryFolder folder;
    const AdecSharedLibrary decoder { juce::File (builtDecoder()) };
    DeckFixture decks { juce::File (builtDecoder()) };
    for (const double seconds : { 8.0, 29.5, 31.0 }) // clips, and a track
    {
        const auto track = writeDrums (folder.file ("a.wav"), seconds, 128.0);
        FileAnalysis::Request request;
        request.track = track;
        request.folder = folder.file (juce::String (seconds));
        const auto result = FileAnalysis::run (request, decoder, decks.pacing);
        decks.loaders->load (track, 0);
        decks.loaders->waitUntilIdle (0);
        EXPECT_EQ (result.fault, "");
        EXPECT_EQ (result.seconds, seconds);
        EXPECT_TRUE (result.isWritten && !result.wasStored);
        EXPECT_EQ (*result.analysis.beatMarks, decks.deck().beats) << seconds;
        EXPECT_EQ (result.analysis.tempoTracker, decks.deck().marks.bpm) << seconds;
        EXPECT_EQ (result.analysis.downbeatId, decks.deck().marks.downbeatIndex) << seconds;
        EXPECT_NEAR (*result.analysis.autogain, decks.deck().track.autogain, 0.002) << seconds;
        EXPECT_FALSE (result.analysis.cues);
    }
}

TEST (DeckAnalysis, OneTrackOnTwoDecksKeepsWhatEitherHandDid)
{
    StoringDecks decks;
    const auto track = writeDrums (decks.folder.file ("a.wav"), 8.0, 120.0);
    decks.load (track, 0);
    decks.load (track, 1);
    decks.deck (0).marks.cues[1] = 1000.0;
    decks.deck (0).marks.bpm = 60.0;
    decks.loaders->saveSoon (0);
    decks.loaders->waitUntilIdle (0);
    decks.deck (1).marks.cues[2] = 2000.0;
    decks.deck (1).marks.downbeatPosition = 777;
    decks.loaders->saveSoon (1);
    decks.loaders->waitUntilIdle (1);
    decks.deck (0).marks.cues[1] = emptyCue;
    decks.deck (0).marks.cues[3] = 3000.0;
    decks.loaders->saveSoon (0);
    decks.loaders->waitUntilIdle (0);
    const auto stored = decks.stored (track);
    ASSERT_TRUE (stored && stored->cues);
    EXPECT_EQ (stored->cues->cuePos[1], emptyCue);
    EXPECT_EQ (stored->cues->cuePos[2], 2000.0);
    EXPECT_EQ (stored->cues->cuePos[3], 3000.0);
    EXPECT_EQ (stored->tempoTracker, 60.0);
    EXPECT_EQ (stored->downbeatPos, 777);
}

TEST (DeckAnalysis, AHandDuringTheFirstAnalysisOutlivesIt)
{
    StoringDecks decks;
    const auto track = writeDrums (decks.folder.file ("long.wav"), 100.0, 120.0);
    // While the track is decoded a hand taps a tempo, and leaves: the next load knows of it.
    decks.beginLoad (track);
    {
        const CallbackLock lock (decks.callbackLock, "hand");
        decks.deck().marks.cues[2] = 5000.0;
        decks.deck().marks.bpm = decks.deck().marks.bpmAverage = 120.5;
    }
    decks.loaders->unload (0);
    decks.load (writeDrums (decks.folder.file ("other.wav"), 5.0, 100.0));
    decks.beginLoad (track);
    EXPECT_EQ (decks.deck().marks.bpm, 120.5);
    while (decks.deck().analysisProgress < 1 && decks.deck().isLoading != 0)
        juce::Thread::yield();
    {
        const CallbackLock lock (decks.callbackLock, "hand");
        decks.deck().marks.bpm = decks.deck().marks.bpmAverage = 121.0; // a tap within 2 %
        decks.deck().marks.fixedGrid = 1;
    }
    decks.loaders->waitUntilIdle (0);
    EXPECT_EQ (decks.deck().marks.bpm, 121.0);
    EXPECT_EQ (decks.deck().marks.fixedGrid, 1);
    EXPECT_EQ (decks.deck().marks.cues[2], 5000.0);
    EXPECT_GT (decks.deck().track.numBeats, 300);
    EXPECT_NE (decks.deck().track.autogain, 1.0);
    EXPECT_EQ (decks.stored (track)->tempoTracker, 121.0);
}

TEST (DeckAnalysis, AnotherAnalysisReplacesWhatNoHandHasSet)
{
    StoringDecks decks;
    const auto track = writeDrums (decks.folder.file ("a.wav"), 8.0, 120.0);
    decks.load (track);
    TrackAnalysis better;
    better.tempoTracker = better.tempoAverage = 119.0;
    better.beatMarks.emplace();
    for (int32_t i = 0; i < 30; ++i)
        better.beatMarks->push_back ({ 500 + i * 11'000, 119.0 });
    better.downbeatId = 6;
    better.downbeatPos = 66'500;
    better.untouched = { 119.0, 66'500 };
    const auto analyseAgain = [&]
    {
        auto isWritten = false;
        return AnalysisFile::writeFresh (decks.storedFor (track), better, isWritten);
    };
    // An untouched downbeat gives way to the new one.
    EXPECT_EQ (analyseAgain().downbeatPos, 66'500);

    // A tap of a tenth of a beat a minute does not, whichever side it comes from.
    decks.deck().marks.bpm = decks.deck().marks.bpmAverage = decks.deck().marks.bpm + 0.1;
    const auto tapped = decks.deck().marks.bpm.get();
    decks.loaders->saveSoon (0);
    decks.loaders->waitUntilIdle (0);
    EXPECT_EQ (analyseAgain().tempoTracker, tapped);
    decks.load (track, 1);
    EXPECT_EQ (decks.deck (1).marks.bpm, tapped);
    EXPECT_EQ (analyseAgain().tempoTracker, tapped);
}

TEST (DeckAnalysis, AFileThatCannotBeParsedIsKeptAside)
{
    StoringDecks decks;
    const auto track = writeDrums (decks.folder.file ("a.wav"), 5.0, 120.0);
    const auto file = decks.storedFor (track);
    ASSERT_TRUE (file.create() && file.replaceWithText ("cues of ten years, and a byte too much"));
    decks.load (track);
    EXPECT_TRUE (decks.stored (track));
    EXPECT_EQ (file.getSiblingFile (file.getFileName() + ".bad").loadFileAsString(),
               "cues of ten years, and a byte too much");
}
