#pragma once

#include "library/exchange/ExchangeTexts.h"
#include "library/import/ImportProgress.h"

#include <juce_core/juce_core.h>

#include <cstdint>

class SongDatabase;

/** Brings the songs of a playlist file (".m3u", or ".xml", a property list) into the library and makes a playlist of them
    in the file's order. */
class ImportPlaylist
{
public:
    struct Result
    {
        int32_t playlistId = -1; ///< where the songs went, -1 if nowhere
        int songs = 0;           ///< in the playlist
        int added = 0;           ///< of these, those that are new in the library
        bool isRead = false;     ///< false if the file is missing, of another kind, or breaks off
        bool isCancelled = false;
        bool isLocked =
            false; ///< another program writes to the library: the import ended, and there is no playlist
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
    SongDatabase* const database;
    const juce::File path;
    const int32_t playlistId;
    const juce::String name;
    const int32_t sortOrder;
};
