#include "library/database/LinkTable.h"
#include "library/database/SongDatabase.h"
#include "library/sql/StoredText.h"

int SongDatabase::insertRow (const std::string& sql, int32_t* newId)
{
    int64_t id = -1;
    if (const auto code = connection.insert (sql, id); code != LibraryCode::ok)
        return code == LibraryCode::notOpen ? code : LibraryCode::failed;
    if (newId != nullptr)
        *newId = static_cast<int32_t> (id);
    return LibraryCode::ok;
}

int SongDatabase::createListIn (const LinkTable& table, const char* playlists, const juce::String& name,
                                const SongList* list, int32_t sortOrder, int32_t* newId)
{
    int32_t id = -1;
    if (const auto code =
            insertRow (std::string (" INSERT INTO ") + playlists + " VALUES (NULL, "
                           + StoredText::quoted (name) + ", " + std::to_string (sortOrder) + ", '', 0); ",
                       &id);
        code != LibraryCode::ok)
        return code;
    if (newId != nullptr)
        *newId = id;
    return list == nullptr || list->isEmpty() ? LibraryCode::ok : addSongs (table, id, *list);
}

int SongDatabase::createPlaylist (const juce::String& name, const SongList* list, int32_t sortOrder,
                                  int32_t* newId)
{
    return createListIn (LinkTables::playlists, "playlists", name, list, sortOrder, newId);
}

int SongDatabase::createForeignPlaylist (const juce::String& name, const SongList* list, int32_t sortOrder,
                                         int32_t* newId)
{
    return createListIn (LinkTables::foreignPlaylists, "itunes_playlists", name, list, sortOrder, newId);
}

int SongDatabase::addSongs (const LinkTable& table, int32_t id, const SongList& list)
{
    // A foreign song has another number in the library; its path is what both know.
    const auto translated = isForeign (list.kind) && &table != &LinkTables::foreignPlaylists;
    const SqlTransaction transaction (connection);
    for (const auto& entry : list.entries())
    {
        auto songId = entry.songId;
        if (translated)
        {
            juce::String path;
            juce::ignoreUnused (readForeignField (SongField::filename, songId, path));
            songId = idOfFilename (path);
        }
        if (translated && songId < 0)
            continue;
        if (const auto code = connection.run (table.appendSong (id, songId)); code != LibraryCode::ok)
            return code;
    }
    return LibraryCode::ok;
}

int SongDatabase::addList (const LinkTable& table, int32_t id, const SongList* list)
{
    if (list == nullptr)
        return LibraryCode::badArgument;
    return list->isEmpty() ? LibraryCode::emptyList : addSongs (table, id, *list);
}

int SongDatabase::addFiles (const LinkTable& table, int32_t id, const juce::StringArray& paths)
{
    if (paths.isEmpty())
        return LibraryCode::emptyList;
    if (!isOpen())
        return LibraryCode::notOpen;
    const SqlTransaction transaction (connection);
    for (const auto& path : paths)
    {
        const auto songId = idOfFilename (path);
        if (songId < 0)
            continue;
        if (const auto code = connection.run (table.appendSong (id, songId)); code != LibraryCode::ok)
            return code;
    }
    return LibraryCode::ok;
}

int SongDatabase::addFilesToPlaylist (int32_t id, const juce::StringArray& paths)
{
    return id < 0 ? LibraryCode::badArgument : addFiles (LinkTables::playlists, id, paths);
}

int SongDatabase::addListToPlaylist (int32_t id, const SongList* list)
{
    return id < 0 ? LibraryCode::badArgument : addList (LinkTables::playlists, id, list);
}

int SongDatabase::addFilesToAutomix (const juce::StringArray& paths)
{
    return addFiles (LinkTables::automix, -1, paths);
}

int SongDatabase::addListToAutomix (const SongList* list)
{
    return addList (LinkTables::automix, -1, list);
}

int SongDatabase::addListToRecommendation (const SongList* list)
{
    return addList (LinkTables::recommendation, -1, list);
}

int SongDatabase::replaceEntries (const std::string& deleteOld, const LinkTable& table, const SongList& list)
{
    SqlTransaction transaction (connection);
    auto code = connection.run (deleteOld);
    if (code == LibraryCode::ok)
        code = addSongs (table, list.playlistId, list);
    // Half of a list in place of the whole one would be a loss.
    if (code != LibraryCode::ok)
        transaction.rollBack();
    return code;
}

int SongDatabase::replacePlaylistEntries (const SongList* list)
{
    if (list == nullptr)
        return LibraryCode::badArgument;
    if (list->kind != SongListKind::playlist)
        return LibraryCode::wrongKind;
    if (list->playlistId < 0)
        return LibraryCode::badArgument;
    return replaceEntries (
        " DELETE FROM playlists_songs WHERE playlist_id = " + std::to_string (list->playlistId) + "; ",
        LinkTables::playlists, *list);
}

int SongDatabase::replaceAutomixEntries (const SongList* list)
{
    if (list == nullptr)
        return LibraryCode::badArgument;
    if (list->kind != SongListKind::automix)
        return LibraryCode::wrongKind;
    return replaceEntries (" DELETE FROM automix_songs", LinkTables::automix, *list);
}

int SongDatabase::removeEntries (int32_t playlistId, std::span<const int32_t> entryIds)
{
    return connection.run (" DELETE FROM playlists_songs WHERE playlist_id = " + std::to_string (playlistId)
                           + " AND id IN (" + StoredText::joined (entryIds) + ")");
}

int SongDatabase::removeAutomixEntries (std::span<const int32_t> entryIds)
{
    return connection.run (" DELETE FROM automix_songs WHERE id IN (" + StoredText::joined (entryIds) + ")");
}

int SongDatabase::clearAutomix()
{
    return connection.run (" DELETE FROM automix_songs");
}

int SongDatabase::clearRecommendation()
{
    return connection.run (" DELETE FROM recommendation_songs");
}
