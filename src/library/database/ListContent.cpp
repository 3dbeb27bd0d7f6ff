#include "library/database/ListContent.h"

#include "library/database/LinkTable.h"
#include "library/database/SongDatabase.h"
#include "library/sql/StoredText.h"

#include <algorithm>

// Lists as a whole: read, and made what they were.

namespace
{
using Entries = std::vector<ListContent::Entry>;

bool hasRow (SongListKind kind)
{
    return kind == SongListKind::playlist || kind == SongListKind::smartPlaylist;
}

const char* tableOf (SongListKind kind)
{
    return kind == SongListKind::playlist ? "playlists" : "smart_playlists";
}

std::string ofList (const LinkTable& table, int32_t id)
{
    return table.manyLists ? " playlist_id = " + std::to_string (id) : std::string (" 1");
}

bool isById (const ListContent::Entry& a, const ListContent::Entry& b)
{
    return a.entryId < b.entryId;
}

/** True if every entry has an id and they rise. */
bool hasRisingIds (Entries::const_iterator first, Entries::const_iterator last, int32_t above)
{
    for (; first != last; above = first->entryId, ++first)
        if (first->entryId <= above)
            return false;
    return true;
}

std::string idsOf (Entries::const_iterator first, Entries::const_iterator last)
{
    std::vector<int32_t> ids;
    for (; first != last; ++first)
        ids.push_back (first->entryId);
    return StoredText::joined (ids);
}

/** The entries that are in the first and not in the second, both by rising ids. */
Entries without (const Entries& all, const Entries& taken)
{
    Entries left;
    std::set_difference (all.begin(), all.end(), taken.begin(), taken.end(), std::back_inserter (left),
                         isById);
    return left;
}
}

int SongDatabase::readEntries (const LinkTable& table, int32_t id, Entries& entries)
{
    entries.clear();
    return connection.query (std::string ("SELECT id,song_id FROM ") + table.links + " WHERE"
                                 + ofList (table, id) + " ORDER BY id",
                             [&] (const SqlRow& row) {
                                 entries.push_back ({ row.int32 (0), row.int32 (1) });
                             });
}

int SongDatabase::readList (const ListRef& list, ListContent& content)
{
    content = {};
    content.list = list;
    const auto* const table = LinkTables::of (list.kind);
    if (isForeign (list.kind) || (table == nullptr && list.kind != SongListKind::smartPlaylist))
        return LibraryCode::wrongKind;
    content.exists = !hasRow (list.kind);
    auto code = 0;
    if (hasRow (list.kind) && list.id >= 0)
    {
        const auto isSmart = list.kind == SongListKind::smartPlaylist;
        code = connection.query (std::string ("SELECT name,sort_order,table_layout,last_row_selected")
                                     + (isSmart ? ",sql_query,rules" : "") + " FROM " + tableOf (list.kind)
                                     + " WHERE id = " + std::to_string (list.id),
                                 [&] (const SqlRow& row)
                                 {
                                     content.exists = true;
                                     content.name = row.text (0);
                                     content.sortOrder = row.int32 (1);
                                     content.layout = row.text (2);
                                     content.selection = row.text (3);
                                     content.smartSql = isSmart ? row.text (4) : juce::String();
                                     content.smartRules = isSmart ? row.text (5) : juce::String();
                                 });
    }
    return code == LibraryCode::ok && table != nullptr ? readEntries (*table, list.id, content.entries)
                                                       : code;
}

int SongDatabase::insertPlaylistRow (ListContent& content, const std::string& id)
{
    const auto isSmart = content.list.kind == SongListKind::smartPlaylist;
    const auto quoted = [] (const juce::String& text) { return "," + StoredText::quoted (text); };
    int64_t made = -1;
    const auto code = connection.insert (
        std::string ("INSERT INTO ") + tableOf (content.list.kind) + " VALUES (" + id + quoted (content.name)
            + (isSmart ? quoted (content.smartSql) + quoted (content.smartRules) : std::string()) + ","
            + std::to_string (content.sortOrder) + quoted (content.layout)
            + (content.selection.isEmpty() ? ",0" : quoted (content.selection)) + ")",
        made);
    if (code == LibraryCode::ok)
        content.list.id = static_cast<int32_t> (made);
    return code;
}

