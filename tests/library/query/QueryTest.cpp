#include "database/LibraryFixture.h"
#include "library/query/QueryTerms.h"
#include "library/query/RunQuery.h"

#include <algorithm>
#include <map>

using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::UnorderedElementsAre;

namespace
{
const std::vector<SongField> titleAndArtist { SongField::title, SongField::artist };

/** A library, the index of it, and queries. */
struct Queries : LibraryFixture
{
    SongIndex index;

    int32_t song (const char* title, const char* artist, const LibraryFixture::Values& more = {})
    {
        auto values = more;
        values.emplace_back (SongColumn::title, juce::CharPointer_UTF8 (title));
        values.emplace_back (SongColumn::artist, juce::CharPointer_UTF8 (artist));
        return add ("/music/" + juce::String (++files) + ".mp3", values);
    }

    std::vector<int32_t> run (const SongQuery& query)
    {
        SongList list;
        EXPECT_EQ (runQuery (query, database, index, list), 0);
        return list.songIds();
    }

    std::vector<int32_t> find (const juce::String& text,
                               const std::vector<SongField>& fields = titleAndArtist)
    {
        return run ({ .search = text, .fields = fields });
    }

    int files = 0;
};
}

TEST_F (Queries, FindWordsInAnyOrderAcrossTheChosenFieldsAndConditions)
{
    const auto sun =
        song ("Sun is rising", "Bj\xc3\xb6rk",
              { { SongColumn::bpm, "120.4" }, { SongColumn::key, "8A" }, { SongColumn::year, "1995" } });
    const auto moon =
        song ("Moon & sun", "BJORK",
              { { SongColumn::bpm, "126" }, { SongColumn::rating, "4" }, { SongColumn::key, "9A" } });
    const auto night =
        song ("Night drive", "Deep One",
              { { SongColumn::bpm, "63.5" }, { SongColumn::rating, "3" }, { SongColumn::genre, "House" } });
    const auto drive = song ("Drive 50%_off", "The Night",
                             { { SongColumn::year, "2001" }, { SongColumn::genre, "Deep House" } });
    ASSERT_EQ (database.setIntField (SongField::analyzed, sun, 49), 0);
    ASSERT_EQ (database.setIntField (SongField::analyzed, moon, 50), 0);
    ASSERT_EQ (index.build (database), 0);

    const struct
    {
        const char* text;
        std::vector<int32_t> found;
    } cases[] {
        { "sun bjork", { sun, moon } },
        { "BJ\xc3\x96RK rising", { sun } },
        { "bjo\xcc\x88rk", { sun, moon } },
        { "night drive", { night, drive } },
        { "\"night drive\"", { night } },
        { "deep", { night } },
        { "deep genre:house", { night } },
        { "genre:\"deep house\"", { drive } },
        { "rising drive", {} },
        { "50%off", { drive } },
        { "_un_is", { sun } },
        { "bpm:120-126", { sun, moon } },
        { "bpm:126-120", { sun, moon } },
        { "bpm:120", { sun } },
        { "bpm:>120.4", { moon } },
        { "bpm:-100", { night } },
        { "rating:>3", { moon } },
        { "rating:>=3 sun", { moon } },
        { "grid:<50", { sun } },
        { "grid:1-", { sun, moon } },
        { "key:8a,9a", { sun, moon } },
        { "key:8", {} },
        { "year:1990-1999", { sun } },
        { "YEAR:2001", { drive } },
        { "bpm: sun", { sun, moon } },
        { "bpm:fast", {} },
        { "", { sun, moon, night, drive } },
    };
    for (const auto& each : cases)
        EXPECT_THAT (find (juce::CharPointer_UTF8 (each.text)), ElementsAreArray (each.found)) << each.text;
    EXPECT_THAT (find ("sun", {}), ElementsAre()) << "no toggles";
    EXPECT_THAT (find ("rating:4", {}), ElementsAre (moon)) << "a condition names its field";
    EXPECT_THAT (run ({ .confidenceBelow = 50 }), ElementsAre (sun)) << "unknown is not doubtful";
    ASSERT_EQ (database.setIntField (SongField::analyzed, night, 1), 0);
    ASSERT_TRUE (index.update (database, { night }));
    EXPECT_THAT (run ({ .confidenceBelow = 50 }), ElementsAre (sun, night));
    EXPECT_THAT (run ({ .fitBpm = 127.0, .fitPercent = 1.0 }), UnorderedElementsAre (moon, night));
    EXPECT_THAT (run ({ .fitBpm = 60.0, .fitPercent = 1.0 }), ElementsAre (sun)) << "half of 120.4";
}

