#include "library/query/SongIndex.h"

#include "library/query/FoldedText.h"
#include "library/songs/SongLimits.h"

#include <algorithm>
#include <cmath>

namespace
{
constexpr auto numberFields = std::to_array ({ SongField::bpm, SongField::rating, SongField::analyzed });

/** Columns of a scan: id, duration, size, the texts, the numbers. */
constexpr int firstText = 3, firstNumber = firstText + static_cast<int> (SongIndex::textFields.size());
constexpr auto filenameText =
    std::find (SongIndex::textFields.begin(), SongIndex::textFields.end(), SongField::filename)
    - SongIndex::textFields.begin();

std::vector<SongField> scannedFields()
{
    std::vector<SongField> fields (SongIndex::textFields.begin(), SongIndex::textFields.end());
    fields.insert (fields.end(), numberFields.begin(), numberFields.end());
    return fields;
}
}

int SongIndex::Table::positionOf (int32_t id) const
{
    const auto found = std::lower_bound (ids.begin(), ids.end(), id);
    return found != ids.end() && *found == id ? static_cast<int> (found - ids.begin()) : -1;
}

void SongIndex::Song::read (const SqlRow& row)
{
    id = row.int32 (0);
    duration = asUnsigned32 (row.int64 (1));
    size = asUnsigned32 (row.int64 (2));
    for (size_t i = 0; i < texts.size(); ++i)
    {
        const auto column = firstText + static_cast<int> (i);
        texts[i] = row.bytes (column);
        if (textFields[i] == SongField::year)
            year = static_cast<int16_t> (std::clamp (row.int32 (column), -32768, 32767));
    }
    bpm = row.real (firstNumber);
    const auto byteOf = [&row] (int column)
    { return static_cast<uint8_t> (std::clamp (row.int32 (column), 0, 255)); };
    rating = byteOf (firstNumber + 1);
    confidence = byteOf (firstNumber + 2);
}

void SongIndex::Table::put (const Song& song, size_t position)
{
    const auto known = there[position] != 0;
    durations[position] = song.duration;
    sizes[position] = song.size;
    bpm[position] = song.bpm;
    year[position] = song.year;
    rating[position] = song.rating;
    confidence[position] = song.confidence;
    for (size_t i = 0; i < columns.size(); ++i)
        columns[i].values[position] = columns[i].texts.add (song.texts[i]);
    there[position] = 1;
    if (!known && deleted > 0)
        --deleted;
}

void SongIndex::Table::append (const Song& song)
{
    ids.push_back (song.id);
    durations.push_back (0);
    sizes.push_back (0);
    bpm.push_back (0.0);
    year.push_back (0);
    rating.push_back (0);
    confidence.push_back (0);
    there.push_back (1);
    for (auto& column : columns)
        column.values.push_back (0);
    put (song, ids.size() - 1);
}

int SongIndex::build (SongDatabase& database, Songs which)
{
    Table made;
    Song song;
    const auto take = [&] (const SqlRow& row)
    {
        song.read (row);
        made.append (song);
    };
    const auto fields = scannedFields();
    const auto code = which == Songs::library ? database.scanSongs (fields, nullptr, take)
                                              : database.scanForeignSongs (fields, take);
    if (code != LibraryCode::ok)
    {
        const std::unique_lock writing (lock);
        failed = true;
        builtOrFailed.notify_all();
        return code;
    }
    for (auto& column : made.columns)
    {
        column.texts.shrink();
        column.values.shrink_to_fit();
    }
    const std::unique_lock writing (lock);
    std::swap (songs, made);
    built = true;
    failed = false;
    builtOrFailed.notify_all();
    return code;
}

bool SongIndex::waitUntilBuilt (const std::stop_token& stop) const
{
    std::shared_lock reading (lock);
    return builtOrFailed.wait (reading, stop, [this] { return built || failed; }) && built;
}

bool SongIndex::isBuilt() const
{
    const std::shared_lock reading (lock);
    return built;
}

