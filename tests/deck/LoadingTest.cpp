#include "DeckFixture.h"
#include "adec/BuiltDecoder.h"
#include "shared/EncodedFiles.h"
#include "shared/Signals.h"
#include "shared/TemporaryFolder.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

namespace
{
constexpr double rate = 44100.0;

struct LoadingDecks : DeckFixture, EngineListener
{
    explicit LoadingDecks (const juce::File& decoder = juce::File (builtDecoder())) : DeckFixture (decoder)
    {
        listeners.add (*this);
    }

    ~LoadingDecks() override { listeners.remove (*this); }

    void engineEvent (EngineEvent event, int index) override { events.emplace_back (event, index); }
    void engineMessage (const juce::String& text, int) override { messages.add (text); }

    void loadAndWait (const juce::File& file, int index = 0)
    {
        loaders->load (file, index);
        loaders->waitUntilIdle (index);
        listeners.deliver();
    }

    bool heard (EngineEvent event) const
    {
        return std::any_of (events.begin(), events.end(), [=] (const auto& e) { return e.first == event; });
    }

    /** The left side of a loaded track, as floats. */
    std::vector<float> track (int index = 0)
    {
        std::vector<float> out (static_cast<size_t> (deck (index).track.loadedFrames));
        for (size_t i = 0; i < out.size(); ++i)
            out[i] = deck (index).audioMemory.left()[i] / 32768.0f;
        return out;
    }

    std::vector<std::pair<EngineEvent, int>> events;
    juce::StringArray messages;
};

juce::AudioBuffer<float> music (double seconds, double atRate = rate, int channels = 2)
{
    return EncodedFiles::makeNoise (channels, static_cast<int> (seconds * atRate), atRate);
}
}

TEST (Loading, EveryCommonFormatLinesUpWithItsSource)
{
    const TemporaryFolder folder;
    const auto audio = music (4.0);
    const std::vector<float> source (audio.getReadPointer (0),
                                     audio.getReadPointer (0) + audio.getNumSamples());
    const auto wav = EncodedFiles::writeWav (audio, rate, folder.file ("source.wav"));

    LoadingDecks decks;
    int index = 0;
    for (const auto* name : { "a.mp3", "a.m4a", "a.flac", "a.ogg", "a.wma", "a.aif", "a.aiff", "copy.wav" })
    {
        index = (index + 1) % deckCount;
        decks.loadAndWait (EncodedFiles::encode (wav, folder.file (name), { "-b:a", "256k" }), index);
        const auto& deck = decks.deck (index);
        ASSERT_GT (deck.track.loadedFrames, 0) << name;
        EXPECT_EQ (deck.track.sampleRate, rate) << name;
        EXPECT_EQ (deck.texts().title, juce::File (folder.file (name)).getFileNameWithoutExtension());
        const auto track = decks.track (index);
        // A WMA file says nothing of its encoder's delay, and its end is lost in it.
        EXPECT_GE (track.size(), source.size() - (juce::String (name) == "a.wma" ? 2048 : 1)) << name;
        EXPECT_TRUE (juce::String (name) == "a.wma" || Signals::correlation (source, track) > 0.97) << name;
    }
    EXPECT_TRUE (decks.messages.isEmpty());
}

