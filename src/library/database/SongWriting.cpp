#include "library/database/FileFacts.h"
#include "library/database/Schema.h"
#include "library/database/SongDatabase.h"
#include "library/sql/StoredText.h"

#include <algorithm>
#include <utility>

namespace
{
/** Columns that count or mark what happens to a song after it was added. */
constexpr std::array<SongColumn, 8> beginningAtZero {
    SongColumn::analyzed,        SongColumn::autoadvancedtimes, SongColumn::colour,
    SongColumn::hashcode,        SongColumn::lastplayed,        SongColumn::playcount,
    SongColumn::totalplayedtime, SongColumn::usereserved,
};

/** The value as bytes to bind: a column of numbers makes a number of them again. */
std::string bytesOf (SongColumn column, const juce::String& text)
{
    switch (infoOf (column).type)
    {
    case SongColumnType::integer:
        return StoredText::integerOf (text);
    case SongColumnType::real:
        return StoredText::ofReal (text.getDoubleValue());
    case SongColumnType::text:
        break;
    }
    return text.toStdString();
}

std::string sqlOf (SongColumn column, const juce::String& text)
{
    return infoOf (column).type == SongColumnType::text ? StoredText::quoted (text) : bytesOf (column, text);
}

/** Fills in what the record leaves open and the file system knows. */
void completeFrom (const FileFacts& facts, SongRecord& record)
{
    const auto complete = [&record] (SongColumn column, int64_t known)
    {
        if (record[column].getLargeIntValue() == 0)
            record[column] = StoredText::ofInteger (known);
    };
    complete (SongColumn::filesize, facts.bytes);
    complete (SongColumn::datecreated, facts.created);
    complete (SongColumn::datemodified, facts.modified);
    complete (SongColumn::removabledrive, facts.removable ? 1 : 0);
    if (record[SongColumn::volumelabel].isEmpty())
        record[SongColumn::volumelabel] = facts.volumeLabel;
}

std::string updateSongs (const std::string& assignments, int32_t id)
{
    return " UPDATE songs SET " + assignments + " WHERE id = " + std::to_string (id);
}
}

void SongDatabase::completeFromFile (SongRecord& record)
{
    if (!std::exchange (record.hasFileFacts, true))
        completeFrom (FileFacts::of (record[SongColumn::filename]), record);
}

int SongDatabase::insertInto (const char* table, const SongRecord& source)
{
    auto record = source;
    completeFromFile (record);

    // An import inserts thousands: the statement is compiled once, and the values are bound to it.
    auto sql = std::string (" INSERT INTO ") + table + (record.id == -1 ? " VALUES (NULL" : " VALUES (?");
    std::vector<std::string> values;
    if (record.id != -1)
        values.push_back (std::to_string (record.id));
    for (int i = 0; i < songColumnCount; ++i)
    {
        const auto column = static_cast<SongColumn> (i);
        if (column == SongColumn::dateadded)
            sql += ", strftime('%s','now')";
        else if (std::find (beginningAtZero.begin(), beginningAtZero.end(), column) != beginningAtZero.end())
            sql += ", 0";
        else
        {
            sql += ", ?";
            values.push_back (bytesOf (column, record[column]));
        }
    }
    return connection.runKept (sql + ")", values);
}

int SongDatabase::insertSong (const SongRecord& record)
{
    return insertInto ("songs", record);
}

int SongDatabase::insertForeignSong (const SongRecord& record)
{
    return insertInto ("itunes_songs", record);
}

int SongDatabase::updateSong (const SongRecord& record)
{
    if (record.id < 0)
        return LibraryCode::badArgument;
    std::string assignments;
    for (int i = 0; i < songColumnCount; ++i)
    {
        const auto column = static_cast<SongColumn> (i);
        assignments +=
            std::string (i == 0 ? "" : ", ") + nameOf (column) + " = " + sqlOf (column, record[column]);
    }
    return connection.run (updateSongs (assignments, record.id));
}

int SongDatabase::setRating (int32_t id, int rating)
{
    return connection.run (updateSongs ("rating = " + std::to_string (rating), id) + "; ");
}

