#include "library/database/LinkTable.h"
#include "library/database/QueryText.h"
#include "library/database/SongDatabase.h"
#include "library/songs/SongLimits.h"
#include "library/sql/StoredText.h"

namespace
{
bool isSort (SongField field)
{
    return hasColumn (field) || field == SongField::listOrder;
}
}

int SongDatabase::fill (SqlConnection& from, SongList* list, const std::string& sql, bool linked)
{
    list->clear();
    const auto code = from.query (sql,
                                  [list, linked] (const SqlRow& row)
                                  {
                                      list->add ({ asUnsigned32 (row.int64 (1)), asUnsigned32 (row.int64 (2)),
                                                   row.int32 (0), linked ? row.int32 (3) : -1, nullptr });
                                  });
    if (code != LibraryCode::ok)
        list->clear();
    list->setDatabase (this);
    return code;
}

int SongDatabase::fillSorted (SongList* list, const std::string& sql, SongField sort, bool ascending)
{
    if (list == nullptr)
        return LibraryCode::badArgument;
    if (!isSort (sort))
        return LibraryCode::badField;
    return fill (*reading(), list, sql + QueryText::sortClause (sort, ascending, nullptr), false);
}

int SongDatabase::fillLinked (const LinkTable& table, SongList* list, int32_t id,
                              const std::string& condition, SongField sort, bool ascending)
{
    if (list == nullptr)
        return LibraryCode::badArgument;
    if (!isSort (sort))
        return LibraryCode::badField;
    const auto sql = table.selectRows (id) + condition + QueryText::sortClause (sort, ascending, &table);
    return table.isTemporary ? fill (connection, list, sql, true) : fill (*reading(), list, sql, true);
}

int SongDatabase::fillLibrary (SongList* list, SongField sort, bool ascending)
{
    return fillSorted (list, " SELECT DISTINCT id,duration,filesize  FROM songs WHERE filename <> ''", sort,
                       ascending);
}

int SongDatabase::fillPlaylist (SongList* list, int32_t id, SongField sort, bool ascending)
{
    return fillLinked (LinkTables::playlists, list, id, {}, sort, ascending);
}

int SongDatabase::fillForeignPlaylist (SongList* list, int32_t id, SongField sort, bool ascending)
{
    return fillLinked (LinkTables::foreignPlaylists, list, id, {}, sort, ascending);
}

int SongDatabase::fillAutomix (SongList* list, SongField sort, bool ascending)
{
    return fillLinked (LinkTables::automix, list, -1, {}, sort, ascending);
}

int SongDatabase::fillRecommendation (SongList* list, SongField sort, bool ascending)
{
    return fillLinked (LinkTables::recommendation, list, -1, {}, sort, ascending);
}

int SongDatabase::fillSmartPlaylist (SongList* list, int32_t id, SongField sort, bool ascending)
{
    if (list == nullptr)
        return LibraryCode::badArgument;
    if (!isSort (sort))
        return LibraryCode::badField;
    list->clear();
    juce::String stored;
    if (const auto code = readText (
            *reading(), " SELECT sql_query FROM smart_playlists WHERE id = " + std::to_string (id), stored);
        code != LibraryCode::ok)
        return code;
    return fill (*reading(), list,
                 " SELECT id, duration, filesize  FROM songs WHERE "
                     + QueryText::sortedSmartQuery (stored.toStdString(),
                                                    QueryText::sortClause (sort, ascending, nullptr)),
                 false);
}

int SongDatabase::fillByField (const juce::String& value, SongField field, SongList* list, SongField sort,
                               bool ascending)
{
    if (!hasColumn (field))
        return LibraryCode::badField;
    return fillSorted (list,
                       std::string (" SELECT id,duration,filesize FROM songs WHERE ")
                           + nameOf (columnOf (field)) + " = " + StoredText::quoted (value),
                       sort, ascending);
}

int SongDatabase::sortList (SongList* list, SongField field, bool ascending)
{
    if (list == nullptr)
        return LibraryCode::badArgument;
    if (!isSort (field))
        return LibraryCode::badField;
    if (list->isEmpty())
        return LibraryCode::emptyList;

    switch (list->kind)
    {
    case SongListKind::root:
    case SongListKind::library:
    case SongListKind::albums:
    case SongListKind::artists:
        return fillLibrary (list, field, ascending);
    case SongListKind::playlist:
    case SongListKind::automix:
    case SongListKind::foreignPlaylist:
    case SongListKind::recommendation:
        list->sorted = field != SongField::listOrder;
        return fillLinked (*LinkTables::of (list->kind), list, list->playlistId, {}, field, ascending);
    default:
        break;
    }

    const auto ids = StoredText::joined (list->songIds());
    if (const auto* table = LinkTables::of (list->kind))
        return fillLinked (*table, list, list->playlistId,
                           std::string (" AND ") + table->songs + ".id IN (" + ids + ")", field, ascending);
    return fillSorted (list, "SELECT id,duration,filesize FROM songs WHERE id IN (" + ids + ")", field,
                       ascending);
}
