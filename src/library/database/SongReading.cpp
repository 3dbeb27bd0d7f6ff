#include "library/database/FileFacts.h"
#include "library/database/SongDatabase.h"
#include "library/songs/SongLimits.h"
#include "library/sql/StoredText.h"

#include <algorithm>

namespace
{
std::string selectSong (const char* table)
{
    std::string sql (" SELECT ");
    for (const auto& column : songColumns)
        sql += std::string (&column == songColumns.data() ? "" : ",") + column.name;
    return sql + " FROM " + table + " WHERE id = ?";
}

/** The text is the same for every id, so that it is compiled once. */
const std::string& selectSongOf (bool foreign)
{
    static const auto own = selectSong ("songs"), itunes = selectSong ("itunes_songs");
    return foreign ? itunes : own;
}

std::string selectFields (std::span<const SongField> fields, const char* table)
{
    std::string sql ("SELECT id,duration,filesize");
    for (const auto field : fields)
        sql += std::string (",") + nameOf (columnOf (field));
    return sql + " FROM " + table;
}

void readColumns (const SqlRow& row, SongRecord& record)
{
    for (int i = 0; i < songColumnCount; ++i)
    {
        const auto column = static_cast<SongColumn> (i);
        record[column] = infoOf (column).type == SongColumnType::real
                             ? StoredText::withTwoDecimals (row.real (i))
                             : row.text (i);
    }
}
}

int SongDatabase::readSongFrom (SqlConnection& from, bool foreign, int32_t id, SongRecord& record,
                                Presence presence)
{
    record.id = -1;
    record.database = this;
    const auto code = from.queryKept (selectSongOf (foreign), id,
                                      [&] (const SqlRow& row)
                                      {
                                          record.id = id;
                                          readColumns (row, record);
                                      });
    if (record.id < 0)
        record.columns.fill ({});
    record.present = presence == Presence::looked && FileFacts::isPresent (record[SongColumn::filename]);
    return code;
}

int SongDatabase::readSong (int32_t id, SongRecord& record)
{
    return readSongFrom (*reading(), false, id, record);
}

int SongDatabase::readForeignSong (int32_t id, SongRecord& record)
{
    return readSongFrom (connection, true, id, record);
}

int SongDatabase::readSongs (const SongList* list, int first, int last, std::vector<SongRecord>& records,
                             Presence presence)
{
    if (list == nullptr)
        return LibraryCode::badArgument;
    first = std::clamp (first, 0, list->size());
    last = std::clamp (last, first, list->size());
    records.resize (static_cast<size_t> (last - first));

    const auto foreign = isForeign (list->kind);
    const auto loan = foreign ? ReadConnections::Loan (connection) : reading();
    SqlTransaction transaction (*loan, SqlTransaction::Purpose::reading);
    auto code = transaction.code();
    for (auto i = first; i < last && code == LibraryCode::ok; ++i)
        code = readSongFrom (*loan, foreign, (*list)[i].songId, records[static_cast<size_t> (i - first)],
                             presence);
    return transaction.commitIf (code);
}

int SongDatabase::scanEntries (const SongList& list, int first, int last, std::span<const SongColumn> columns,
                               const std::function<void (int place, const SqlRow&)>& row)
{
    first = std::clamp (first, 0, list.size());
    last = std::clamp (last, first, list.size());
    std::vector<std::pair<int32_t, int>> places; // by id; a playlist may hold a song more than once
    std::vector<int32_t> ids;
    for (auto i = first; i < last; ++i)
    {
        places.emplace_back (list[i].songId, i);
        ids.push_back (list[i].songId);
    }
    std::sort (places.begin(), places.end());

    const auto foreign = isForeign (list.kind);
    std::string sql ("SELECT ");
    for (const auto column : columns)
        sql += std::string (nameOf (column)) + ",";
    sql += std::string ("id FROM ") + (foreign ? "itunes_songs" : "songs") + " WHERE id IN ("
           + StoredText::joined (ids) + ") ORDER BY id";
    const auto loan = foreign ? ReadConnections::Loan (connection) : reading();
    auto next = places.begin();
    return loan->query (sql,
                        [&, idColumn = static_cast<int> (columns.size())] (const SqlRow& found)
                        {
                            const auto id = found.int32 (idColumn);
                            while (next != places.end() && next->first < id)
                                ++next;
                            for (; next != places.end() && next->first == id; ++next)
                                row (next->second, found);
                        });
}

int SongDatabase::scanSongs (std::span<const SongField> fields, const std::vector<int32_t>* only,
                             const SqlConnection::RowFunction& row)
{
    if (!std::all_of (fields.begin(), fields.end(), hasColumn))
        return LibraryCode::badField;
    const auto condition =
        only != nullptr ? " WHERE id IN (" + StoredText::joined (*only) + ")" : std::string();
    return reading()->query (selectFields (fields, "songs") + condition + " ORDER BY id", row);
}

