#include "session/browse/rows/RowSource.h"

#include "library/database/FileFacts.h"
#include "library/query/RunQuery.h"
#include "session/browse/LibraryRoom.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace
{
constexpr Worker::Key newest = 0;

/** Rows that are read before and behind those on screen, the most of them in the direction of the scrolling. */
constexpr int readAhead = 120, readBehind = 40;

constexpr size_t mostCached = 3000, leastCached = 1500;

/** Asking again by itself waits for so many times what the last answer took, 1 s at most: beside an import, which changes the
    library all the time, a million songs must not be put in order without a pause. */
constexpr juce::uint32 restAfterAnswer = 4, mostRestMs = 1000;
}

RowSource::RowSource (LibraryRoom& r) : room (r)
{
    room.addListener (*this);
}

RowSource::~RowSource()
{
    stopTimer();
    room.removeListener (*this);
}

void RowSource::open (const SongQuery& query)
{
    current = query;
    reopen();
}

void RowSource::reopen()
{
    asksAgain = false;
    stopTimer();
    askedAtMs = juce::Time::getMillisecondCounter();
    const auto answerTo = [this] (uint64_t question, Answer answer)
    {
        const auto shared = std::make_shared<Answer> (std::move (answer));
        calls.post ([this, question, shared] { take (question, std::move (*shared)); });
    };
    const auto ask = [this, query = current, question = ++asked, answerTo] (const std::stop_token& stop)
    {
        Answer answer;
        answer.code = query.kind == SongListKind::history
                          ? SpecialRows::fillHistory (room, query, stop, answer.list, answer.played)
                      : query.kind == SongListKind::missing
                          ? SpecialRows::fillMissing (room, query, stop, answer.list)
                          : runQuery (query, room.database, room.watch.index(), answer.list, stop);
        answerTo (question, std::move (answer));
    };
    opener.post (newest, { ask, [question = asked, answerTo] (const char*) {
                              answerTo (question, { {}, LibraryCode::failed, {} });
                          } });
}

void RowSource::take (uint64_t question, Answer answer)
{
    if (question != asked || answer.code == LibraryCode::interrupted)
        return;
    answered = question;
    if (answer.code == LibraryCode::ok)
    {
        if (const auto isOther = isForeign (answer.list.kind) || answer.list.kind == SongListKind::history;
            isOther || isForeignCached)
        {
            cache.clear();
            isForeignCached = isOther;
        }
        rows = std::make_shared<SongList> (std::move (answer.list));
        ++generation;
        played = std::move (answer.played.songs);
        takeRecords (answer.played.strangers);
    }
    answeredAtMs = juce::Time::getMillisecondCounter();
    if (asksAgain)
        askAgain();
    onOpened (answer.code);
}

const RowSource::Cached* RowSource::cachedOf (int index) const
{
    if (index < 0 || index >= rows->size())
        return nullptr;
    const auto found = cache.find ((*rows)[index].songId);
    if (found == cache.end())
        return nullptr;
    found->second.used = ++useCount;
    return &found->second;
}

const SongRecord* RowSource::row (int index) const
{
    const auto* const cached = cachedOf (index);
    return cached != nullptr ? cached->record.get() : nullptr;
}

const PlayedSong* RowSource::playedSong (int index) const
{
    if (rows->kind != SongListKind::history || index < 0 || index >= rows->size())
        return nullptr;
    const auto place = static_cast<size_t> ((*rows)[index].entryId);
    return place < played.size() ? &played[place] : nullptr;
}

RowSource::Presence RowSource::presence (int index) const
{
    const auto* const cached = cachedOf (index);
    return cached != nullptr ? cached->presence : Presence::unknown;
}

void RowSource::want (int first, int last)
{
    const auto isDownwards = first >= wantedFirst;
    wantedFirst = first;
    wantedLast = last;
    const auto from = std::clamp (first - (isDownwards ? readBehind : readAhead), 0, rows->size());
    const auto to = std::clamp (last + (isDownwards ? readAhead : readBehind), from, rows->size());
    SongList missing (rows->kind, rows->playlistId);
    auto isUrgent = false;
    for (auto i = from; i < to; ++i)
    {
        const auto* const cached = cachedOf (i);
        if (cached != nullptr && !cached->isStale)
            continue;
        missing.add ((*rows)[i]);
        isUrgent = isUrgent || (i >= first && i < last);
    }
    // The rows ahead are read in portions, not one by one.
    if (missing.isEmpty() || (!isUrgent && missing.size() < readBehind && to < rows->size()))
        return;
    reader.post (newest, { [this, missing = std::move (missing), ofRows = rows] (const std::stop_token&)
                           {
                               std::vector<SongRecord> read;
                               if (room.database.readSongs (&missing, 0, missing.size(), read,
                                                            SongDatabase::Presence::skipped)
                                   != LibraryCode::ok)
                                   return; // asked again by the next want()
                               std::vector<std::shared_ptr<const SongRecord>> records;
                               for (size_t i = 0; i < read.size(); ++i)
                               {
                                   // A song that is gone meanwhile is an empty row until the list follows.
                                   read[i].id = missing[static_cast<int> (i)].songId;
                                   records.push_back (std::make_shared<SongRecord> (std::move (read[i])));
                               }
                               calls.post (
                                   [this, records = std::move (records), isOther = isForeign (missing.kind)]
                                   {
                                       if (isOther == isForeign (rows->kind))
                                           takeRecords (records);
                                   });
                           } });
}

