#pragma once

#include <cstdint>
#include <vector>

/** A notice that the library is not as it was. */
struct LibraryChange
{
    bool songs = false; ///< rows of songs came, went or were edited
    bool lists = false; ///< playlists, smart playlists, the automix list or their entries

    /** The songs; empty with `songs` means any. */
    std::vector<int32_t> songIds {};

    bool byOthers = false; ///< another program has written
};

/** Hears of changes, on the message thread. */
class LibraryListener
{
public:
    virtual ~LibraryListener() = default;
    virtual void libraryChanged (const LibraryChange&) = 0;
};
