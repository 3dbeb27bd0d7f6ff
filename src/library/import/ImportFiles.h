#pragma once

#include "library/import/ImportRun.h"
#include "library/songs/SongList.h"

/** Imports dropped or chosen files and folders, and puts them, known or new, into the list on which they were dropped. */
class ImportFiles
{
public:
    /** The place of the songs besides the library: the list if there is one, else the playlist, else the automix list if
        asked. */
    struct Target
    {
        SongList* list = nullptr; ///< a playlist or the automix list; is written back to the database
        int place = 0;            ///< of the first song in `list`; beyond the end means the end
        int playlistId = -1;      ///< songs are appended
        bool isAutomix = false;   ///< songs are appended
    };

    /** @param database   none ends the import at once
        @param paths      absolute, of files and folders
        @param judge      lets files pass that a deck can load; without it all do */
    ImportFiles (SongDatabase* database, const juce::StringArray& paths, const Target&,
                 SongBatch::Judge judge = {});

    /** Any thread but the audio thread; the list must not be in use by another. Files that the library could not store are
        put nowhere; the result's code is also that of a list that could not be written. */
    ImportResult run (ImportProgress&);

private:
    int putWhereDropped (const juce::StringArray& accepted) const;
    int putIntoList (const juce::StringArray& accepted) const;

    SongDatabase* const database;
    const juce::StringArray paths;
    const Target target;
    const SongBatch::Judge judge;
};