void RowSource::takeRecords (const std::vector<std::shared_ptr<const SongRecord>>& records)
{
    std::vector<int32_t> ids;
    std::vector<std::pair<int32_t, juce::String>> paths;
    for (const auto& record : records)
    {
        auto& cached = cache[record->id];
        const auto& path = (*record)[SongColumn::filename];
        if (cached.record == nullptr || (*cached.record)[SongColumn::filename] != path)
            cached.presence = Presence::unknown;
        cached.record = record;
        cached.isStale = false;
        cached.used = ++useCount;
        ids.push_back (record->id);
        if (cached.presence == Presence::unknown)
            paths.emplace_back (record->id, path);
    }
    dropUnused();
    lookForFiles (std::move (paths));
    tellRows (ids);
}

void RowSource::lookForFiles()
{
    if (files.isBusy())
        return;
    std::vector<std::pair<int32_t, juce::String>> paths;
    for (auto i = std::max (0, wantedFirst); i < std::min (wantedLast, rows->size()); ++i)
        if (const auto* const cached = cachedOf (i); cached != nullptr && cached->record != nullptr)
            paths.emplace_back ((*rows)[i].songId, (*cached->record)[SongColumn::filename]);
    lookForFiles (std::move (paths));
}

void RowSource::lookForFiles (std::vector<std::pair<int32_t, juce::String>> paths)
{
    if (paths.empty())
        return;
    files.post ({ [this, paths = std::move (paths)] (const std::stop_token& stop)
                  {
                      std::vector<std::pair<int32_t, bool>> found;
                      for (const auto& [id, path] : paths)
                          if (!stop.stop_requested())
                              found.emplace_back (id, FileFacts::isPresent (path));
                      calls.post ([this, found = std::move (found)] { takePresence (found); });
                  } });
}

void RowSource::takePresence (const std::vector<std::pair<int32_t, bool>>& found)
{
    std::vector<int32_t> ids;
    for (const auto& [id, isPresent] : found)
    {
        const auto cached = cache.find (id);
        if (cached == cache.end())
            continue;
        const auto before =
            std::exchange (cached->second.presence, isPresent ? Presence::present : Presence::missing);
        if (isPresent == (before == Presence::missing)) // a row that was not looked at is shown as present
            ids.push_back (id);
    }
    tellRows (ids);
}

void RowSource::tellRows (const std::vector<int32_t>& songIds)
{
    // Only rows on screen can show it.
    auto first = std::numeric_limits<int>::max(), last = -1;
    for (auto i = std::max (0, wantedFirst); i < std::min (wantedLast, rows->size()); ++i)
        if (std::find (songIds.begin(), songIds.end(), (*rows)[i].songId) != songIds.end())
        {
            first = std::min (first, i);
            last = i;
        }
    if (last >= first)
        onRows (first, last + 1);
}

void RowSource::dropUnused()
{
    if (cache.size() <= mostCached)
        return;
    std::vector<uint64_t> uses;
    uses.reserve (cache.size());
    for (const auto& [id, cached] : cache)
        uses.push_back (cached.used);
    const auto oldest = uses.end() - static_cast<std::ptrdiff_t> (leastCached);
    std::nth_element (uses.begin(), oldest, uses.end());
    std::erase_if (cache, [limit = *oldest] (const auto& each)
                   { return each.second.used < limit && each.first >= 0; });
}

int RowSource::indexOfSong (int32_t songId) const
{
    const auto entries = rows->entries();
    const auto found =
        std::find_if (entries.begin(), entries.end(),
                      [songId] (const SongListEntry& entry) { return entry.songId == songId; });
    return found != entries.end() ? static_cast<int> (found - entries.begin()) : -1;
}

void RowSource::findFirst (SongField field, const juce::String& prefix, int from,
                           std::function<void (int)> answer)
{
    opener.post ({ [this, field, prefix, from, answer = std::move (answer), list = rows,
                    asOf = generation] (const std::stop_token&)
                   {
                       const auto row = room.watch.index().findFirst (*list, field, prefix, from);
                       calls.post (
                           [this, row, asOf, answer]
                           {
                               if (asOf == generation)
                                   answer (row);
                           });
                   } });
}

void RowSource::libraryChanged (const LibraryChange& change)
{
    if (change.songs)
        for (auto& [id, cached] : cache)
            if (change.songIds.empty()
                || std::binary_search (change.songIds.begin(), change.songIds.end(), id))
                cached.isStale = true;
    // An edit shows as soon as its row is read: other rows may take their time, as they do beside an import.
    if (change.songs)
        want (wantedFirst, wantedLast);
    if (asked > 0)
        askAgain();
}

/** Asks the same again, once the last question is answered and a while has passed. */
void RowSource::askAgain()
{
    asksAgain = true;
    if (isOpening())
        return;
    const auto rest = std::min (restAfterAnswer * (answeredAtMs - askedAtMs), mostRestMs);
    const auto rested = juce::Time::getMillisecondCounter() - answeredAtMs;
    if (rested >= rest)
        reopen();
    else if (juce::MessageManager::getInstanceWithoutCreating() != nullptr)
        startTimer (static_cast<int> (rest - rested));
}

void RowSource::timerCallback()
{
    reopen();
}

void RowSource::settleRows()
{
    const auto settleOnce = [this]
    {
        do
        {
            opener.wait();
            reader.wait();
            calls.deliver();
        } while (opener.isBusy() || reader.isBusy());
    };
    settleOnce();
    if (!asksAgain)
        return;
    reopen();
    settleOnce();
}

void RowSource::settle()
{
    do
    {
        settleRows();
        files.wait();
        calls.deliver();
    } while (opener.isBusy() || reader.isBusy() || files.isBusy());
}
