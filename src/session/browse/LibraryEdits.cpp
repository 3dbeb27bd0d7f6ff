#include "session/browse/LibraryEdits.h"

#include "library/query/RunQuery.h"
#include "session/browse/LibraryRoom.h"
#include "support/language/Translate.h"

#include <algorithm>
#include <unordered_map>

namespace
{
/** A list's name in the text of an edit. */
juce::String nameOf (const ListContent& content)
{
    if (content.list.kind == SongListKind::automix)
        return tr ("the automix list");
    return content.name;
}

std::vector<ListContent::Entry> newEntries (const std::vector<int32_t>& songIds)
{
    std::vector<ListContent::Entry> entries;
    entries.reserve (songIds.size());
    for (const auto id : songIds)
        entries.push_back ({ -1, id });
    return entries;
}

/** Puts entries in front of the one at a place. @param placed   gets their places */
void putAt (std::vector<ListContent::Entry>& entries, int place, const std::vector<ListContent::Entry>& more,
            std::vector<size_t>& placed)
{
    const auto at = place < 0 ? entries.size() : std::min (static_cast<size_t> (place), entries.size());
    entries.insert (entries.begin() + static_cast<std::ptrdiff_t> (at), more.begin(), more.end());
    for (size_t i = 0; i < more.size(); ++i)
        placed.push_back (at + i);
}

LibraryEdits::Done withPlaces (const std::shared_ptr<std::vector<int32_t>>& entryIds,
                               LibraryEdits::Placed done)
{
    return [done = std::move (done), entryIds] (int code)
    {
        if (done != nullptr)
            done (code, *entryIds);
    };
}

LibraryEdits::Placed withoutPlaces (LibraryEdits::Done done)
{
    return [done = std::move (done)] (int code, const std::vector<int32_t>&)
    {
        if (done != nullptr)
            done (code);
    };
}

/** The sort order behind all other lists of the kind. */
int lastPlace (SongDatabase& database, SongListKind kind, int32_t& place)
{
    std::vector<SourceItem> items;
    const auto code =
        kind == SongListKind::playlist ? database.listPlaylists (items) : database.listSmartPlaylists (items);
    place = 1;
    for (const auto& item : items)
        place = std::max (place, item.sortOrder + 1);
    return code;
}
}

LibraryEdits::LibraryEdits (LibraryRoom& r) : room (r), database (r.database) {}

void LibraryEdits::post (std::function<int()> edit, Done done)
{
    const auto answer = [this, done = std::move (done)] (int code)
    {
        room.watch.look();
        if (done != nullptr)
            calls.post ([done, code] { done (code); });
    };
    worker.post ({ [answer, edit = std::move (edit)] (const std::stop_token&) { answer (edit()); },
                   [answer] (const char*) { answer (LibraryCode::failed); } });
}

int LibraryEdits::runEdit (ListRef list, const juce::String& verb, const ListChange& change,
                           std::vector<int32_t>& entryIds)
{
    ListContent named, result;
    if (const auto code = database.readList (list, named); code != LibraryCode::ok)
        return code;
    if (!named.exists)
        return LibraryCode::badArgument;
    std::vector<size_t> placed;
    // Recommendations live in memory and go with the session: nothing to take back.
    const auto isKept = list.kind != SongListKind::recommendation;
    const auto code = history.edit (
        database, list, isKept ? verb.replace ("{list}", nameOf (named)) : juce::String(),
        [&] (ListContent& content) { return change (content, placed); }, &result);
    if (code == LibraryCode::ok)
        for (const auto at : placed)
            entryIds.push_back (result.entries[at].entryId);
    return code;
}

void LibraryEdits::editList (ListRef list, const juce::String& verb, ListChange change, Placed done)
{
    const auto entryIds = std::make_shared<std::vector<int32_t>>();
    post ([this, list, verb, change = std::move (change), entryIds]
          { return runEdit (list, verb, change, *entryIds); },
          withPlaces (entryIds, std::move (done)));
}

void LibraryEdits::insert (ListRef list, int place, std::vector<int32_t> songIds, Placed done)
{
    const auto verb = trPlural ("Add %1 song to {list}", "Add %1 songs to {list}", songIds.size());
    editList (
        list, verb,
        [place, songIds = std::move (songIds)] (ListContent& content, std::vector<size_t>& placed)
        {
            putAt (content.entries, place, newEntries (songIds), placed);
            return LibraryCode::ok;
        },
        std::move (done));
}

