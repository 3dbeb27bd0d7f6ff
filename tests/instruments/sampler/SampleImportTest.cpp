#include "SamplerFixture.h"
#include "engine/ClickDecks.h"
#include "engine/EngineFixture.h"
#include "instruments/sampler/sample/SampleFile.h"
#include "instruments/sampler/sample/SampleTempo.h"

#include <sys/stat.h>

#include <thread>

TEST (SampleTempo, OfALoopIsToldByItsLength)
{
    struct Case
    {
        double seconds, bpm, beats;
    };
    for (const auto& c :
         { Case { 4.0, 120.0, 16.0 }, Case { 2.0, 120.0, 8.0 }, Case { 1.0, 120.0, 4.0 },
           Case { 0.5, 240.0, 4.0 }, Case { 3.0, 160.0, 16.0 }, Case { 30.9, 60.0 * 64 / 30.9, 128.0 } })
    {
        SampleFacts facts;
        facts.lengthFrames = static_cast<int32_t> (std::lround (c.seconds * facts.sampleRate));
        EXPECT_TRUE (SampleTempo::isLoop (facts));
        SampleTempo::byLength (facts);
        EXPECT_NEAR (facts.bpm, c.bpm, 1e-3) << c.seconds;
        EXPECT_EQ (facts.beats, c.beats) << c.seconds;
        EXPECT_EQ (facts.beatStart + facts.beatEnd, 0u);
    }
}

TEST (SampleTempo, AStatedOneGoesRoundInWholeBeats)
{
    SampleFacts facts;
    facts.lengthFrames = 4 * 22050 + 100; // four beats at 120, and a breath
    SampleTempo::byStatedTempo (facts, 120.0);
    EXPECT_EQ (facts.beats, 8.0);
    EXPECT_NEAR (facts.bpm, 119.87, 0.01);
    EXPECT_EQ (facts.beatEnd, 0u);

    facts.lengthFrames = 4 * 22050 + 9000;
    SampleTempo::byStatedTempo (facts, 120.0);
    EXPECT_EQ (facts.beats, 8.0);
    EXPECT_EQ (facts.bpm, 120.0);
    EXPECT_EQ (facts.beatEnd, 4u * 22050u);
}

TEST (SampleImport, LoadsFormatsAndSaysWhyItDoesNot)
{
    SamplerRun run;
    const auto noise = EncodedFiles::makeNoise (2, 44100, 44100.0);
    const auto wav = EncodedFiles::writeWav (noise, 44100.0, run.folder.file ("a.wav"));
    for (const auto* name : { "a.wav", "a.flac", "a.mp3", "a.ogg", "a.m4a", "a.aiff" })
    {
        const auto file = run.folder.file (name);
        if (file != wav)
            EncodedFiles::encode (wav, file);
        run.sampler().loadSample (2, file);
        EXPECT_NEAR (run.slot (2).lengthFrames, 44100, 2500) << name;
        EXPECT_EQ (run.slot (2).texts().fault, "") << name;
        EXPECT_EQ (run.slot (2).texts().name, "a");
    }
    run.folder.file ("broken.wav").replaceWithText ("RIFF no more than that");
    ASSERT_EQ (mkfifo (run.folder.file ("pipe.wav").getFullPathName().toRawUTF8(), 0600), 0);
    for (const auto& [file, fault] : { std::pair { "broken.wav", "The file is damaged or holds no audio." },
                                       { "none.wav", "The file does not exist." },
                                       { "pipe.wav", "That is a pipe or a device, and no file." } })
    {
        run.sampler().loadSample (2, run.folder.file (file));
        EXPECT_TRUE (run.slot (2).isEmpty());
        EXPECT_EQ (run.slot (2).texts().fault, fault);
    }
    run.set ("SAMPLER_PLAY_PAD_3");
    run.render (0.1);
    EXPECT_EQ (Signals::peak (run.bus), 0.0);
}

