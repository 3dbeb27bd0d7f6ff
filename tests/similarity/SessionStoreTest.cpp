#include "similarity/store/SessionStore.h"
#include "Music.h"
#include "shared/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <thread>

namespace
{
struct SessionStoreTest : testing::Test
{
    static std::string nameOf (unsigned i) { return "/music/" + std::to_string (i) + ".flac"; }

    static void fill (SessionStore& store, unsigned first, unsigned end)
    {
        for (auto i = first; i < end; ++i)
            store.store (nameOf (i), Music::describe (i));
    }

    static std::vector<std::string> pathsOf (const SessionStore& store, unsigned asked, SimilarityQuery query)
    {
        std::vector<std::string> paths;
        const auto answer = store.similar (nameOf (asked), query).value();
        for (const auto& found : answer)
            paths.push_back (found.path);
        return paths;
    }

    juce::MemoryBlock bytes() const
    {
        juce::MemoryBlock block;
        EXPECT_TRUE (file.loadFileAsData (block));
        return block;
    }

    const TemporaryFolder folder;
    const juce::File file = folder.file ("px_mufin.ses");
    const std::string path = file.getFullPathName().toStdString();
    const SimilarityQuery query { 20, 0.0f, 0.0f, 1 };
};
}

TEST_F (SessionStoreTest, AnswersAreTheSameAfterTheFileWasReadAgain)
{
    // Over three draws of the sample, saved in pieces that end on none of them.
    SessionStore store;
    EXPECT_EQ (store.load (path), similarityNoFile);
    EXPECT_FALSE (store.similar (nameOf (0), query));
    for (unsigned i = 0; i < 90; i += 9)
    {
        fill (store, i, i + 9);
        EXPECT_EQ (store.save (path), similarityOk);
        SessionStore again;
        EXPECT_EQ (again.load (path), similarityOk);
        ASSERT_EQ (again.size(), i + 9);
        EXPECT_EQ (pathsOf (again, i, query), pathsOf (store, i, query));
    }
    const auto answer = pathsOf (store, 5, query);
    EXPECT_EQ (answer.size(), 20u);
    EXPECT_EQ (std::count (answer.begin(), answer.end(), nameOf (5)), 0);
    EXPECT_EQ (pathsOf (store, 5, { 3, 0.0f, 0.0f, 1 }), std::vector (answer.begin(), answer.begin() + 3));
    EXPECT_TRUE (pathsOf (store, 5, { 0, 0.0f, 0.0f, 1 }).empty());
    EXPECT_EQ (pathsOf (store, 5, { 1000, 0.0f, 0.0f, 1 }).size(), 89u);
}

TEST_F (SessionStoreTest, WeightsAndCopiesChangeTheAnswer)
{
    SessionStore store;
    fill (store, 0, 60);
    auto copy = Music::describe (7);
    copy.whole[3] = static_cast<uint8_t> (copy.whole[3] + 20);
    store.store ("/copy", copy);
    EXPECT_EQ (pathsOf (store, 7, query).front(), "/copy");
    EXPECT_EQ (store.similar (nameOf (7), query)->front().item.isCopy, 1);
    const SimilarityQuery withoutCopies { 20, 0.0f, 0.0f, 0 };
    EXPECT_NE (pathsOf (store, 7, withoutCopies).front(), "/copy");

    const auto byTempo = store.similar (nameOf (7), SimilarityQuery { 5, 1.0f, 0.0f, 0 }).value();
    for (const auto& found : byTempo)
        EXPECT_NEAR (found.item.facts.tempoBpm, 107.0f, 3.0f);
    const auto byKey = store.similar (nameOf (7), SimilarityQuery { 2, 0.0f, 1.0f, 0 }).value();
    for (const auto& found : byKey)
        EXPECT_EQ (found.item.facts.key, 7);
}

TEST_F (SessionStoreTest, NoTrackIsEverybodysFriend)
{
    // A track in the middle is nearest to all others by plain distance.
    SessionStore store;
    fill (store, 0, 100);
    SimilarityDescription middle = Music::describe (0);
    middle.whole.fill (128);
    for (auto& part : middle.parts)
        part.fill (128);
    middle.partCount = 8;
    store.store ("/middle", middle);
    const SimilarityQuery ten { 10, 0.0f, 0.0f, 1 };
    auto friends = 0, nearest = 0;
    for (unsigned i = 0; i < 100; ++i)
    {
        const auto answer = pathsOf (store, i, ten);
        friends += std::count (answer.begin(), answer.end(), "/middle") > 0 ? 1 : 0;
        auto nearer = 0;
        for (unsigned k = 0; k < 100; ++k)
            nearer += k != i
                              && distance (Music::describe (i), Music::describe (k))
                                     < distance (Music::describe (i), middle)
                          ? 1
                          : 0;
        nearest += nearer < 10 ? 1 : 0;
    }
    EXPECT_GT (nearest, 80);
    EXPECT_LT (friends, 40);
}

