#pragma once

#include <cstdint>

/** The source of a list of songs. */
enum class SongListKind : int32_t
{
    none = -1,
    root = 0,
    library,
    album,
    albums,
    artist,
    artists,
    genre,
    playlist,
    smartPlaylist,
    searchLibrary,
    searchPlaylist,
    searchSmartPlaylist,
    automix,
    searchAutomix,
    foreignPlaylist,
    searchForeignPlaylist,
    recommendation,
    searchRecommendation,

    /** A session in which songs were played, kept beside the library; no operation of SongDatabase knows it. */
    history,

    /** The songs of the library whose files are not there; no operation of SongDatabase knows it either. */
    missing
};

/** True where the songs are those of a foreign library: they can be searched and sorted, never edited. */
constexpr bool isForeign (SongListKind kind)
{
    return kind == SongListKind::foreignPlaylist || kind == SongListKind::searchForeignPlaylist;
}
