#include "Music.h"
#include "shared/TemporaryFolder.h"
#include "similarity/BuiltSimilarity.h"
#include "tracks/similar/SoundSession.h"

#include <gtest/gtest.h>

namespace
{
bool hear (SoundSession& session, const juce::String& path, const Music::Style& style)
{
    const auto listener = session.listenTo (path, 44100.0);
    if (listener == nullptr)
        return false;
    const auto music = Music::make (style, 6.0, 44100.0);
    listener->add (music.data(), music.data(), static_cast<int> (music.size()));
    return session.store (path, *listener, style.bpm);
}
}

TEST (SimilarityLibrary, TracksAreDescribedKeptAndFound)
{
    const TemporaryFolder folder;
    const SoundSession::Places places { juce::File (builtSimilarity()), folder.file ("mufin") };
    std::map<juce::String, int> keys;
    {
        SoundSession::Watch watch;
        watch.described = [&keys] (const juce::String& path, const SoundFacts& facts)
        { keys[path] = facts.key; };
        SoundSession session (places, watch);
        EXPECT_TRUE (hear (session, "/a.mp3", { .bpm = 120.0, .brightness = 0.2 }));
        EXPECT_TRUE (hear (session, "/b.mp3", { .bpm = 90.0, .brightness = 0.9, .tonic = 5 }));
        EXPECT_TRUE (hear (session, juce::String::fromUTF8 ("/\xc3\xa4.mp3"),
                           { .bpm = 124.0, .brightness = 0.25, .tonic = 2 }));
        EXPECT_FALSE (hear (session, "/a.mp3", {})) << "known already";
        EXPECT_EQ (session.listenTo ("/low.wav", 4000.0), nullptr);
    }
    EXPECT_EQ (keys["/b.mp3"], 5);

    // A new process finds what the last one wrote.
    SoundSession session (places);
    const auto found = session.similar ("/a.mp3", { .withCopies = true });
    ASSERT_EQ (found.size(), 2u);
    EXPECT_EQ (found[0].path, juce::String::fromUTF8 ("/\xc3\xa4.mp3"));
    EXPECT_NEAR (found[0].facts.tempoBpm, 124.0, 0.001);
    EXPECT_TRUE (session.similar ("/unknown.mp3", { .withCopies = true }).empty());
}

TEST (SimilarityLibrary, WithoutItNothingIsKnownAndNothingSaid)
{
    const TemporaryFolder folder;
    for (const auto& library : { folder.file ("none.so"), folder.file ("text.so") })
    {
        folder.file ("text.so").replaceWithText ("no library");
        auto notices = 0;
        SoundSession session ({ library, folder.file ("mufin") },
                              { {}, [&notices] (const juce::String&) { ++notices; } });
        EXPECT_FALSE (session.open());
        EXPECT_EQ (session.listenTo ("/a.mp3", 44100.0), nullptr);
        EXPECT_TRUE (session.similar ("/a.mp3", { .withCopies = true }).empty());
        EXPECT_EQ (notices, 0);
    }
    EXPECT_FALSE (folder.file ("mufin").exists());
}