bool SongIndex::update (SongDatabase& database, const std::vector<int32_t>& songIds)
{
    // The file is read beside those who ask; they wait for what is put into the table alone.
    std::vector<Song> read;
    if (!isBuilt()
        || database.scanSongs (scannedFields(), &songIds,
                               [&read] (const SqlRow& row) { read.emplace_back().read (row); })
               != LibraryCode::ok)
        return false;
    StoredNumbers numbers;
    if (readStoredOf (database, songIds, numbers) != LibraryCode::ok)
        return false;

    const std::unique_lock writing (lock);
    auto isInOrder = true;
    for (const auto& song : read)
        if (const auto at = songs.positionOf (song.id); at >= 0)
            songs.put (song, static_cast<size_t> (at));
        else if (songs.ids.empty() || song.id > songs.ids.back())
            songs.append (song);
        else
            isInOrder = false;
    const auto isRead = [&read] (int32_t id) { return std::ranges::binary_search (read, id, {}, &Song::id); };
    for (const auto id : songIds)
        if (const auto at = songs.positionOf (id); at >= 0 && !isRead (id))
            songs.deleted += std::exchange (songs.there[static_cast<size_t> (at)], uint8_t { 0 });
    songs.ranks.clear();
    for (auto& [field, values] : songs.stored)
    {
        const auto found = numbers.find (field);
        if (found == numbers.end())
        {
            values.clear(); // a field that was first sorted by while the file was read
            continue;
        }
        values.resize (songs.ids.size());
        for (const auto& [id, number] : found->second)
            if (const auto at = songs.positionOf (id); at >= 0)
                values[static_cast<size_t> (at)] = number;
    }
    return isInOrder && songs.deleted <= songs.ids.size() / 4 + 1000;
}

int SongIndex::size() const
{
    const std::shared_lock reading (lock);
    return static_cast<int> (songs.ids.size() - songs.deleted);
}

size_t SongIndex::bytesUsed() const
{
    const std::shared_lock reading (lock);
    const std::scoped_lock ranking (rankLock);
    auto bytes = songs.ids.capacity() * (3 * sizeof (uint32_t) + sizeof (double) + sizeof (int16_t) + 2);
    for (const auto& column : songs.columns)
        bytes += column.texts.bytesUsed()
                 + (column.values.capacity() + column.ranks.capacity()) * sizeof (uint32_t);
    for (const auto& [field, ranks] : songs.ranks)
        bytes += ranks.capacity() * sizeof (uint32_t);
    for (const auto& [field, values] : songs.stored)
        bytes += values.capacity() * sizeof (double);
    return bytes;
}

const SongIndex::Column* SongIndex::columnOf (SongField field) const
{
    const auto found = std::find (textFields.begin(), textFields.end(), field);
    return found != textFields.end() ? &songs.columns[static_cast<size_t> (found - textFields.begin())]
                                     : nullptr;
}

SongListEntry SongIndex::entryOf (SongDatabase& database, uint32_t position) const
{
    return { songs.durations[position], songs.sizes[position], songs.ids[position], -1, &database };
}

int SongIndex::fill (SongDatabase& database, const SongQuery& query, SongList& list,
                     const std::stop_token& stop) const
{
    const std::shared_lock reading (lock);
    list.clear();
    Mask mask;
    if (const auto code = maskOf (database, query, stop, mask); code != LibraryCode::ok)
        return code;
    const auto& paths = songs.columns[filenameText];
    std::vector<uint32_t> positions;
    positions.reserve (mask.empty() ? songs.ids.size() : 0);
    for (uint32_t position = 0; position < songs.ids.size(); ++position)
        if (songs.there[position] != 0
            && (query.isFiltered() ? mask.empty() || mask[position] != 0
                                   : !paths.texts.upper (paths.values[position]).empty()))
            positions.push_back (position);
    if (const auto code = sortPositions (database, query.sort, query.ascending, positions);
        code != LibraryCode::ok)
        return code;
    if (stop.stop_requested())
        return LibraryCode::interrupted;
    for (const auto position : positions)
        list.add (entryOf (database, position));
    return LibraryCode::ok;
}

int SongIndex::filter (SongDatabase& database, const SongQuery& query, SongList& list,
                       const std::stop_token& stop) const
{
    const std::shared_lock reading (lock);
    Mask mask;
    if (const auto code = maskOf (database, query, stop, mask); code != LibraryCode::ok || mask.empty())
        return code;
    SongList left (list);
    left.clear();
    for (const auto& entry : list.entries())
        if (const auto position = songs.positionOf (entry.songId);
            position >= 0 && mask[static_cast<size_t> (position)] != 0)
            left.add (entry);
    list = std::move (left);
    return LibraryCode::ok;
}

int SongIndex::findFirst (const SongList& list, SongField field, const juce::String& prefix, int from) const
{
    const std::shared_lock reading (lock);
    const auto* const column = columnOf (field);
    const auto folded = FoldedText::of (prefix.toStdString());
    if (column == nullptr || folded.empty())
        return -1;
    for (auto i = 0; i < list.size(); ++i)
    {
        const auto row = (juce::jmax (0, from) + i) % list.size();
        if (const auto position = songs.positionOf (list[row].songId);
            position >= 0
            && column->texts.folded (column->values[static_cast<size_t> (position)]).starts_with (folded))
            return row;
    }
    return -1;
}