TEST_F (Queries, AgreeWithTheDatabaseInWhatTheyFindAndInItsOrder)
{
    juce::Random random (7);
    const char* words[] { "alpha",
                          "Beta",
                          "GAMMA ray",
                          "delta",
                          "\xc3\x89toile",
                          "\xc3\xa9"
                          "cho",
                          "zebra",
                          "a'b",
                          "" };
    const auto word = [&] { return juce::String (juce::CharPointer_UTF8 (words[random.nextInt (9)])); };
    for (int i = 0; i < 400; ++i)
        add (i == 7 ? juce::String() : "/m/" + word() + juce::String (i),
             { { SongColumn::title, word() + " " + word() },
               { SongColumn::artist, word() },
               { SongColumn::comment, word() },
               { SongColumn::bpm, juce::String (random.nextInt (9) * 20) },
               { SongColumn::year, juce::String (random.nextInt (30) + 1980) },
               { SongColumn::duration, juce::String (random.nextInt (50)) },
               { SongColumn::rating, juce::String (random.nextInt (6)) } });
    ASSERT_EQ (index.build (database), 0);

    SongList expected;
    for (int field = 0; field <= songFieldCount; ++field)
    {
        const auto sort = static_cast<SongField> (field);
        std::map<int32_t, juce::String> keys;
        for (int32_t id = 1; id <= database.countSongs(); ++id)
            keys[id] = hasColumn (sort) ? text (id, sort).toUpperCase() : juce::String (id);
        for (const auto ascending : { true, false })
        {
            // Downwards SQLite takes equal songs in the one or the other order, by its plan.
            const auto expectSame = [&] (const std::vector<int32_t>& found, const char* term)
            {
                auto wanted = expected.songIds();
                if (ascending)
                {
                    EXPECT_EQ (found, wanted) << field << " " << term;
                    return;
                }
                ASSERT_EQ (found.size(), wanted.size()) << field << " " << term;
                for (size_t i = 0; i < wanted.size(); ++i)
                    EXPECT_EQ (keys[found[i]], keys[wanted[i]]) << field << " " << term;
                std::sort (wanted.begin(), wanted.end());
                auto sorted = found;
                std::sort (sorted.begin(), sorted.end());
                EXPECT_EQ (sorted, wanted);
            };
            ok ({ database.fillLibrary (&expected, sort, ascending) });
            expectSame (run ({ .sort = sort, .ascending = ascending }), "");
            const std::vector<SongField> fields { SongField::title, SongField::comment, SongField::year,
                                                  SongField::bitrate };
            for (const auto* term : { "a", "ALPHA", "mm", "198", "a'b", "b%a", "_elta" })
            {
                ok ({ database.searchLibrary (&expected, fields, term, sort, ascending) });
                expectSame (run ({ .sort = sort, .ascending = ascending, .search = term, .fields = fields }),
                            term);
            }
        }
    }
    int32_t playlist = -1;
    ok ({ database.fillLibrary (&expected, SongField::title, true) });
    ok ({ database.createPlaylist ("p", &expected, 1, &playlist) });
    ok ({ database.searchPlaylist (&expected, playlist, titleAndArtist, "beta", SongField::artist, true) });
    EXPECT_EQ (run ({ .kind = SongListKind::playlist,
                      .id = playlist,
                      .sort = SongField::artist,
                      .search = "beta",
                      .fields = titleAndArtist }),
               expected.songIds());
}

TEST_F (Queries, FollowTheLibraryByItsChangesAlone)
{
    const auto a = song ("one", "x"), b = song ("two", "x");
    ASSERT_EQ (index.build (database), 0);
    juce::ignoreUnused (database.takeChanges());
    const auto c = song ("three", "x");
    ok ({ database.setTextField (SongField::title, a, "zebra"), database.deleteSong (b),
          database.setRating (c, 5) });
    auto changes = database.takeChanges();
    EXPECT_THAT (changes.songs, ElementsAre (a, b, c));
    EXPECT_FALSE (changes.byOthers);
    EXPECT_TRUE (index.update (database, changes.songs));
    EXPECT_THAT (run ({ .sort = SongField::title }), ElementsAre (c, a));
    EXPECT_THAT (find ("one"), ElementsAre());
    EXPECT_THAT (find ("zebra"), ElementsAre (a));
    EXPECT_THAT (find ("rating:5"), ElementsAre (c));

    {
        auto taken = database.beginTransaction();
        ok ({ database.setRating (a, 1) });
    }
    EXPECT_FALSE (database.takeChanges().byOthers) << "taken back";
    SongDatabase other (file);
    ok ({ other.setRating (a, 2) });
    changes = database.takeChanges();
    EXPECT_TRUE (changes.byOthers && changes.songs.empty());
    ok ({ database.clearLibrary() });
    EXPECT_TRUE (database.takeChanges().allSongs);
}

TEST (QueryMarks, AreThePartsThatWereFound)
{
    const struct
    {
        const char *typed, *cell;
        SongField field;
        std::vector<juce::Range<int>> marks;
    } cases[] {
        { "ab cd", "xABcd ab", SongField::title, { { 1, 5 }, { 6, 8 } } },
        { "strasse",
          "Hauptstra\xc3\x9f"
          "e",
          SongField::title,
          { { 5, 11 } } },
        { "jor", "Bjo\xcc\x88rk", SongField::title, { { 1, 5 } } },
        { "a%c", "abc", SongField::title, { { 0, 1 }, { 2, 3 } } },
        { "genre:ab", "ab", SongField::title, {} },
        { "genre:ab", "ab", SongField::genre, { { 0, 2 } } },
        { "ab", "ab", SongField::genre, {} },
        { "bpm:120-", "124.00", SongField::bpm, { { 0, 6 } } },
    };
    for (const auto& each : cases)
        EXPECT_EQ (marksIn (juce::CharPointer_UTF8 (each.cell), QueryTerms::parse (each.typed), each.field,
                            titleAndArtist),
                   each.marks)
            << each.typed << " in " << each.cell;
}
