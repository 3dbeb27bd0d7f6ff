#pragma once

#include "session/browse/LibraryRoom.h"
#include "session/browse/rows/RowSource.h"
#include "shared/TemporaryFolder.h"

#include <gmock/gmock.h>

/** A library with a room for its browsers, without a message loop. */
struct BrowseFixture : testing::Test
{
    const TemporaryFolder folder;
    const juce::File file = folder.file ("library.sqlite");
    SongDatabase database { file };
    LibraryRoom room { database, { folder.file ("history"), folder.file ("folders.txt") } };

    static int32_t add (SongDatabase& to, const juce::String& path, const juce::String& title)
    {
        SongRecord song;
        song[SongColumn::filename] = path;
        song[SongColumn::title] = title;
        EXPECT_EQ (to.insertSong (song), 0);
        return to.idOfFilename (path);
    }

    std::vector<int32_t> addSongs (int count)
    {
        std::vector<int32_t> ids;
        for (int i = 0; i < count; ++i)
            ids.push_back (add (database, "/music/" + juce::String (i), "Song " + juce::String (i)));
        return ids;
    }

    /** All that is stored of lists, as another program reads it. */
    std::string stored() const
    {
        SqlConnection other;
        std::string text;
        EXPECT_EQ (other.openForReading (file.getFullPathName()), 0);
        for (const auto* sql : { "SELECT id||name||sort_order FROM playlists ORDER BY id",
                                 "SELECT name||rules FROM smart_playlists",
                                 "SELECT id||'>'||playlist_id||'='||song_id FROM playlists_songs ORDER BY id",
                                 "SELECT id||'='||song_id FROM automix_songs ORDER BY id" })
            EXPECT_EQ (
                other.query (sql, [&] (const SqlRow& row) { text += row.text (0).toStdString() + " "; }), 0);
        return text;
    }

    /** The songs of a list in its order. */
    std::vector<int32_t> songsOf (const ListRef& list)
    {
        ListContent content;
        EXPECT_EQ (database.readList (list, content), 0);
        std::vector<int32_t> ids;
        for (const auto& entry : content.entries)
            ids.push_back (entry.songId);
        return ids;
    }
};
