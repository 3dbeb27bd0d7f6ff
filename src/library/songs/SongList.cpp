#include "library/songs/SongList.h"

#include <algorithm>

void SongList::add (const SongListEntry& entry)
{
    // Before the row: the entry may lie in this list, which then moves.
    seconds += entry.duration;
    bytes += entry.filesize;
    rows.push_back (entry);
}

void SongList::insert (int index, const SongListEntry& entry)
{
    // A copy: the entry may lie in this list.
    const auto inserted = entry;
    rows.insert (rows.begin() + std::clamp (index, 0, size()), inserted);
    seconds += inserted.duration;
    bytes += inserted.filesize;
}

void SongList::remove (int index)
{
    if (index < 0 || index >= size())
        return;
    const auto row = rows.begin() + index;
    seconds -= row->duration;
    bytes -= row->filesize;
    rows.erase (row);
}

void SongList::move (int from, int to)
{
    if (from < 0 || from >= size() || to < 0 || to >= size())
        return;
    const auto begin = rows.begin();
    if (from < to)
        std::rotate (begin + from, begin + from + 1, begin + to + 1);
    else
        std::rotate (begin + to, begin + from, begin + from + 1);
}

void SongList::clear()
{
    rows.clear();
    seconds = 0;
    bytes = 0.0;
}

std::vector<int32_t> SongList::songIds() const
{
    std::vector<int32_t> ids (rows.size());
    std::transform (rows.begin(), rows.end(), ids.begin(), [] (const auto& row) { return row.songId; });
    return ids;
}

void SongList::setDatabase (SongDatabase* database)
{
    for (auto& row : rows)
        row.database = database;
}

void SongList::setEntryIds (std::span<const int32_t> ids)
{
    if (ids.size() == rows.size())
        for (size_t i = 0; i < rows.size(); ++i)
            rows[i].entryId = ids[i];
}