void LibraryEdits::append (ListRef list, const SongQuery& query, Placed done)
{
    const auto entryIds = std::make_shared<std::vector<int32_t>>();
    post (
        [this, list, query, entryIds]
        {
            // Asked before the edit, which keeps everybody else from the file.
            SongList found;
            if (const auto code = runQuery (query, database, room.watch.index(), found);
                code != LibraryCode::ok)
                return code;
            const auto put = [&found] (ListContent& content, std::vector<size_t>& placed)
            {
                putAt (content.entries, -1, newEntries (found.songIds()), placed);
                return LibraryCode::ok;
            };
            return runEdit (list,
                            trPlural ("Add %1 song to {list}", "Add %1 songs to {list}",
                                      static_cast<size_t> (found.size())),
                            put, *entryIds);
        },
        withPlaces (entryIds, std::move (done)));
}

void LibraryEdits::remove (ListRef list, std::vector<int32_t> entryIds, Done done)
{
    const auto verb = trPlural ("Remove %1 song from {list}", "Remove %1 songs from {list}", entryIds.size());
    std::sort (entryIds.begin(), entryIds.end());
    editList (
        list, verb,
        [entryIds = std::move (entryIds)] (ListContent& content, std::vector<size_t>&)
        {
            std::erase_if (content.entries, [&] (const ListContent::Entry& entry)
                           { return std::binary_search (entryIds.begin(), entryIds.end(), entry.entryId); });
            return LibraryCode::ok;
        },
        withoutPlaces (std::move (done)));
}

void LibraryEdits::move (ListRef list, std::vector<int32_t> entryIds, int place, Placed done)
{
    const auto verb = trPlural ("Move %1 song in {list}", "Move %1 songs in {list}", entryIds.size());
    std::sort (entryIds.begin(), entryIds.end());
    editList (
        list, verb,
        [place, entryIds = std::move (entryIds)] (ListContent& content, std::vector<size_t>& placed)
        {
            const auto isMoved = [&] (const ListContent::Entry& entry)
            { return std::binary_search (entryIds.begin(), entryIds.end(), entry.entryId); };
            auto& entries = content.entries;
            const auto at = entries.begin()
                            + std::clamp (place < 0 ? static_cast<int> (entries.size()) : place, 0,
                                          static_cast<int> (entries.size()));
            // Those in front of the place go to its front, those behind it to its back; both keep their order.
            const auto first = std::stable_partition (entries.begin(), at,
                                                      [&] (const auto& entry) { return !isMoved (entry); });
            const auto last = std::stable_partition (at, entries.end(), isMoved);
            for (auto entry = first; entry != last; ++entry)
                placed.push_back (static_cast<size_t> (entry - entries.begin()));
            return LibraryCode::ok;
        },
        std::move (done));
}

void LibraryEdits::clear (ListRef list, Done done)
{
    editList (
        list, tr ("Clear {list}"),
        [] (ListContent& content, std::vector<size_t>&)
        {
            content.entries.clear();
            return LibraryCode::ok;
        },
        withoutPlaces (std::move (done)));
}

void LibraryEdits::reorder (ListRef list, std::vector<int32_t> entryIds, Done done)
{
    editList (
        list, tr ("Put {list} in another order"),
        [entryIds = std::move (entryIds)] (ListContent& content, std::vector<size_t>&)
        {
            std::unordered_map<int32_t, size_t> places;
            for (size_t i = 0; i < entryIds.size(); ++i)
                places.emplace (entryIds[i], i);
            const auto placeOf = [&] (const ListContent::Entry& entry)
            {
                const auto found = places.find (entry.entryId);
                return found != places.end() ? found->second : places.size();
            };
            std::stable_sort (content.entries.begin(), content.entries.end(),
                              [&] (const auto& a, const auto& b) { return placeOf (a) < placeOf (b); });
            return LibraryCode::ok;
        },
        withoutPlaces (std::move (done)));
}