TEST_F (SessionStoreTest, TwoProcessesLoseNothingOfEachOther)
{
    SessionStore one, other;
    std::vector<std::thread> writers;
    for (auto* store : { &one, &other })
        writers.emplace_back (
            [&, store]
            {
                const auto first = store == &one ? 0u : 100u;
                for (auto i = first; i < first + 60; ++i)
                {
                    store->store (nameOf (i), Music::describe (i));
                    EXPECT_EQ (store->save (path), similarityOk);
                }
            });
    for (auto& writer : writers)
        writer.join();
    SessionStore both;
    EXPECT_EQ (both.load (path), similarityOk);
    EXPECT_EQ (both.size(), 120u);
    EXPECT_EQ (one.save (path), similarityOk);
    EXPECT_EQ (one.size(), 120u);
}

TEST_F (SessionStoreTest, ATrackThatIsStoredAgainReplacesTheOldOneAndTheFileStaysSmall)
{
    SessionStore store;
    fill (store, 0, 20);
    ASSERT_EQ (store.save (path), similarityOk);
    const auto size = file.getSize();
    for (unsigned round = 0; round < 40; ++round)
    {
        for (unsigned i = 0; i < 20; ++i)
            store.store (nameOf (i), Music::describe (i + round));
        ASSERT_EQ (store.save (path), similarityOk);
    }
    EXPECT_LT (file.getSize(), 7 * size);
    SessionStore again;
    EXPECT_EQ (again.load (path), similarityOk);
    ASSERT_EQ (again.size(), 20u);
    SimilarityFacts facts {};
    EXPECT_TRUE (again.find (nameOf (19), &facts));
    EXPECT_EQ (facts.seconds, Music::describe (19 + 39).seconds);
}

TEST_F (SessionStoreTest, FromAnyCutAndAnyWrongByteTheRestIsReadAndTheFileMended)
{
    {
        SessionStore store;
        fill (store, 0, 18);
        ASSERT_EQ (store.save (path), similarityOk);
    }
    const auto good = bytes();
    const auto size = good.getSize();
    std::minstd_rand random (3);
    for (int round = 0; round < 300; ++round)
    {
        auto bad = good;
        const auto place = 1 + random() % (size - 1);
        const auto isCut = round % 2 == 0;
        if (isCut)
            bad.setSize (place);
        else
            static_cast<uint8_t*> (bad.getData())[place] ^= static_cast<uint8_t> (1u << random() % 8);
        ASSERT_TRUE (file.replaceWithData (bad.getData(), bad.getSize()));

        SessionStore store;
        const auto code = store.load (path);
        // A cut between two blocks is a shorter file; else it is noticed.
        if (code == similarityRebuilt)
            EXPECT_FALSE (store.notice().empty());
        else
            EXPECT_TRUE (isCut) << "byte " << place;
        store.store ("/new", Music::describe (99));
        EXPECT_GE (store.save (path), similarityOk);
        SessionStore mended;
        EXPECT_EQ (mended.load (path), similarityOk) << "byte " << place;
        EXPECT_EQ (mended.size(), store.size());
        EXPECT_TRUE (mended.find ("/new", nullptr));
    }
}

TEST_F (SessionStoreTest, AFileOfAnotherKindOrVersionIsKeptBesideTheNewOne)
{
    std::vector<std::byte> older;
    SessionFile::appendHeader (older);
    older[8] = std::byte { 0 }; // the version's lowest byte
    const std::string letter = "no session, but somebody's letter",
                      outdated (reinterpret_cast<const char*> (older.data()), older.size());
    for (const auto& [old, sentence] :
         { std::pair { letter, "is damaged" }, { outdated, "is of another version" } })
    {
        ASSERT_TRUE (file.replaceWithData (old.data(), old.size()));
        SessionStore store;
        EXPECT_EQ (store.load (path), similarityRebuilt);
        EXPECT_NE (store.notice().find (sentence), std::string::npos) << store.notice();
        fill (store, 0, 3);
        EXPECT_EQ (store.save (path), similarityOk);
        juce::MemoryBlock kept;
        EXPECT_TRUE (folder.file ("px_mufin.ses.bad").loadFileAsData (kept));
        EXPECT_TRUE (kept.matches (old.data(), old.size()));
        SessionStore again;
        EXPECT_EQ (again.load (path), similarityOk);
        EXPECT_EQ (again.size(), 3u);
    }
}

TEST_F (SessionStoreTest, TheBoundOfADistanceIsNeverAboveIt)
{
    for (unsigned i = 0; i < 40; ++i)
        for (unsigned k = 0; k < 40; ++k)
        {
            const auto a = Music::describe (i), b = Music::describe (k);
            const auto rangeOfA = partRange (a), rangeOfB = partRange (b);
            EXPECT_LE (leastDistance ({ a, rangeOfA }, { b, rangeOfB }), distance (a, b) + 1e-6f)
                << i << ", " << k;
        }
}

TEST_F (SessionStoreTest, WhatCannotBeWrittenIsSaidAndKeptInMemory)
{
    SessionStore store;
    fill (store, 0, 3);
    EXPECT_EQ (store.save (folder.file ("no/such/folder.ses").getFullPathName().toStdString()),
               similarityNotWritten);
    EXPECT_EQ (store.size(), 3u);
    EXPECT_EQ (store.save (path), similarityOk);
    SessionStore again;
    again.load (path);
    EXPECT_EQ (again.size(), 3u);
}
