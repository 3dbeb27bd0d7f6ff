#pragma once

#include "library/import/ImportProgress.h"

#include <juce_core/juce_core.h>

class SongDatabase;

/** Reads the music library of another program, a property list, into the foreign tables, in place of what they held. The
    library itself is never touched. */
class ImportItunes
{
public:
    struct Result
    {
        int tracks = 0;    ///< that the tables took
        int playlists = 0; ///< likewise, the foreign program's own left out

        /** False if the file is missing or can't be read to its end: the tables are empty then. */
        bool isRead = false;
        bool isCancelled = false; ///< what was read by then is in the tables
    };

    /** @param database   none ends the import at once */
    ImportItunes (SongDatabase* database, const juce::File& library);

    /** Any thread but the audio thread. The file takes the same memory whatever its size; the foreign tables,
        which are in memory, take about what they hold. */
    Result run (ImportProgress&);

private:
    SongDatabase* const database;
    const juce::File library;
};