void LibraryEdits::make (ListContent made, Created done)
{
    const auto id = std::make_shared<int32_t> (-1);
    post (
        [this, made = std::move (made), id]
        {
            ListContent result;
            const auto code = history.edit (
                database, made.list, tr ("Create %1", made.name),
                [&] (ListContent& content)
                {
                    content = made;
                    return lastPlace (database, made.list.kind, content.sortOrder);
                },
                &result);
            *id = result.list.id;
            return code;
        },
        [done = std::move (done), id] (int code)
        {
            if (done != nullptr)
                done (code, *id);
        });
}

void LibraryEdits::create (const juce::String& name, std::vector<int32_t> songIds, Created done)
{
    ListContent made;
    made.list.kind = SongListKind::playlist;
    made.exists = true;
    made.name = name;
    made.entries = newEntries (songIds);
    make (std::move (made), std::move (done));
}

void LibraryEdits::createSmart (const juce::String& name, const juce::String& sql, const juce::String& rules,
                                Created done)
{
    ListContent made;
    made.list.kind = SongListKind::smartPlaylist;
    made.exists = true;
    made.name = name;
    made.smartSql = sql;
    made.smartRules = rules;
    make (std::move (made), std::move (done));
}

void LibraryEdits::setSmart (int32_t id, const juce::String& sql, const juce::String& rules, Done done)
{
    editList (
        { SongListKind::smartPlaylist, id }, tr ("Edit {list}"),
        [sql, rules] (ListContent& content, std::vector<size_t>&)
        {
            if (sql.isNotEmpty())
                content.smartSql = sql;
            if (rules.isNotEmpty())
                content.smartRules = rules;
            return LibraryCode::ok;
        },
        withoutPlaces (std::move (done)));
}

void LibraryEdits::loadSmart (int32_t id, std::function<void (int, const juce::String&)> answer)
{
    worker.post ({ [this, id, answer = std::move (answer)] (const std::stop_token&)
                   {
                       juce::String rules;
                       const auto code = database.getSmartRules (id, rules);
                       calls.post ([answer, code, rules] { answer (code, rules); });
                   } });
}

void LibraryEdits::rename (ListRef list, const juce::String& name, Done done)
{
    editList (
        list, tr ("Rename {list}"),
        [name] (ListContent& content, std::vector<size_t>&)
        {
            content.name = name;
            return LibraryCode::ok;
        },
        withoutPlaces (std::move (done)));
}

void LibraryEdits::deleteList (ListRef list, Done done)
{
    editList (
        list, tr ("Delete {list}"),
        [] (ListContent& content, std::vector<size_t>&)
        {
            content.exists = false;
            content.entries.clear();
            return LibraryCode::ok;
        },
        withoutPlaces (std::move (done)));
}

void LibraryEdits::moveInTree (ListRef list, int by, Done done)
{
    post (
        [this, list, by]
        {
            auto transaction = database.beginTransaction();
            std::vector<SourceItem> items;
            auto code = transaction.code();
            if (code == LibraryCode::ok)
                code = list.kind == SongListKind::playlist ? database.listPlaylists (items)
                                                           : database.listSmartPlaylists (items);
            const auto found = std::find_if (items.begin(), items.end(),
                                             [&] (const SourceItem& item) { return item.id == list.id; });
            const auto to = found - items.begin() + by;
            if (code != LibraryCode::ok || found == items.end() || to < 0 || to >= std::ssize (items))
                return transaction.commitIf (code);
            std::swap (*found, items[static_cast<size_t> (to)]);
            // Lists that share a place could not be swapped by their numbers alone.
            for (size_t i = 0; i < items.size() && code == LibraryCode::ok; ++i)
                if (const auto place = static_cast<int32_t> (i + 1); items[i].sortOrder != place)
                {
                    items[i].sortOrder = place;
                    code = database.setSortOrder (items[i]);
                }
            return transaction.commitIf (code);
        },
        std::move (done));
}

juce::String LibraryEdits::undoText() const
{
    return history.text();
}

void LibraryEdits::undo (Done done)
{
    post ([this] { return history.undo (database); }, std::move (done));
}

void LibraryEdits::settleViews()
{
    readers.wait();
    calls.deliver();
}

void LibraryEdits::settle()
{
    worker.wait();
    settleViews();
}
