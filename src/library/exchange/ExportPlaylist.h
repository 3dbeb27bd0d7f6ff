#pragma once

#include "library/import/ImportProgress.h"

#include <juce_core/juce_core.h>

class SongDatabase;
class SongList;

/** Writes a list for other programs: a path that ends in ".m3u" or ".m3u8" as text, any other as a web page. */
class ExportPlaylist
{
public:
    struct Result
    {
        int rows = 0;           ///< that were written
        bool isWritten = false; ///< false if the file can't be made, or the disk is full
        bool isCancelled = false;
    };

    /** @param database   none ends the export at once
        @param list       must live as long; its name is the page's title
        @param path       is replaced if it is there */
    ExportPlaylist (SongDatabase* database, const SongList& list, const juce::File& path);

    /** Any thread but the audio thread. A cancel leaves the file as far as it is written. */
    Result run (ImportProgress&);

private:
    SongDatabase* const database;
    const SongList& list;
    const juce::File path;
};
