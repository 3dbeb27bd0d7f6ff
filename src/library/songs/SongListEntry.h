#pragma once

#include <cstdint>

class SongDatabase;

/** One row of a list. */
struct SongListEntry
{
    /** Seconds. */
    uint32_t duration = 0;

    /** Bytes; a larger file shows as 4,294,967,295. */
    uint32_t filesize = 0;

    /** The song's number, -1 if none. */
    int32_t songId = -1;

    /** The row's number in the list's table, unique in the list; -1 in a list without rows of its own. */
    int32_t entryId = -1;

    SongDatabase* database = nullptr;
};
