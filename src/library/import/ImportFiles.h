#pragma once

#include "library/import/ImportRun.h"
#include "library/songs/SongList.h"

/** Imports dropped or chosen files and folders in one transaction, and puts them, known or new, where they were dropped. */
class ImportFiles
{
public:
    /** Where the songs go besides the library: into the list if there is one, else into the playlist, else into the
        automix list if asked. */
    struct Target
    {
        SongList* list = nullptr; ///< a playlist or the automix list; is written back to the database
        int place = 0;            ///< of the first song in `list`; beyond the end means the end
        int playlistId = -1;      ///< songs are appended
        bool isAutomix = false;   ///< songs are appended
    };

    /** @param database   none ends the import at once
        @param paths      absolute, of files and folders */
    ImportFiles (SongDatabase* database, const juce::StringArray& paths, const Target&);

    /** Any thread but the audio thread; the list must not be in use by another. */
    ImportResult run (ImportProgress&);

private:
    void putIntoList (const juce::StringArray& accepted);

    SongDatabase* const database;
    const juce::StringArray paths;
    const Target target;
};
