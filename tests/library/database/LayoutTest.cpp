#include "LibraryFixture.h"

#include <map>

using Layouts = LibraryFixture;

TEST_F (Layouts, EveryKindKeepsItsOwn)
{
    int32_t playlist = -1, foreign = -1, smart = -1;
    for (int i = 0; i < 2; ++i)
    {
        ok ({ database.createPlaylist ("p", nullptr, 1, &playlist),
              database.createForeignPlaylist ("f", nullptr, 1, &foreign),
              database.createSmartPlaylist ("s", "1", "", 1, &smart) });
    }

    // Kinds with the same place are in one group; -1 stores nothing.
    const int groups[] { 1, 1, 1, 1, 1, 1, 1, 2, 3, 1, 2, 3, 4, -1, 5, 5, 6, -1 };
    const std::map<int, int32_t> ids { { 2, playlist }, { 3, smart }, { 5, foreign } };
    std::map<int, juce::String> last;
    for (int kind = 0; kind < static_cast<int> (std::size (groups)); ++kind)
    {
        const auto group = groups[kind];
        const SongList list (static_cast<SongListKind> (kind), ids.contains (group) ? ids.at (group) : -1);
        juce::String layout, selection;
        EXPECT_EQ (database.loadLayout (&list, layout), 0);
        EXPECT_EQ (layout, last[group]) << kind;
        last[group] = group < 0 ? juce::String() : "<TABLELAYOUT it='s " + juce::String (kind) + "'/>";
        ok ({ database.saveLayout (&list, last[group], "<SEL/>" + last[group]),
              database.loadLayout (&list, layout), database.loadSelection (&list, selection) });
        EXPECT_EQ (layout, last[group]) << kind;
        EXPECT_EQ (selection, group < 0 ? juce::String() : "<SEL/>" + last[group]) << kind;
    }
    const SongList untouched (SongListKind::playlist, playlist - 1);
    juce::String selection;
    EXPECT_EQ (database.loadSelection (&untouched, selection), 0);
    EXPECT_EQ (selection, "0");
    EXPECT_EQ (ask ("SELECT COUNT(*) FROM settings"), "7");
    EXPECT_EQ (database.loadLayout (nullptr, selection), LibraryCode::badArgument);
}