int SongDatabase::setField (SongField field, int32_t id, const std::string& value)
{
    if (!hasColumn (field))
        return LibraryCode::badField;
    return connection.run (updateSongs (nameOf (columnOf (field)) + (" = " + value), id));
}

int SongDatabase::setIntField (SongField field, int32_t id, int64_t value)
{
    return setField (field, id, std::to_string (value));
}

int SongDatabase::setTextField (SongField field, int32_t id, const juce::String& value)
{
    return setField (field, id, StoredText::quoted (value));
}

int SongDatabase::setBpm (int32_t id, double bpm)
{
    return setField (SongField::bpm, id, StoredText::ofReal (bpm));
}

int SongDatabase::markPlayed (int32_t id)
{
    if (id < 0)
        return LibraryCode::badArgument;
    return runTogether (std::array { updateSongs ("lastplayed = strftime('%s','now')", id),
                                     updateSongs ("playcount = (playcount + 1)", id) });
}

int SongDatabase::clearPlayed (const SongList* list)
{
    if (list == nullptr)
        return LibraryCode::badArgument;
    if (isForeign (list->kind))
        return LibraryCode::wrongKind;
    auto transaction = beginTransaction();
    auto code = transaction.code();
    for (auto entry = list->entries().begin(); entry != list->entries().end() && code == LibraryCode::ok;
         ++entry)
        code = runAll (std::array { updateSongs ("lastplayed = 0", entry->songId),
                                    updateSongs ("playcount = 0", entry->songId) });
    return transaction.commitAfter (code);
}

int SongDatabase::deleteSong (int32_t id)
{
    const auto number = std::to_string (id);
    return runTogether (std::array { " DELETE FROM songs WHERE id = " + number + "; ",
                                     " DELETE FROM playlists_songs WHERE song_id = " + number + "; ",
                                     " DELETE FROM automix_songs WHERE song_id = " + number + "; " });
}

int SongDatabase::deleteSongs (const SongList* list)
{
    if (list == nullptr)
        return LibraryCode::badArgument;
    // The numbers of a foreign list are other songs here.
    if (isForeign (list->kind))
        return LibraryCode::wrongKind;

    // The links have no index by song: one walk through them for all songs, in place of one for each.
    auto transaction = beginTransaction();
    auto deleted = list->songIds();
    auto code = transaction.code();
    for (size_t i = 0; i < deleted.size() && code == LibraryCode::ok; ++i)
        if (code = connection.run (" DELETE FROM songs WHERE id = " + std::to_string (deleted[i]) + "; ");
            code != LibraryCode::ok)
            deleted.resize (i);
    if (!transaction.stands())
        return transaction.commitAfter (code);
    const auto ids = StoredText::joined (deleted);
    const auto unlinked =
        runAll (std::array { " DELETE FROM playlists_songs WHERE song_id IN (" + ids + "); ",
                             " DELETE FROM automix_songs WHERE song_id IN (" + ids + "); " });
    if (unlinked != LibraryCode::ok)
        return transaction.commitIf (code != LibraryCode::ok ? code : unlinked);
    return transaction.commitAfter (code);
}

int SongDatabase::clearLibrary()
{
    // Together with the default rows, which a kill in between would lose for good.
    std::vector<std::string> statements { "delete from songs;", "delete from playlists;",
                                          "delete from playlists_songs;", "delete from smart_playlists;",
                                          "delete from automix_songs;" };
    const auto& defaults = Schema::defaultSmartPlaylists();
    statements.insert (statements.end(), defaults.begin(), defaults.end());
    const auto code = runTogether (statements);
    if (code == LibraryCode::ok)
    {
        connection.noteAllRows();
        juce::ignoreUnused (connection.run ("VACUUM;")); // only gives back room on the disk
    }
    return code;
}

int SongDatabase::clearForeign()
{
    auto transaction = beginForeignTransaction();
    return transaction.commitIf (
        runAll (std::array<std::string, 3> { "delete from itunes_songs;", "delete from itunes_playlists;",
                                             "delete from itunes_playlists_songs;" }));
}
