#include "session/browse/rows/SpecialRows.h"

#include "library/import/MovedFiles.h"
#include "library/query/RunQuery.h"
#include "session/browse/LibraryRoom.h"

#include <algorithm>

namespace
{
constexpr int32_t firstStranger = -2;

/** Ends a look at files with the question that it answers. */
class UntilStopped : public ImportProgress
{
public:
    explicit UntilStopped (const std::stop_token& s) : stop (s) {}

    void setProgress (double) override {}
    void setStatusText (const juce::String&) override {}
    bool shouldExit() const override { return stop.stop_requested(); }

private:
    const std::stop_token& stop;
};

std::shared_ptr<const SongRecord> recordOf (const PlayedSong& played, int32_t id)
{
    auto record = std::make_shared<SongRecord>();
    record->id = id;
    (*record)[SongColumn::filename] = played.path;
    (*record)[SongColumn::title] = played.title;
    (*record)[SongColumn::artist] = played.artist;
    return record;
}
}

int SpecialRows::fillHistory (LibraryRoom& room, const SongQuery& query, const std::stop_token& stop,
                              SongList& list, Played& played)
{
    list = SongList (query.kind, query.id);
    list.name = query.name;
    played.songs = room.history.songs (query.id);
    const auto count = played.songs.size();
    for (size_t i = 0; i < count && !stop.stop_requested(); ++i)
    {
        const auto place = query.ascending ? i : count - 1 - i;
        SongListEntry entry;
        if (const auto code = room.database.findByFilename (played.songs[place].path, entry);
            code != LibraryCode::ok)
            return code;
        entry.entryId = static_cast<int32_t> (place);
        if (entry.songId < 0)
        {
            entry.songId = firstStranger - static_cast<int32_t> (played.strangers.size());
            played.strangers.push_back (recordOf (played.songs[place], entry.songId));
        }
        list.add (entry);
    }
    return query.isFiltered() ? room.watch.index().filter (room.database, query, list, stop)
                              : LibraryCode::ok;
}

int SpecialRows::fillMissing (LibraryRoom& room, const SongQuery& query, const std::stop_token& stop,
                              SongList& list)
{
    auto wholeLibrary = query;
    wholeLibrary.kind = SongListKind::library;
    SongList all;
    auto code = runQuery (wholeLibrary, room.database, room.watch.index(), all, stop);
    std::vector<MissingSong> missing;
    UntilStopped progress (stop);
    if (code == LibraryCode::ok)
        code = findMissingSongs (room.database, progress, missing);
    std::vector<int32_t> ids;
    ids.reserve (missing.size());
    for (const auto& song : missing)
        ids.push_back (song.id);
    std::sort (ids.begin(), ids.end());
    list = SongList (query.kind);
    list.name = query.name;
    list.sorted = all.sorted;
    for (const auto& entry : all.entries())
        if (std::binary_search (ids.begin(), ids.end(), entry.songId))
            list.add (entry);
    return stop.stop_requested() ? LibraryCode::interrupted : code;
}
