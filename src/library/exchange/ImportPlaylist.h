#pragma once

#include "library/exchange/ExchangeTexts.h"
#include "library/import/ImportProgress.h"
#include "library/sql/LibraryCode.h"

#include <juce_core/juce_core.h>

#include <cstdint>

class SongDatabase;
class SongList;

/** Brings the songs of a playlist file (".m3u", ".m3u8", or ".xml", a property list) into the library and makes a playlist of them
    in the file's order. */
class ImportPlaylist
{
public:
    struct Result
    {
        int32_t playlistId = -1; ///< of the songs, -1 if they went nowhere
        int songs = 0;           ///< in the playlist
        int added = 0;           ///< of these, those that are new in the library
        bool isRead = false;     ///< false if the file is missing, of another kind, or breaks off
        bool isCancelled = false;

        /** The code of LibraryCode, or SQLite's, of the fault that ended the import: there is no playlist then, and of the
            songs `added` are in the library. */
        int code = 0;

        bool isLocked() const { return code == LibraryCode::busy; }
    };

    /** @param database     none ends the import at once
        @param playlistId   songs are appended to this playlist; -1 makes a new one
        @param name         of a new one
        @param sortOrder    of a new one; -1 puts it behind the others */
    ImportPlaylist (SongDatabase* database, const juce::File& path, int32_t playlistId = -1,
                    const juce::String& name = ExchangeTexts::playlistName, int32_t sortOrder = -1);

    /** Any thread but the audio thread. A file that breaks off, or a cancel, keeps what was read by then. */
    Result run (ImportProgress&);

private:
    int makePlaylist (const SongList&, Result&) const;

    SongDatabase* const database;
    const juce::File path;
    const int32_t playlistId;
    const juce::String name;
    const int32_t sortOrder;
};
