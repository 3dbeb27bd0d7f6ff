#include "library/database/SongDatabase.h"
#include "library/sql/StoredText.h"

// The tree of sources: playlists and smart playlists as rows with a name and a place.

namespace
{
std::string whereId (int32_t id)
{
    return " WHERE id = " + std::to_string (id);
}

std::string rename (const char* table, int32_t id, const juce::String& name)
{
    return std::string (" UPDATE ") + table + " SET name = " + StoredText::quoted (name) + whereId (id);
}
}

int SongDatabase::listSources (SqlConnection& from, const char* table, SongListKind kind,
                               std::vector<SourceItem>& items)
{
    items.clear();
    return from.query (std::string (" SELECT name,id,sort_order FROM ") + table
                           + " ORDER BY sort_order ASC; ",
                       [&] (const SqlRow& row)
                       {
                           SourceItem item;
                           item.name = row.text (0);
                           item.kind = kind;
                           item.id = row.int32 (1);
                           item.sortOrder = row.int32 (2);
                           items.push_back (item);
                       });
}

int SongDatabase::listPlaylists (std::vector<SourceItem>& items)
{
    return listSources (*reading(), "playlists", SongListKind::playlist, items);
}

int SongDatabase::listSmartPlaylists (std::vector<SourceItem>& items)
{
    return listSources (*reading(), "smart_playlists", SongListKind::smartPlaylist, items);
}

int SongDatabase::listForeignPlaylists (std::vector<SourceItem>& items)
{
    return listSources (connection, "itunes_playlists", SongListKind::foreignPlaylist, items);
}

int SongDatabase::setSortOrder (const SourceItem& item)
{
    const auto place = " SET sort_order = " + std::to_string (item.sortOrder) + whereId (item.id) + "; ";
    if (item.kind == SongListKind::playlist)
        return connection.run (" UPDATE playlists" + place);
    if (item.kind == SongListKind::smartPlaylist)
        return connection.run (" UPDATE smart_playlists" + place);
    return LibraryCode::ok;
}

int SongDatabase::renamePlaylist (int32_t id, const juce::String& name)
{
    return connection.run (rename ("playlists", id, name));
}

int SongDatabase::deletePlaylist (int32_t id)
{
    return runTogether (
        std::array { " DELETE FROM playlists" + whereId (id) + "; ",
                     " DELETE FROM playlists_songs WHERE playlist_id = " + std::to_string (id) + "; " });
}

int SongDatabase::createSmartPlaylist (const juce::String& name, const juce::String& sql,
                                       const juce::String& rules, int32_t sortOrder, int32_t* newId)
{
    return insertRow (" INSERT INTO smart_playlists VALUES (NULL, " + StoredText::quoted (name) + ", "
                          + StoredText::quoted (sql) + ", " + StoredText::quoted (rules) + ", "
                          + std::to_string (sortOrder) + ", '', 0); ",
                      newId);
}

int SongDatabase::setSmartSql (int32_t id, const juce::String& sql)
{
    return connection.run (" UPDATE smart_playlists SET sql_query = " + StoredText::quoted (sql)
                           + whereId (id));
}

int SongDatabase::setSmartRules (int32_t id, const juce::String& xml)
{
    return connection.run (" UPDATE smart_playlists SET rules = " + StoredText::quoted (xml) + whereId (id));
}

int SongDatabase::getSmartRules (int32_t id, juce::String& xml)
{
    return readText (*reading(), " SELECT rules FROM smart_playlists" + whereId (id), xml);
}

int SongDatabase::renameSmartPlaylist (int32_t id, const juce::String& name)
{
    return connection.run (rename ("smart_playlists", id, name));
}

int SongDatabase::deleteSmartPlaylist (int32_t id)
{
    return connection.run (" DELETE FROM smart_playlists" + whereId (id) + "; ");
}
