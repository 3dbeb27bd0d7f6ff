#pragma once

#include "library/database/SongDatabase.h"
#include "session/browse/CoverArtLoader.h"
#include "session/browse/LibraryChange.h"
#include "session/browse/LibraryEdits.h"
#include "session/browse/LibraryJobs.h"
#include "session/browse/LibraryWatch.h"
#include "session/browse/PlayHistory.h"

/** All that the browsers of one process share about the open library: one per session, while it is open. Each view makes
    its own RowSource and LibrarySources from it. Message thread, but for what says otherwise. */
class LibraryRoom
{
public:
    /** The places of what is kept beside the library. */
    struct Places
    {
        juce::File history; ///< a folder

        /** The list of the folders that were imported. */
        juce::File folders;

        /** See SongBatch; without it all files are imported. */
        SongBatch::Judge judge {};
    };

    /** @param database   open, and longer there than this */
    LibraryRoom (SongDatabase& database, const Places&);

    void addListener (LibraryListener& listener) { watch.addListener (listener); }
    void removeListener (LibraryListener& listener) { watch.removeListener (listener); }

    /** Waits for edits and jobs and tells of their changes. For programs without a message loop. */
    void settle();

    SongDatabase& database;
    const Places places;
    PlayHistory history;
    LibraryWatch watch;
    LibraryEdits edits;
    LibraryJobs jobs;
    CoverArtLoader covers { 300 };
};