TEST (Loading, RatesMonoAndOddBitDepthsPlayAtTheirSpeed)
{
    const TemporaryFolder folder;
    LoadingDecks decks;
    for (const double fileRate : { 8000.0, 22050.0, 48000.0, 96000.0 })
    {
        const auto wav = EncodedFiles::writeWav (music (1.0, fileRate, 1), fileRate, folder.file ("m.wav"),
                                                 EncodedFiles::WavSamples::float32);
        decks.loadAndWait (wav);
        EXPECT_EQ (decks.deck().track.sampleRate, fileRate);
        EXPECT_EQ (decks.deck().track.loadedFrames, static_cast<int> (fileRate));
        EXPECT_EQ (decks.deck().audioMemory.left()[500], decks.deck().audioMemory.right()[500]);

        decks.deck().play.on = 1;
        decks.render (22'050);
        EXPECT_NEAR (decks.deck().head.position, fileRate / 2.0, fileRate * 0.01);
    }
}

TEST (Loading, EachFaultHasItsWordsAndThePlayingDeckGoesOn)
{
    const TemporaryFolder folder;
    const auto wav = EncodedFiles::writeWav (music (20.0), rate, folder.file ("good.wav"));
    const auto sixChannels = EncodedFiles::writeWav (music (0.5, rate, 6), rate, folder.file ("six.wav"));
    folder.file ("empty.mp3").create();
    folder.file ("text.flac").replaceWithText ("These are words and no music at all.\n");
    folder.file ("folder.ogg").createDirectory();
    folder.file ("bought.m4a").replaceWithText (juce::String::repeatedString ("x", 5000) + "stsddrms");
    juce::MemoryBlock bytes;
    wav.loadFileAsData (bytes);
    const auto fmt = std::string_view (bytes.begin(), bytes.getSize()).find ("fmt ");
    const uint32_t absurdRate = 1'000'000'000;
    bytes.copyFrom (&absurdRate, static_cast<int> (fmt) + 12, sizeof (absurdRate));
    folder.file ("lying.wav").replaceWithData (bytes.getData(), bytes.getSize());
    const auto mp3 = EncodedFiles::encode (wav, folder.file ("good.mp3"));
    ASSERT_EQ (mkfifo (folder.file ("pipe.wav").getFullPathName().toRawUTF8(), 0600), 0);
    folder.file ("renamed.ogg").deleteFile();
    mp3.copyFileTo (folder.file ("renamed.ogg"));

    LoadingDecks decks;
    decks.loadAndWait (wav);
    ASSERT_GT (decks.deck().track.loadedFrames, 0);

    struct Case
    {
        const char *name, *reason;
    };
    decks.transport.playPause (0);
    for (const auto& c :
         { Case { "missing.wav", "The file does not exist." }, Case { "folder.ogg", "That is a folder." },
           Case { "pipe.wav", "That is a pipe or a device, and no file." },
           Case { "empty.mp3", "The file is empty." },
           Case { "text.flac", "The file is damaged or holds no audio." },
           Case { "bought.m4a", "The file is copy-protected." },
           Case { "lying.wav", "The file states a sample rate above 384 kHz." },
           Case { "six.wav", "The file has more than two channels." } })
    {
        decks.messages.clear();
        const auto before = decks.deck().heardPosition();
        decks.loadAndWait (folder.file (c.name));
        EXPECT_EQ (decks.messages,
                   juce::StringArray (juce::String ("*** Load Error ***|") + c.name + "|" + c.reason));
        EXPECT_EQ (decks.deck().isLoading, 0);
        EXPECT_EQ (decks.events.back().first, EngineEvent::loadFailed) << c.name;

        // The deck plays on as if nothing had been asked.
        EXPECT_GT (Signals::rms (decks.render (2048).left), 0.01) << c.name;
        EXPECT_NEAR (decks.deck().heardPosition() - before, 2048.0, 700.0) << c.name;
    }
    decks.transport.playPause (0);

    // A wrong extension plays all the same; a file that is no audio by its name is not looked at.
    decks.messages.clear();
    decks.loadAndWait (folder.file ("renamed.ogg"));
    EXPECT_GT (decks.deck().track.loadedFrames, 0);
    const int before = decks.deck().track.loadedFrames;
    decks.events.clear();
    wav.copyFileTo (folder.file ("good.txt"));
    decks.loadAndWait (folder.file ("good.txt"));
    decks.loaders->load (wav, 4);
    decks.loaders->load (wav, -1);
    decks.listeners.deliver();
    EXPECT_EQ (decks.deck().track.loadedFrames, before);
    EXPECT_TRUE (decks.messages.isEmpty());
    EXPECT_TRUE (decks.events.empty());
}

TEST (Loading, LongAndForeignNamesLoadOrAreRefused)
{
    const TemporaryFolder folder;
    const auto wav = EncodedFiles::writeWav (music (0.5), rate, folder.file ("x.wav"));
    LoadingDecks decks;
    const auto named = folder.file (juce::String::fromUTF8 ("Żółć – 東京 – \xF0\x9F\x8E\xB5.wav"));
    ASSERT_TRUE (wav.copyFileTo (named));
    decks.loadAndWait (named);
    EXPECT_GT (decks.deck().track.loadedFrames, 0);
    EXPECT_EQ (decks.deck().texts().title, named.getFileNameWithoutExtension());

    decks.loadAndWait (folder.file (juce::String::repeatedString ("n", 4000) + ".wav"));
    EXPECT_EQ (decks.messages.size(), 1);
}

TEST (Loading, TruncatedFilesPlayWhatThereIsAndSaySo)
{
    const TemporaryFolder folder;
    const auto wav = EncodedFiles::writeWav (music (7.0), rate, folder.file ("x.wav"));
    LoadingDecks decks;
    for (const auto* name : { "t.mp3", "t.flac", "t.ogg", "t.wav", "t.aiff" })
    {
        const auto whole = juce::String (name) == "t.wav"
                               ? wav
                               : EncodedFiles::encode (wav, folder.file ("w" + juce::String (name)));
        juce::MemoryBlock bytes;
        whole.loadFileAsData (bytes);
        const auto half = folder.file (name);
        half.replaceWithData (bytes.getData(), bytes.getSize() / 2);
        decks.messages.clear();
        decks.loadAndWait (half);
        EXPECT_GT (decks.deck().track.loadedFrames, static_cast<int> (2.5 * rate)) << name;
        EXPECT_LT (decks.deck().track.loadedFrames, static_cast<int> (5.0 * rate)) << name;
        // Headers of these state the length to the frame.
        const auto isSure = half.hasFileExtension ("wav;aiff;flac");
        EXPECT_EQ (decks.messages.joinIntoString (" "),
                   isSure ? juce::String ("*** Incomplete File ***|") + name + "|It ends at 0:03 of 0:07."
                          : juce::String());
    }
}

TEST (Loading, WithoutTheDecoderTheToolkitsReadersServe)
{
    const TemporaryFolder folder;
    const auto audio = music (1.0);
    const std::vector<float> source (audio.getReadPointer (0),
                                     audio.getReadPointer (0) + audio.getNumSamples());
    const auto wav = EncodedFiles::writeWav (audio, rate, folder.file ("x.wav"));
    LoadingDecks decks (folder.file ("there is no such library.so"));
    for (const auto* name : { "x.wav", "x.flac", "x.ogg", "x.aiff" })
    {
        const auto file = folder.file (name);
        decks.loadAndWait (file.existsAsFile() ? file : EncodedFiles::encode (wav, file));
        EXPECT_GT (Signals::correlation (source, decks.track()), 0.97) << name;
    }
    decks.loadAndWait (EncodedFiles::writeWav (music (0.5, rate, 6), rate, folder.file ("six.wav")));
    EXPECT_EQ (decks.messages,
               juce::StringArray ("*** Load Error ***|six.wav|The decoder library is missing."));

    // A library without the functions is none, and its stubs do nothing.
    const AdecSharedLibrary other (juce::File ("libm.so.6"));
    EXPECT_FALSE (other.isLoaded());
    EXPECT_EQ (other.adec_open_filename ("x"), nullptr);
    EXPECT_EQ (other.adec_get_audio_buffer_size(), 0);
}

TEST (Loading, ANewLoadCancelsTheRunningOne)
{
    const TemporaryFolder folder;
    const auto longFile = EncodedFiles::writeWav (music (120.0), rate, folder.file ("long.wav"));
    const auto shortFile = EncodedFiles::writeWav (music (1.0), rate, folder.file ("short.wav"));
    LoadingDecks decks;
    for (int round = 0; round < 5; ++round)
    {
        decks.loaders->load (longFile, 0);
        while (decks.deck().track.loadedFrames < 1)
            juce::Thread::yield();
        decks.loadAndWait (shortFile);
        EXPECT_EQ (decks.deck().track.loadedFrames, static_cast<int> (rate));
        EXPECT_EQ (decks.deck().texts().title, "short");
    }
    EXPECT_TRUE (decks.messages.isEmpty());
    decks.loaders->load (longFile, 1); // and one that is still running when everything ends
}

TEST (Loading, ADeckPlaysWhileItsTrackStillDecodes)
{
    const TemporaryFolder folder;
    const auto file = EncodedFiles::writeWav (music (200.0), rate, folder.file ("long.wav"));
    LoadingDecks decks;
    decks.loaders->load (file, 0);
    while (decks.deck().track.loadedFrames < 30'000)
        juce::Thread::yield();
    {
        const CallbackLock lock (decks.callbackLock, "block");
        decks.deck().play.on = 1;
        EXPECT_GT (Signals::rms (decks.render (20'000).left), 0.01);
    }
    decks.loaders->waitUntilIdle (0);
    decks.listeners.deliver();
    EXPECT_TRUE (decks.heard (EngineEvent::waveformReady));
    EXPECT_TRUE (decks.heard (EngineEvent::trackLoaded));
    EXPECT_EQ (decks.deck().track.loadedFrames, static_cast<int> (200.0 * rate));
}

TEST (Loading, ALoadStopsTheDeckAndResetsTheTrackNotTheFaders)
{
    const TemporaryFolder folder;
    const auto wav = EncodedFiles::writeWav (music (2.0), rate, folder.file ("x.wav"));
    LoadingDecks decks;
    auto& deck = decks.deck();
    decks.loadAndWait (wav);
    decks.world.hostBpm = 97.0;
    deck.tempo.pitch = 0.8;
    deck.tempo.keyLock = 0;
    deck.loopSizes.loop = 4;
    deck.marks.cues[5] = 400.0;
    deck.loops.mode = 2;
    deck.play.reverse = 1;
    decks.settings.deckSetup[0].sync = 1;
    decks.transport.playPause (0);
    deck.place (3000.0);

    juce::AudioBuffer<float> silence (2, 44100);
    silence.clear();
    decks.loadAndWait (EncodedFiles::writeWav (silence, rate, folder.file ("no beats.wav")));
    EXPECT_EQ (deck.play.on, 0);
    EXPECT_EQ (deck.head.position, 0.0);
    EXPECT_LE (deck.marks.cues[5], emptyCue);
    EXPECT_EQ (deck.loops.mode, 0);
    EXPECT_EQ (deck.play.reverse, 0);
    EXPECT_EQ (decks.settings.deckSetup[0].sync, 0);
    EXPECT_EQ (deck.marks.bpm, 97.0);
    EXPECT_EQ (deck.tempo.pitch, 0.8);
    EXPECT_EQ (deck.tempo.keyLock, 0);
    EXPECT_EQ (deck.loopSizes.loop, 4);
}

TEST (Loading, ALockedDeckKeepsItsTrackWhileItPlays)
{
    const TemporaryFolder folder;
    const auto first = EncodedFiles::writeWav (music (2.0), rate, folder.file ("first.wav"));
    const auto second = EncodedFiles::writeWav (music (2.0), rate, folder.file ("second.wav"));
    LoadingDecks decks;
    decks.settings.lockLoadedDecks = 1;
    decks.loadAndWait (first);
    decks.transport.playPause (0);
    decks.loadAndWait (second);
    EXPECT_EQ (decks.messages, juce::StringArray ("*** Deck Locked ***|Stop the deck to|load new track"));
    EXPECT_EQ (decks.deck().texts().title, "first");
    EXPECT_EQ (decks.deck().play.on, 1);

    decks.transport.playPause (0);
    decks.loadAndWait (second);
    EXPECT_EQ (decks.deck().texts().title, "second");
}

TEST (Loading, AFailedLoadUnderAutomixAsksForTheNextTrack)
{
    const TemporaryFolder folder;
    folder.file ("bad.mp3").replaceWithText ("no");
    LoadingDecks decks;
    decks.settings.automixOn = 1;
    for (int d = 0; d < deckCount; ++d)
    {
        decks.loadAndWait (folder.file ("bad.mp3"), d);
        EXPECT_EQ (decks.deck (d).play.loadNext, d < 2 ? 1 : 0);
    }
}

TEST (Loading, TracksOfAnyLevelComeToOneLoudness)
{
    const TemporaryFolder folder;
    LoadingDecks decks;
    std::vector<double> loudness;
    for (const float level : { 1.0f, 0.25f })
    {
        auto audio = music (3.0);
        audio.applyGain (level);
        decks.loadAndWait (
            EncodedFiles::writeWav (audio, rate, folder.file ("t.wav"), EncodedFiles::WavSamples::float32));
        loudness.push_back (decks.deck().track.autogain * level);
        EXPECT_NE (decks.deck().track.autogain, 1.0);
    }
    EXPECT_NEAR (loudness[1] / loudness[0], 1.0, 0.005);

    juce::AudioBuffer<float> silence (2, 44'100);
    silence.clear();
    decks.loadAndWait (EncodedFiles::writeWav (silence, rate, folder.file ("s.wav")));
    EXPECT_EQ (decks.deck().track.autogain, 1.0);
}

TEST (Loading, ALoadOntoASoundingDeckFades)
{
    const TemporaryFolder folder;
    juce::AudioBuffer<float> silence (2, 44'100);
    silence.clear();
    const auto next = EncodedFiles::writeWav (silence, rate, folder.file ("silence.wav"));
    for (const auto isStretched : { false, true })
    {
        LoadingDecks decks;
        if (isStretched)
            decks.deck().makeStretcher (rate);
        decks.putTrack (200'000, [] (int i) { return 0.5 * std::sin (2.0 * M_PI * 400.0 * i / rate); });
        decks.transport.playPause (0);
        auto heard = decks.render (30'000).left;
        ASSERT_GT (Signals::rms (heard), 0.2);
        decks.loadAndWait (next);
        const auto after = decks.render (4'000).left;
        heard.insert (heard.end(), after.begin(), after.end());
        for (size_t i = 20'000; i + 1 < heard.size(); ++i)
            ASSERT_LT (std::abs (heard[i + 1] - heard[i]), 0.04f) << i << " stretched " << isStretched;
        EXPECT_EQ (after.back(), 0.0f);
    }
}

TEST (Loading, ADeckShowsTheTagsOfItsTrack)
{
    const TemporaryFolder folder;
    const auto wav = EncodedFiles::writeWav (music (0.5), rate, folder.file ("x.wav"));
    LoadingDecks decks;
    for (const auto* name : { "a.mp3", "a.flac", "a.ogg", "a.m4a" })
    {
        decks.loadAndWait (EncodedFiles::encode (wav, folder.file (name),
                                                 { "-metadata", "title=A Title", "-metadata",
                                                   "artist=An Artist", "-metadata", "album=An Album" }));
        const auto texts = decks.deck().texts();
        EXPECT_EQ (texts.title + "|" + texts.artist + "|" + texts.album, "A Title|An Artist|An Album")
            << name;
    }
}