int SongDatabase::writePlaylistRow (ListContent& content, bool isThere)
{
    const auto id = std::to_string (content.list.id);
    if (!content.exists)
        return connection.run (std::string ("DELETE FROM ") + tableOf (content.list.kind)
                               + " WHERE id = " + id);
    const auto isSmart = content.list.kind == SongListKind::smartPlaylist;
    if (isThere)
        return connection.run (std::string ("UPDATE ") + tableOf (content.list.kind)
                               + " SET name = " + StoredText::quoted (content.name)
                               + ", sort_order = " + std::to_string (content.sortOrder)
                               + (isSmart ? ", sql_query = " + StoredText::quoted (content.smartSql)
                                                + ", rules = " + StoredText::quoted (content.smartRules)
                                          : std::string())
                               + " WHERE id = " + id);
    return insertPlaylistRow (content, content.list.id >= 0 ? id : "NULL");
}

int SongDatabase::writeEntries (const LinkTable& table, int32_t id, Entries& entries)
{
    Entries stored;
    if (const auto code = readEntries (table, id, stored); code != LibraryCode::ok)
        return code;
    const auto [changedStored, changed] =
        std::mismatch (stored.begin(), stored.end(), entries.begin(), entries.end());

    // A list that only lost entries keeps the others' rows as they are.
    const auto below = changed == entries.begin() ? -1 : std::prev (changed)->entryId;
    const auto isRising = hasRisingIds (changed, entries.end(), below);
    const auto isSubset =
        isRising && std::includes (stored.begin(), stored.end(), entries.begin(), entries.end(), isById)
        && std::all_of (changed, entries.end(),
                        [&] (const ListContent::Entry& entry)
                        {
                            const auto own = std::lower_bound (stored.begin(), stored.end(), entry, isById);
                            return *own == entry;
                        });
    const auto gone = isSubset ? without (stored, entries) : Entries (changedStored, stored.end());
    if (!gone.empty())
        if (const auto code = connection.run (std::string ("DELETE FROM ") + table.links + " WHERE id IN ("
                                              + idsOf (gone.begin(), gone.end()) + ")");
            code != LibraryCode::ok)
            return code;
    if (isSubset)
        return LibraryCode::ok;

    auto areFree = isRising;
    if (isRising && changed != entries.end())
        if (const auto taken =
                count (connection, std::string ("SELECT COUNT(*) FROM ") + table.links + " WHERE id IN ("
                                       + idsOf (changed, entries.end()) + ")");
            taken != 0)
            areFree = false;
    for (auto entry = changed; entry != entries.end(); ++entry)
    {
        const auto own = areFree ? std::to_string (entry->entryId) : std::string ("NULL");
        int64_t made = -1;
        if (const auto code =
                connection.insert (std::string ("INSERT INTO ") + table.links + " VALUES (" + own + ","
                                       + (table.manyLists ? std::to_string (id) + "," : std::string())
                                       + std::to_string (entry->songId) + ")",
                                   made);
            code != LibraryCode::ok)
            return code;
        entry->entryId = static_cast<int32_t> (made);
    }
    return LibraryCode::ok;
}

int SongDatabase::writeList (ListContent& content)
{
    const auto* const table = LinkTables::of (content.list.kind);
    if (isForeign (content.list.kind) || (table == nullptr && !hasRow (content.list.kind)))
        return LibraryCode::wrongKind;
    SqlTransaction transaction (connection, table != nullptr && table->isTemporary
                                                ? SqlTransaction::Purpose::reading
                                                : SqlTransaction::Purpose::writing);
    auto code = transaction.code();
    if (code == LibraryCode::ok && hasRow (content.list.kind))
    {
        ListContent now;
        code = readList (content.list, now);
        if (code == LibraryCode::ok && (content.exists || now.exists))
            code = writePlaylistRow (content, now.exists);
    }
    if (code == LibraryCode::ok && table != nullptr)
    {
        if (!content.exists)
            content.entries.clear();
        code = writeEntries (*table, content.list.id, content.entries);
    }
    return transaction.commitIf (code);
}
