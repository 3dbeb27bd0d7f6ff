#include "session/AutomixByFit.h"
#include "session/similar/KeyText.h"
#include "session/similar/Recommendations.h"
#include "shared/Signals.h"
#include "shared/TemporaryFolder.h"
#include "similarity/BuiltSimilarity.h"
#include "support/music/KeyName.h"

#include <gtest/gtest.h>

namespace
{
/** Describes a track whose sound goes with a pitch, in Hz. */
void describe (SoundSession& sounds, const juce::String& path, double pitch, double bpm)
{
    constexpr auto rate = 44100;
    auto sound = Signals::noise (5 * rate, 1, 0.05);
    const auto tone = Signals::sine (pitch, rate, 5 * rate, 0.4);
    for (size_t i = 0; i < sound.size(); ++i)
        sound[i] += tone[i] * (i % 22050 < 11025 ? 1.0f : 0.3f);
    const auto listener = sounds.listenTo (path, rate);
    listener->add (sound.data(), sound.data(), static_cast<int> (sound.size()));
    ASSERT_TRUE (sounds.store (path, *listener, bpm));
}

struct SimilarSongsTest : testing::Test
{
    void hear (const juce::String& path, double pitch, double bpm) { describe (sounds, path, pitch, bpm); }

    void add (const juce::String& path, const juce::String& title, const juce::String& artist)
    {
        SongRecord song;
        song[SongColumn::filename] = path;
        song[SongColumn::title] = title;
        song[SongColumn::artist] = artist;
        ASSERT_EQ (database.insertSong (song), 0);
    }

    juce::StringArray recommended (const juce::String& path)
    {
        Recommendations list (room, sounds);
        list.recommend (path, {});
        list.settle();
        SongList songs (SongListKind::recommendation);
        EXPECT_EQ (database.fillRecommendation (&songs, SongField::listOrder, true), 0);
        juce::StringArray paths;
        for (const auto& entry : songs.entries())
        {
            juce::String text;
            EXPECT_EQ (database.readField (SongField::filename, entry.songId, text), 0);
            EXPECT_TRUE (list.reasonOf (entry.songId).contains ("% alike")) << text;
            paths.add (text);
        }
        return paths;
    }

    const TemporaryFolder folder;
    const juce::File file = folder.file ("library.sqlite");
    SongDatabase database { file };
    LibraryRoom room { database, { folder.file ("history"), folder.file ("folders.txt") } };
    SoundSession sounds { { juce::File (builtSimilarity()), folder.file ("mufin") } };
};
}

TEST_F (SimilarSongsTest, TheListHasWhatFitsAndNothingElse)
{
    add ("/asked.mp3", "Song", "Somebody");
    add ("/near.mp3", "Near", "Somebody");
    add ("/far.mp3", "Far", "Somebody");
    add ("/played.mp3", "Played", "Somebody");
    add ("/other copy.mp3", "song", "SOMEBODY");
    add ("/silent.mp3", "Never analysed", "Somebody");
    for (const auto& [path, pitch] : { std::pair { "/asked.mp3", 300.0 },
                                       { "/near.mp3", 380.0 },
                                       { "/far.mp3", 3000.0 },
                                       { "/played.mp3", 350.0 },
                                       { "/other copy.mp3", 1000.0 },
                                       { "/stranger.mp3", 310.0 } })
        hear (path, pitch, 120.0);
    EXPECT_TRUE (
        room.history.note ({ juce::Time::getCurrentTime(), 0, "/played.mp3", "Played", "Somebody" }));

    EXPECT_EQ (recommended ("/asked.mp3").joinIntoString (" "), "/near.mp3 /far.mp3");
    EXPECT_EQ (recommended ("/silent.mp3").joinIntoString (" "), "") << "not analysed";
    EXPECT_EQ (recommended ("/asked.mp3").size(), 2);

    // The list goes with the connection, the sounds stay.
    SongDatabase again (file);
    SongList songs (SongListKind::recommendation);
    EXPECT_EQ (again.fillRecommendation (&songs, SongField::listOrder, true), 0);
    EXPECT_TRUE (songs.isEmpty());
}

