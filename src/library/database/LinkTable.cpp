#include "library/database/LinkTable.h"

std::string LinkTable::selectRows (int32_t playlistId) const
{
    const std::string song (songs), link (links);
    const auto column = [&] (const char* name, const char* shown)
    { return song + "." + name + " as " + shown + ", "; };
    return " SELECT " + column ("id", "songid") + column ("duration", "duration")
           + column ("filesize", "filesize") + link + ".id as uniquestpid FROM " + song + ", " + link
           + " WHERE "
           + (manyLists ? "playlist_id = " + std::to_string (playlistId) + " AND " : std::string()) + song
           + ".id=" + link + ".song_id";
}

std::string LinkTable::appendSong (int32_t playlistId, int32_t songId) const
{
    return std::string (" INSERT INTO ") + links + " VALUES (NULL, "
           + (manyLists ? std::to_string (playlistId) + ", " : std::string()) + std::to_string (songId)
           + "); ";
}

const LinkTable* LinkTables::of (SongListKind kind)
{
    switch (kind)
    {
    case SongListKind::playlist:
    case SongListKind::searchPlaylist:
        return &playlists;
    case SongListKind::automix:
    case SongListKind::searchAutomix:
        return &automix;
    case SongListKind::foreignPlaylist:
    case SongListKind::searchForeignPlaylist:
        return &foreignPlaylists;
    case SongListKind::recommendation:
    case SongListKind::searchRecommendation:
        return &recommendation;
    default:
        return nullptr;
    }
}