int SongDatabase::scanForeignSongs (std::span<const SongField> fields, const SqlConnection::RowFunction& row)
{
    if (!std::all_of (fields.begin(), fields.end(), hasColumn))
        return LibraryCode::badField;
    return connection.query (selectFields (fields, "itunes_songs") + " ORDER BY id", row);
}

int SongDatabase::readFieldFrom (SqlConnection& from, const char* table, SongField field, int32_t id,
                                 juce::String& text)
{
    if (!hasColumn (field))
        return LibraryCode::badField;
    return readText (from,
                     std::string (" SELECT ") + nameOf (columnOf (field)) + " FROM " + table
                         + " WHERE id = " + std::to_string (id),
                     text);
}

int SongDatabase::readField (SongField field, int32_t id, juce::String& text)
{
    return readFieldFrom (*reading(), "songs", field, id, text);
}

int SongDatabase::readForeignField (SongField field, int32_t id, juce::String& text)
{
    return readFieldFrom (connection, "itunes_songs", field, id, text);
}

int SongDatabase::countSongs()
{
    return count (*reading(), "SELECT COUNT(*) FROM songs");
}

int SongDatabase::countAutomix()
{
    return count (*reading(), "SELECT COUNT(*) FROM automix_songs");
}

int SongDatabase::countDistinct (SongField field)
{
    if (!hasColumn (field))
        return LibraryCode::badField;
    return count (*reading(), std::string ("SELECT COUNT(*) FROM (SELECT DISTINCT ")
                                  + nameOf (columnOf (field)) + " FROM songs)");
}

int SongDatabase::countWhere (SongField field, const juce::String& value)
{
    if (!hasColumn (field))
        return LibraryCode::badField;
    return count (*reading(), std::string ("SELECT COUNT(*) FROM songs WHERE ") + nameOf (columnOf (field))
                                  + " = " + StoredText::quoted (value));
}

int SongDatabase::countPlaylistEntries (int32_t playlistId)
{
    return count (connection, " SELECT COUNT(*) FROM itunes_playlists_songs WHERE playlist_id = "
                                  + std::to_string (playlistId) + "; ");
}

int SongDatabase::listDistinct (SongField field, juce::StringArray& values)
{
    values.clear();
    if (!hasColumn (field))
        return LibraryCode::badField;
    const std::string column (nameOf (columnOf (field)));
    return reading()->query (" SELECT DISTINCT " + column + " FROM songs GROUP BY " + column
                                 + " ORDER BY LOWER(" + column + ") ASC; ",
                             [&] (const SqlRow& row) { values.add (row.text (0)); });
}

int SongDatabase::findByFilename (const juce::String& path, SongListEntry& entry)
{
    entry = {};
    return reading()->query (
        " SELECT id,duration,filesize FROM songs WHERE filename = " + StoredText::quoted (path),
        [&] (const SqlRow& row) {
            entry = { asUnsigned32 (row.int64 (1)), asUnsigned32 (row.int64 (2)), row.int32 (0), -1, this };
        });
}

int SongDatabase::countFilename (const juce::String& path)
{
    auto found = 0;
    const auto value = path.toStdString();
    const auto code = reading()->runKept (" SELECT COUNT(*)  FROM songs WHERE filename = ?", { &value, 1 },
                                          [&] (const SqlRow& row) { found = row.int32 (0); });
    return code == LibraryCode::ok ? found : LibraryCode::inPlaceOfCount (code);
}

int32_t SongDatabase::idOfFilename (const juce::String& path)
{
    auto id = -1;
    const auto code = reading()->query (" SELECT id FROM songs WHERE filename = " + StoredText::quoted (path),
                                        [&] (const SqlRow& row) { id = row.int32 (0); });
    return code == LibraryCode::ok ? id : LibraryCode::inPlaceOfCount (code);
}

int SongDatabase::longestValue (SongField field, const SongList* list, juce::String& value)
{
    value.clear();
    if (list == nullptr)
        return LibraryCode::badArgument;
    if (!hasColumn (field))
        return LibraryCode::badField;
    if (list->isEmpty())
        return LibraryCode::emptyList;
    const auto foreign = isForeign (list->kind);
    const std::string column (nameOf (columnOf (field))), table (foreign ? "itunes_songs" : "songs");
    const auto loan = foreign ? ReadConnections::Loan (connection) : reading();
    return readText (*loan,
                     "SELECT " + column + " FROM " + table + " WHERE LENGTH(" + column
                         + ") = (SELECT MAX(LENGTH(" + column + ")) FROM " + table + " WHERE id IN ("
                         + StoredText::joined (list->songIds()) + ")) LIMIT 1;",
                     value);
}
