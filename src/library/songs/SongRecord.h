#pragma once

#include "library/songs/SongColumn.h"

#include <juce_core/juce_core.h>

#include <array>

class SongDatabase;

/** One song in memory: all columns as text, whatever their SQL type. A number stays text until a statement or a display
    needs it. Not locked; each thread uses its own. */
struct SongRecord
{
    /** The song's number, -1 for one that is not in the database. */
    int32_t id = -1;

    /** The database that it was read from. */
    SongDatabase* database = nullptr;

    /** True if the file was there, and no folder, when the record was read. */
    bool present = false;

    /** True once the columns have what the file system knows, too; see SongDatabase::completeFromFile(). */
    bool hasFileFacts = false;

    std::array<juce::String, songColumnCount> columns;

    juce::String& operator[] (SongColumn column) { return columns[static_cast<size_t> (column)]; }
    const juce::String& operator[] (SongColumn column) const { return columns[static_cast<size_t> (column)]; }
};