TEST (SampleImport, ASavedSampleComesBackWithItsTempoAndLoop)
{
    SamplerRun run;
    SampleFacts facts;
    facts.bpm = 174.0;
    facts.beats = 8.0;
    facts.beatStart = 1000;
    facts.beatEnd = 1000 + static_cast<uint32_t> (std::lround (4 * 60 / 174.0 * 44100));
    const auto signal = Signals::noise (70000, 3);
    putSample (run.sampler(), 0, signal, facts);
    auto isWritten = false;
    run.sampler().saveSample (0, run.folder.file ("s.wav"), [&] (bool written) { isWritten = written; });
    EXPECT_TRUE (isWritten);
    run.sampler().loadSample (1, run.folder.file ("s.wav"));
    EXPECT_EQ (run.slot (1).lengthFrames, 70000);
    EXPECT_NEAR (run.slot (1).bpm, 174.0, 0.02);
    EXPECT_EQ (run.slot (1).beats, 8.0);
    EXPECT_EQ (run.slot (1).beatStart, facts.beatStart);
    EXPECT_EQ (run.slot (1).beatEnd, facts.beatEnd);
    for (int i = 0; i < 70000; i += 997)
        EXPECT_NEAR (run.slot (1).buffer.left()[i], signal[static_cast<size_t> (i)], 1.0 / 32767) << i;
}

TEST (SampleImport, ASampleOfAHigherRateIsSavedWithoutWhatFolds)
{
    SamplerRun run;
    constexpr double rate = 96000.0;
    auto signal = toneFrom (0.0, 1.0, 1000.0, rate);
    const auto high = toneFrom (0.0, 1.0, 30000.0, rate);
    std::transform (signal.begin(), signal.end(), high.begin(), signal.begin(), std::plus());
    SampleFacts facts;
    facts.sampleRate = 96000;
    facts.bpm = 120.0;
    facts.beats = 4.0;
    putSample (run.sampler(), 0, signal, facts);
    run.sampler().saveSample (0, run.folder.file ("s.wav"));
    run.sampler().loadSample (1, run.folder.file ("s.wav"));
    const auto& slot = run.slot (1);
    ASSERT_EQ (slot.lengthFrames, 44100);
    EXPECT_EQ (slot.sampleRate, 44100u);
    const std::span<const float> saved (slot.buffer.left() + 4410, 30000);
    const auto fit = Signals::fitSine (saved, 44100.0, 1000.0);
    EXPECT_NEAR (fit.amplitude, 0.5, 0.001);
    EXPECT_LT (fit.residualRms, 0.5e-4);
}

TEST (SampleImport, LongSamplesGoRoundInBarsFromABeatOn)
{
    constexpr double perBeat = 60.0 / 128.0;
    for (const double firstBeat : { 0.0, 0.27, 1.33 })
    {
        SamplerRun run;
        std::mt19937 random (3);
        juce::AudioBuffer<float> audio (1, 32 * 44100);
        for (int i = 0; i < audio.getNumSamples(); ++i)
        {
            const auto since = i / 44100.0 - firstBeat;
            const auto loud = since < 0.0 ? 0.0 : std::exp (-std::fmod (since, perBeat) / 0.02);
            audio.setSample (0, i, static_cast<float> (0.5 * loud * (random() / 2147483648.0 - 1.0)));
        }
        run.sampler().loadSample (0, EncodedFiles::writeWav (audio, 44100.0, run.folder.file ("long.wav")));
        const auto& slot = run.slot (0);
        EXPECT_NEAR (slot.bpm, 128.0, 0.5);
        EXPECT_EQ (std::fmod (slot.beats, 8.0), 0.0);
        EXPECT_GT (slot.beats, 100.0);
        EXPECT_NEAR ((slot.beatEnd - slot.beatStart) / 44100.0, slot.beats * 0.5 * perBeat, 0.05);
        const auto beats = (slot.beatStart / 44100.0 - firstBeat) / perBeat;
        EXPECT_NEAR (beats, std::round (beats), 0.06) << firstBeat; // and on none of the half beats
    }
}

TEST (Ghost, EveryLengthEqualsTheDecksSamplesToTheBit)
{
    for (const double bpm : { 60.0, 120.0, 174.0 })
    {
        ClickDecks desk;
        desk.put (0, { .bpm = bpm, .seconds = 60.0 });
        auto& deck = desk.deck (0);
        auto& sampler = desk.host->engine().sampler;
        deck.setTexts ({ "/music/a.flac", "A Title", "", "" });
        deck.jumpTo (10.0 * desk.rate);
        const auto start = static_cast<int> (*deck.grid().nearestEvenBeat (10.0 * desk.rate));
        for (int length = -1; length <= 10; ++length)
        {
            const auto index = std::clamp (length, 0, 9);
            sampler.ghostRecordPreview (0, length);
            sampler.ghostRecordToPad (0, 4, length);
            const auto frames = static_cast<int> ((1 << index) * 44100 * 1.875 / bpm);
            for (const int slotIndex : { Sampler::preview, 4 })
            {
                const auto& slot = *sampler.desk.find (slotIndex);
                ASSERT_EQ (slot.lengthFrames, frames) << bpm << " " << length;
                EXPECT_EQ (slot.bpm, bpm);
                EXPECT_EQ (slot.musicalBeats(), (1 << index) / 32.0);
                EXPECT_EQ (slot.texts().name, "A Title");
                EXPECT_EQ (slot.texts().filePath, "/music/a.flac");
                auto different = 0;
                for (int i = 0; i < frames; ++i)
                    different += slot.buffer.left()[i] * 32768.0f != deck.audioMemory.left()[start + i]
                                 || slot.buffer.right()[i] * 32768.0f != deck.audioMemory.right()[start + i];
                EXPECT_EQ (different, 0);
            }
        }
    }
}

