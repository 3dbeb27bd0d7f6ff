#pragma once

#include "library/database/SongDatabase.h"
#include "shared/TemporaryFolder.h"

#include <gmock/gmock.h>

#include <string>
#include <utility>
#include <vector>

/** A library in a folder of its own. */
struct LibraryFixture : testing::Test
{
    using Values = std::vector<std::pair<SongColumn, juce::String>>;

    TemporaryFolder folder;
    juce::File file = folder.file ("library.sqlite");
    SongDatabase database { file };

    static SongRecord record (const juce::String& path, const Values& values = {})
    {
        SongRecord song;
        song[SongColumn::filename] = path;
        for (const auto& [column, value] : values)
            song[column] = value;
        return song;
    }

    /** Expects that operations, run in this order, all gave 0. */
    static void ok (std::initializer_list<int> codes) { EXPECT_THAT (codes, testing::Each (0)); }

    /** @returns the song's number */
    int32_t add (const juce::String& path, const Values& values = {})
    {
        EXPECT_EQ (database.insertSong (record (path, values)), 0);
        return database.idOfFilename (path);
    }

    juce::String text (int32_t id, SongField field)
    {
        juce::String result;
        EXPECT_EQ (database.readField (field, id, result), 0);
        return result;
    }

    /** The first column of what a query of another program gives, joined by "|". */
    std::string ask (const std::string& sql) const
    {
        SqlConnection other;
        std::string result;
        EXPECT_EQ (other.openForReading (file.getFullPathName()), 0);
        EXPECT_EQ (other.query (sql, [&] (const SqlRow& row)
                                { result += (result.empty() ? "" : "|") + row.text (0).toStdString(); }),
                   0)
            << sql;
        return result;
    }

    static SongList listOf (SongListKind kind, int32_t id, const std::vector<int32_t>& songIds)
    {
        SongList list (kind, id);
        for (const auto songId : songIds)
            list.add ({ 10, 100, songId, -1, nullptr });
        return list;
    }
};
