#pragma once

#include "library/songs/SongListKind.h"

#include <string>

/** One of the four tables whose rows link a list to its songs, in the order of the rows' ids. */
struct LinkTable
{
    const char* links;

    /** The table of the songs that are linked. */
    const char* songs;

    /** True if the rows belong to playlists with ids. */
    bool manyLists;

    /** True if the rows live in the writing connection alone. */
    bool isTemporary;

    /** The statement that gives a list's rows, up to where conditions and the sort go. */
    std::string selectRows (int32_t playlistId) const;

    /** The statement that appends a song to a list. */
    std::string appendSong (int32_t playlistId, int32_t songId) const;
};

namespace LinkTables
{
inline constexpr LinkTable playlists { "playlists_songs", "songs", true, false };
inline constexpr LinkTable foreignPlaylists { "itunes_playlists_songs", "itunes_songs", true, true };
inline constexpr LinkTable automix { "automix_songs", "songs", false, false };
inline constexpr LinkTable recommendation { "recommendation_songs", "songs", false, true };

/** The table behind a kind of list or behind a search in it; null where a list is not stored as links. */
const LinkTable* of (SongListKind);
}