TEST_F (SimilarSongsTest, TheWeightsDecideTheOrder)
{
    for (const auto* path : { "/asked.mp3", "/sound.mp3", "/tempo.mp3" })
        add (path, path, "Somebody");
    hear ("/asked.mp3", 300.0, 120.0);
    hear ("/sound.mp3", 330.0, 103.0);
    hear ("/tempo.mp3", 3000.0, 60.5);
    const auto first = [this] (const char* priority)
    {
        SimilarSongs::Options options;
        options.weights = SimilarSongs::weightsOf (priority);
        return SimilarSongs::find (database, sounds, "/asked.mp3", options).front();
    };
    EXPECT_EQ (first ("sound").path, "/sound.mp3");
    EXPECT_EQ (first ("mix").path, "/tempo.mp3");
    EXPECT_EQ (first ("mix").tempoChange(), "-0.8 % x1/2");
}

TEST (AutomixByFit, GoesOnWithWhatFitsWhereTheListHasRunDry)
{
    struct OneSong : AutomixSource
    {
        explicit OneSong (juce::File only) : song (std::move (only)) {}
        void begin() override {}
        std::optional<juce::File> nextTrack() override { return std::exchange (song, juce::File()); }
        juce::File song;
    };
    const TemporaryFolder folder;
    Session::Options options;
    options.folders.root = options.library.folder = folder;
    Session session { std::move (options) };
    ASSERT_EQ (session.openLibrary (LibrarySession::Use::write), "");
    SimilarRoom room (session, juce::File (builtSimilarity()));
    for (const auto& [name, pitch] : { std::pair { "listed", 300.0 }, { "near", 330.0 }, { "far", 3000.0 } })
    {
        const auto file = folder.file (name);
        file.create();
        SongRecord song;
        song[SongColumn::filename] = file.getFullPathName();
        ASSERT_EQ (session.library()->insertSong (song), 0);
        describe (*room.sounds, file.getFullPathName(), pitch, 120.0);
    }

    for (const auto continues : { false, true })
    {
        room.setContinuesAutomix (continues);
        AutomixByFit automix (std::make_shared<OneSong> (folder.file ("listed")), session, room);
        juce::StringArray given;
        for (auto next = automix.nextTrack(); next != juce::File(); next = automix.nextTrack())
            if (next)
                given.add (next->getFileName());
            else
                automix.wait();
        EXPECT_EQ (given.joinIntoString (" "), continues ? "listed near far" : "listed");
    }
    room.settle();
}

TEST (KeyText, LettersAndTheWheelNameTheSameKeys)
{
    struct Case
    {
        int key;
        const char *letters, *wheel;
    };
    for (const auto& [key, letters, wheel] :
         { Case { 0, "C", "8B" }, Case { 21, "Am", "8A" }, Case { 7, "G", "9B" }, Case { 5, "F", "7B" },
           Case { 18, "F#m", "11A" }, Case { 11, "B", "1B" }, Case { 20, "G#m", "1A" }, Case { -1, "", "" } })
    {
        EXPECT_EQ (KeyText::of (key, KeyText::Notation::letters), letters);
        EXPECT_EQ (KeyText::of (key, KeyText::Notation::wheel), wheel);
        EXPECT_EQ (KeyName::read (letters).value_or (-1), key);
        EXPECT_EQ (KeyName::read (wheel).value_or (-1), key);
    }
    for (const auto& [text, key] : { std::pair { "Bb minor", 22 },
                                     { "eb MAJ", 3 },
                                     { "08a", 21 },
                                     { "Cb", 11 },
                                     { "13A", -1 },
                                     { "0B", -1 },
                                     { "Hm", -1 },
                                     { "Disco", -1 } })
        EXPECT_EQ (KeyName::read (text).value_or (-1), key) << text;
    EXPECT_EQ (KeyText::relation (0, 7), "a fifth up");
    EXPECT_EQ (KeyText::relation (0, 21), "relative key");
    EXPECT_EQ (KeyText::relation (0, 12), "3 fifths down, other mode");
    EXPECT_EQ (KeyText::relation (0, -1), "");
}