TEST (Ghost, BeginsAtTheLoopAndNeedsATrack)
{
    ClickDecks desk;
    auto& sampler = desk.host->engine().sampler;
    sampler.ghostRecordPreview (1, 7);
    EXPECT_TRUE (sampler.desk.find (Sampler::preview)->isEmpty());

    desk.put (0, { .bpm = 120.0 });
    auto& deck = desk.deck (0);
    deck.loops.mode = manualLoop;
    deck.loops.in = 12345.0;
    deck.loops.out = 99999.0;
    desk.host->engine().setParameter (CommandTable::numberOf ("SAMPLER_LOOP_SIZE"), 0.0f);
    desk.host->engine().setParameter (CommandTable::numberOf ("SAMPLER_RECORD_LOOP"), 1.0f);
    deck.loops.in = 0.0; // the moment of the press counts
    desk.host->engine().deliverMessages();
    const auto& slot = *sampler.desk.find (Sampler::preview);
    ASSERT_EQ (slot.lengthFrames, 44100);
    EXPECT_EQ (slot.buffer.left()[0] * 32768.0f, deck.audioMemory.left()[12345]);

    // Kept at once: what was never saved is not lost with the program, and a bank finds it a place.
    sampler.copySlot (Sampler::preview, 2);
    EXPECT_EQ (sampler.unsavedLoops(), 1);
    const juce::File kept (sampler.desk.find (2)->texts().recording);
    EXPECT_TRUE (kept.existsAsFile());
    EXPECT_EQ (sampler.saveBank (desk.folder.file ("bank.xml")), "");
    EXPECT_EQ (sampler.unsavedLoops(), 0);
    EXPECT_FALSE (kept.exists());
    sampler.clearSlot (2);
    EXPECT_EQ (sampler.loadBank (desk.folder.file ("bank.xml")), "");
}

TEST (Ghost, ALoopOfATrackThatIsStillDecodedIsWhole)
{
    EngineFixture fixture (Pacing::Mode::live);
    auto& sampler = fixture.engine->sampler;
    auto& deck = fixture.deck();
    fixture.loadNoise (0, 20);
    deck.marks.bpm = 60.0;
    const auto frames = deck.track.loadedFrames.get();
    deck.track.loadedFrames = 1000;
    deck.isLoading = 1;
    sampler.ghostRecordToPad (0, 4, 9);
    deck.track.loadedFrames = frames;
    deck.isLoading = 0;
    sampler.waitUntilIdle();
    const auto& slot = *sampler.desk.find (4);
    ASSERT_GT (slot.lengthFrames, 44100);
    const auto* last = slot.buffer.left() + slot.lengthFrames - 1000;
    EXPECT_TRUE (std::any_of (last, last + 1000, [] (float sample) { return sample != 0.0f; }));
}

TEST (Ghost, ALoopThatIsSavedLiesInTheUsersFileFromThenOn)
{
    ClickDecks desk;
    auto& sampler = desk.host->engine().sampler;
    desk.put (0, { .bpm = 120.0 });
    desk.deck (0).setTexts ({ "/music/a.flac", "A Title", "", "" });
    const auto textsOf = [&] (int pad) { return sampler.desk.find (pad)->texts(); };

    sampler.ghostRecordToPad (0, 4, 5);
    const juce::File recording (textsOf (4).recording), saved = desk.folder.file ("mine.wav");
    EXPECT_TRUE (recording.existsAsFile());
    sampler.saveSample (4, saved);
    EXPECT_EQ (sampler.unsavedLoops(), 0);
    EXPECT_FALSE (recording.exists());
    ASSERT_EQ (sampler.bank().samples.size(), 1u);
    EXPECT_EQ (sampler.bank().samples[0].filePath, saved.getFullPathName()); // and not the deck's whole track

    // One that the disk had no room for is in memory still.
    const auto folder = sampler.folders.samples().getChildFile ("recorded");
    EXPECT_TRUE (folder.deleteRecursively() && folder.replaceWithText ("no folder"));
    sampler.ghostRecordToPad (0, 4, 5);
    EXPECT_EQ (textsOf (4).fault, "The loop can't be written to " + folder.getFullPathName() + ".");
    EXPECT_TRUE (sampler.bank().samples.empty());
    EXPECT_EQ (sampler.unsavedLoops(), 1);
    EXPECT_TRUE (sampler.keepUnsavedLoops());
    EXPECT_EQ (juce::File (textsOf (4).filePath).getParentDirectory(), sampler.folders.samples());
    EXPECT_TRUE (juce::File (textsOf (4).filePath).existsAsFile());
    EXPECT_EQ (textsOf (4).fault, "");
}

