#include "LibraryFixture.h"

namespace
{
struct Searching : LibraryFixture
{
    static constexpr SongField titleAndArtist[] { SongField::title, SongField::artist };
    int32_t playlist = -1, foreign = -1;

    Searching()
    {
        const struct
        {
            int32_t id;
            const char *title, *artist, *genre;
        } songs[] { { 1, "Blue Monday", "Nu Order", "wave" },
                    { 2, "Monday's child", "X", "wave" },
                    { 3, "100% pure", "The Mondays", "house" },
                    { 4, "Strange", "y", "house" },
                    { 5, "not in any list monday", "z", "house" } };
        for (const auto& each : songs)
        {
            auto song = record ("/" + juce::String (each.id), { { SongColumn::title, each.title },
                                                                { SongColumn::artist, each.artist },
                                                                { SongColumn::genre, each.genre } });
            song.id = each.id;
            EXPECT_EQ (database.insertSong (song), 0);
            song.id += 10;
            EXPECT_EQ (database.insertForeignSong (song), 0);
        }
        const auto own = listOf (SongListKind::library, -1, { 4, 3, 2, 1, 1 });
        const auto others = listOf (SongListKind::foreignPlaylist, -1, { 14, 13, 12, 11, 11 });
        ok ({ database.createPlaylist ("p", &own, 1, &playlist),
              database.createForeignPlaylist ("f", &others, 1, &foreign), database.addListToAutomix (&own),
              database.addListToRecommendation (&own),
              database.createSmartPlaylist ("s", " (genre LIKE 'wave'); ", "", 9) });
    }

    using Search = std::function<int (SongList*, SongDatabase::SearchFields, const juce::String&)>;

    /** The eight kinds of search, as song numbers of the library. */
    std::vector<std::pair<const char*, Search>> searches()
    {
        constexpr auto sort = SongField::title;
        const auto ids = std::make_shared<std::vector<int32_t>> (std::vector<int32_t> { 3, 4, 1 });
        return {
            { "library",
              [this] (auto* l, auto f, auto& t) { return database.searchLibrary (l, f, t, sort, true); } },
            { "playlist", [this] (auto* l, auto f, auto& t)
              { return database.searchPlaylist (l, playlist, f, t, sort, true); } },
            { "foreign", [this] (auto* l, auto f, auto& t)
              { return database.searchForeignPlaylist (l, foreign, f, t, sort, true); } },
            { "automix",
              [this] (auto* l, auto f, auto& t) { return database.searchAutomix (l, f, t, sort, true); } },
            { "recommendation", [this] (auto* l, auto f, auto& t)
              { return database.searchRecommendation (l, f, t, sort, true); } },
            { "smart", [this] (auto* l, auto f, auto& t)
              { return database.searchSmartPlaylist (l, 5, f, t, sort, true); } },
            { "field", [this] (auto* l, auto f, auto& t)
              { return database.searchWithinField (l, SongField::genre, "wave", f, t, sort, true); } },
            { "ids", [this, ids] (auto* l, auto f, auto& t)
              { return database.searchAmongIds (l, *ids, f, t, sort, true); } },
        };
    }
};
}

TEST_F (Searching, FindsInEveryKindOfListWhatItHolds)
{
    const std::vector<std::vector<int32_t>> monday { { 3, 1, 2, 5 }, { 3, 1, 1, 2 }, { 13, 11, 11, 12 },
                                                     { 3, 1, 1, 2 }, { 3, 1, 1, 2 }, { 1, 2 },
                                                     { 1, 2 },       { 3, 1 } };
    const auto all = searches();
    for (size_t i = 0; i < all.size(); ++i)
    {
        SCOPED_TRACE (all[i].first);
        SongList list;
        const auto find = [&] (SongDatabase::SearchFields fields, const juce::String& term)
        {
            EXPECT_EQ (all[i].second (&list, fields, term), 0);
            return list.songIds();
        };
        EXPECT_EQ (find (titleAndArtist, "monday"), monday[i]);
        EXPECT_EQ (find (titleAndArtist, "monday' OR '1'='1"), std::vector<int32_t>());
        EXPECT_EQ (find ({}, "monday"), std::vector<int32_t>());
        EXPECT_LE (find (titleAndArtist, "monday's").size(), 1u);
        const SongField onlyArtist[] { SongField::artist };
        for (const auto id : find (onlyArtist, "monday"))
            EXPECT_EQ (id % 10, 3);
        const auto whole = find (titleAndArtist, "");
        EXPECT_GE (whole.size(), monday[i].size());
    }
}

TEST_F (Searching, LettersOfAllScriptsHaveTwoCases)
{
    const auto utf8 = [] (const char* text) { return juce::String::fromUTF8 (text); };
    const auto id =
        add ("/6", { { SongColumn::title, utf8 ("\xc3\x89"
                                                "clair \xd0\x96\xd1\x83\xd0\x9a \xcf\x82 100%") } });
    int32_t smart = -1;
    ok ({ database.createSmartPlaylist ("s",
                                        utf8 (" (title LIKE '\xc3\xa9"
                                              "CLAIR%'); "),
                                        "", 1, &smart) });
    SongList list;
    for (const auto* term : { "\xc3\xa9"
                              "CLAIR",
                              "\xd0\xb6\xd0\xa3\xd0\xba", "\xce\xa3", "_clair%\xd0\xb6_\xd0\xba",
                              "ir \xd0\x96\xd0\xa3\xd0\x9a%00%" })
    {
        EXPECT_EQ (database.searchLibrary (&list, titleAndArtist, utf8 (term), SongField::title, true), 0);
        EXPECT_EQ (list.songIds(), std::vector<int32_t> { id }) << term;
    }
    for (const auto* term : { "eclair", "\xd0\x96\xd0\xa3__\xd0\x9a", "\xc3\xa9__clair" })
    {
        EXPECT_EQ (database.searchLibrary (&list, titleAndArtist, utf8 (term), SongField::title, true), 0);
        EXPECT_TRUE (list.isEmpty()) << term;
    }
    EXPECT_EQ (database.fillSmartPlaylist (&list, smart, SongField::title, true), 0);
    EXPECT_EQ (list.size(), 1);

    const auto first = add ("/7", { { SongColumn::genre, utf8 ("\xc3\x84 a") } }),
               third = add ("/8", { { SongColumn::genre, utf8 ("\xc3\x84 c") } }),
               second = add ("/9", { { SongColumn::genre, utf8 ("\xc3\xa4 b") } });
    EXPECT_EQ (database.fillLibrary (&list, SongField::genre, false), 0);
    EXPECT_EQ (list[0].songId, third);
    EXPECT_EQ (list[1].songId, second);
    EXPECT_EQ (list[2].songId, first);
}
