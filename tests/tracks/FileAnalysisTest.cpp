#include "tracks/FileAnalysis.h"
#include "adec/BuiltDecoder.h"
#include "analysis/files/AnalysisFile.h"
#include "shared/DrumFile.h"
#include "shared/TemporaryFolder.h"
#include "tracks/BatchAnalysis.h"

#include <gtest/gtest.h>

namespace
{
FileAnalysis::Result analyse (const juce::File& track, const juce::File& folder, bool isAgain = false)
{
    static const AdecSharedLibrary decoder { juce::File (builtDecoder()) };
    Pacing pacing (Pacing::Mode::offline);
    FileAnalysis::Request request;
    request.track = track;
    request.folder = folder;
    request.isAgain = isAgain;
    return FileAnalysis::run (request, decoder, pacing);
}
}

TEST (FileAnalysis, ReadsWhatIsKeptAndOnlyForcedKeepsHandsWork)
{
    const TemporaryFolder folder;
    const auto track = writeDrums (folder.file ("a.wav"), 6.0, 128.0), marks = folder.file ("marks");
    auto told = analyse (track, marks).analysis;
    told.tempoTracker = told.tempoAverage = 128.5;
    told.cues.emplace().cuePos[9] = 99.0;
    const auto file = AnalysisFile::forTrack (marks, track);
    ASSERT_TRUE (AnalysisFile::write (file, told));

    const auto read = analyse (track, marks);
    EXPECT_TRUE (read.wasStored);
    EXPECT_EQ (read.sampleRate, 0.0) << "the track itself is not opened";
    EXPECT_EQ (read.analysis.tempoTracker, 128.5);
    const auto again = analyse (track, marks, true);
    EXPECT_FALSE (again.wasStored);
    EXPECT_EQ (again.analysis.tempoTracker, 128.5) << "a tempo that a hand set by a little stays";
    EXPECT_EQ (AnalysisFile::read (file)->cues->cuePos[9], 99.0);

    folder.file ("text.wav").replaceWithText ("words");
    EncodedFiles::writeWav (EncodedFiles::makeNoise (6, 4410, 44100.0), 44100.0, folder.file ("six.wav"));
    for (const auto* name : { "text.wav", "six.wav", "missing.wav", "marks" })
        EXPECT_TRUE (analyse (folder.file (name), marks).fault.endsWith (".")) << name;
}

TEST (FileAnalysis, ABatchGoesThroughItsListAndTellsTempos)
{
    struct Hearing : EngineListener
    {
        void engineEvent (EngineEvent, int) override {}
        void engineMessage (const juce::String&, int) override {}
        void gridFound (const FoundGrid& grid) override
        {
            heard << juce::File (grid.path).getFileNameWithoutExtension() << " "
                  << juce::roundToInt (grid.bpm) << ",";
        }
        juce::String heard;
        ListenerList listeners;
        EngineSettings settings;
        Pacing pacing { Pacing::Mode::offline };
    } engine;
    const TemporaryFolder folder;
    const auto marks = folder.file ("beatmarks");
    engine.listeners.add (engine);
    juce::StringArray paths;
    folder.file ("b.wav").replaceWithText ("no audio");
    for (const auto& track : { writeDrums (folder.file ("a.wav"), 6.0, 120.0), folder.file ("b.wav"),
                               writeDrums (folder.file ("c.wav"), 6.0, 110.0, 1) })
        paths.add (track.getFullPathName());

    BatchAnalysis batch (juce::File (builtDecoder()), marks, engine.settings, engine.listeners,
                         engine.pacing);
    EXPECT_EQ (batch.progress().text(), "");
    batch.addFiles (paths);
    for (auto at = batch.progress(); at.isRunning; at = batch.progress())
    {
        if (at.name.isEmpty())
            continue;
        ASSERT_EQ (at.text(), "Analyzing [" + juce::String (at.done) + "/3] : " + at.name);
    }
    engine.listeners.deliver();
    EXPECT_EQ (engine.heard, "a 120,c 110,");

    // A mono file is measured as both its sides sound.
    const auto mono = AnalysisFile::read (AnalysisFile::forTrack (marks, paths[2]));
    ASSERT_TRUE (mono);
    EXPECT_NE (mono->autogain.value_or (1.0), 1.0);
    EXPECT_FALSE (mono->cues);

    const auto longTrack = writeDrums (folder.file ("long.wav"), 300.0, 120.0).getFullPathName();
    for (int i = 0; i < 50; ++i)
        batch.addFiles ({ longTrack });
    batch.stop();
    EXPECT_FALSE (batch.progress().isRunning);
    EXPECT_FALSE (AnalysisFile::read (AnalysisFile::forTrack (marks, longTrack)));
    batch.addFiles (paths);
    batch.waitUntilIdle();
    engine.listeners.deliver();
    EXPECT_EQ (engine.heard, "a 120,c 110,a 120,c 110,");
    batch.addFiles ({ longTrack }); // runs when everything ends
    engine.listeners.remove (engine);
}