TEST (Ghost, ALoopThatComesWhileTheOneBeforeIsSavedStaysUnsaved)
{
    EngineFixture fixture (Pacing::Mode::live);
    auto& sampler = fixture.engine->sampler;
    fixture.loadNoise (0, 20);
    fixture.deck().marks.bpm = 60.0;
    sampler.ghostRecordToPad (0, 4, 9);
    sampler.waitUntilIdle();
    ASSERT_EQ (sampler.unsavedLoops(), 1);

    const auto folder = fixture.folder.file ("mine");
    ASSERT_TRUE (folder.createDirectory());
    const auto saved = folder.getChildFile ("mine.wav");
    sampler.saveSample (4, saved);
    while (folder.getNumberOfChildFiles (juce::File::findFiles) == 0) // being written: 16 seconds
        std::this_thread::yield();
    sampler.ghostRecordToPad (0, 4, 5);
    sampler.waitUntilIdle();

    EXPECT_TRUE (saved.existsAsFile());
    EXPECT_EQ (sampler.unsavedLoops(), 1);
    const auto texts = sampler.desk.find (4)->texts();
    EXPECT_NE (texts.filePath, saved.getFullPathName());
    EXPECT_TRUE (juce::File (texts.recording).existsAsFile());
}

TEST (SamplerBank, ReadsWhatItWritesAndSkipsPadsThatThereAreNot)
{
    SamplerBank bank;
    bank.name = juce::CharPointer_UTF8 ("n\xc3\xa4me <&>");
    bank.samples = { { 0, "/a/b.wav", "b", 3 }, { 15, "/c d/e.flac", "\"q\"", 1, true } };
    EXPECT_EQ (SamplerBank::read (XmlPullParser::ofText (bank.toXml())), bank);

    const auto odd = SamplerBank::read (XmlPullParser::ofText (
        "<samplerBank version='2000'><samples><value slot_number='16' filepath='/x.wav'/>"
        "<value slot_number='-1'/><value slot_number='3' filepath='/y.wav' name='y' play_mode='9'/></samples>"
        "<other><value slot_number='4'/></other></samplerBank>"));
    ASSERT_TRUE (odd.has_value());
    ASSERT_EQ (odd->samples.size(), 1u);
    EXPECT_EQ (odd->samples[0].slot, 3);
    EXPECT_EQ (odd->samples[0].playMode, 0);
    EXPECT_FALSE (SamplerBank::read (XmlPullParser::ofText ("<playlist/>")).has_value());
}

TEST (SamplerBank, ADamagedFileOfThePadsIsPutAside)
{
    SamplerRun run;
    run.sampler().loadSample (1, EncodedFiles::writeWav (EncodedFiles::makeNoise (2, 4410, 44100.0), 44100.0,
                                                         run.folder.file ("hit.wav")));
    run.sampler().loadSample (9, run.folder.file ("hit.wav"));
    run.sampler().keepPads();
    EXPECT_TRUE (run.sampler().restorePads());
    const auto file = run.sampler().folders.setup().getChildFile ("sampler.xml");
    const auto spare = file.getSiblingFile ("sampler.xml.bad");
    const auto whole = file.loadFileAsString();
    EXPECT_FALSE (spare.exists());
    for (const auto& [text, pads] : { std::pair { whole.upToLastOccurrenceOf ("<value", false, false), 1u },
                                      { juce::String ("garbage <<<"), 0u } })
    {
        run.sampler().clearSlot (1);
        run.sampler().clearSlot (9);
        file.replaceWithText (text);
        EXPECT_FALSE (run.sampler().restorePads());
        EXPECT_EQ (run.sampler().bank().samples.size(), pads);
        EXPECT_EQ (spare.loadFileAsString(), text);
    }
}
