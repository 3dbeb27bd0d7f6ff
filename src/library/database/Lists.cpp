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
    if (!isOpen())
        return LibraryCode::notOpen;
    int32_t id = -1;
    SqlTransaction transaction (connection, table.isTemporary ? SqlTransaction::Purpose::reading
                                                              : SqlTransaction::Purpose::writing);
    auto code = transaction.code();
    if (code == LibraryCode::ok)
        code = insertRow (std::string (" INSERT INTO ") + playlists + " VALUES (NULL, "
                              + StoredText::quoted (name) + ", " + std::to_string (sortOrder) + ", '', 0); ",
                          &id);
    if (code == LibraryCode::ok && list != nullptr && !list->isEmpty())
        code = addSongs (table, id, *list);
    code = transaction.commitIf (code);
    if (code == LibraryCode::ok && newId != nullptr)
        *newId = id;
    return code;
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

int SongDatabase::addSongs (const LinkTable& table, int32_t id, const SongList& list,
                            std::vector<int32_t>* entryIds)
{
    // A foreign song has another number in the library; its path is what both know.
    const auto translated = isForeign (list.kind) && &table != &LinkTables::foreignPlaylists;
    SqlTransaction transaction (connection, table.isTemporary ? SqlTransaction::Purpose::reading
                                                              : SqlTransaction::Purpose::writing);
    auto code = transaction.code();
    for (auto entry = list.entries().begin(); entry != list.entries().end() && code == LibraryCode::ok;
         ++entry)
    {
        auto songId = entry->songId;
        if (translated)
        {
            juce::String path;
            code = readForeignField (SongField::filename, songId, path);
            songId = code == LibraryCode::ok ? idOfFilename (path) : -1;
        }
        if (code == LibraryCode::ok && (!translated || songId >= 0))
        {
            int64_t entryId = -1;
            code = connection.insert (table.appendSong (id, songId), entryId);
            if (entryIds != nullptr)
                entryIds->push_back (static_cast<int32_t> (entryId));
        }
    }
    return transaction.commitAfter (code);
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
    auto transaction = beginTransaction();
    auto code = transaction.code();
    for (auto path = paths.begin(); path != paths.end() && code == LibraryCode::ok; ++path)
    {
        const auto songId = idOfFilename (*path);
        if (songId >= 0)
            code = connection.run (table.appendSong (id, songId));
        else if (songId < -1)
            code = LibraryCode::ofCount (songId);
    }
    return transaction.commitAfter (code);
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

int SongDatabase::replaceEntries (const std::string& deleteOld, const LinkTable& table, SongList& list)
{
    // Half of a list in place of the whole one would be a loss.
    auto transaction = beginTransaction();
    std::vector<int32_t> entryIds;
    auto code = transaction.code();
    if (code == LibraryCode::ok)
        code = connection.run (deleteOld);
    if (code == LibraryCode::ok)
        code = addSongs (table, list.playlistId, list, &entryIds);
    code = transaction.commitIf (code);
    if (code == LibraryCode::ok)
        list.setEntryIds (entryIds);
    return code;
}

int SongDatabase::replacePlaylistEntries (SongList* list)
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

int SongDatabase::replaceAutomixEntries (SongList* list)
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
