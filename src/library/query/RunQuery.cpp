#include "library/query/RunQuery.h"

#include "library/query/FoldedText.h"
#include "library/sql/SqlInterruption.h"

#include <algorithm>
#include <optional>

namespace
{
/** The rows of a source that is not the whole library. */
int fillSource (const SongQuery& query, SongDatabase& database, SongList& list)
{
    const auto sort = query.sort;
    const auto ascending = query.ascending;
    switch (query.kind)
    {
    case SongListKind::playlist:
        return database.fillPlaylist (&list, query.id, sort, ascending);
    case SongListKind::smartPlaylist:
        return database.fillSmartPlaylist (&list, query.id, sort, ascending);
    case SongListKind::automix:
        return database.fillAutomix (&list, sort, ascending);
    case SongListKind::recommendation:
        return database.fillRecommendation (&list, sort, ascending);
    case SongListKind::foreignPlaylist:
        return database.fillForeignPlaylist (&list, query.id, sort, ascending);
    default:
        break;
    }
    if (const auto field = pickingField (query.kind))
        return database.fillByField (query.name, *field, &list, sort, ascending);
    return LibraryCode::wrongKind;
}

bool isWholeLibrary (SongListKind kind)
{
    return kind == SongListKind::root || kind == SongListKind::library || kind == SongListKind::albums
           || kind == SongListKind::artists;
}
}

std::optional<SongField> pickingField (SongListKind kind) noexcept
{
    switch (kind)
    {
    case SongListKind::album:
        return SongField::album;
    case SongListKind::artist:
        return SongField::artist;
    case SongListKind::genre:
        return SongField::genre;
    default:
        return {};
    }
}

int runQuery (const SongQuery& query, SongDatabase& database, const SongIndex& index, SongList& list,
              const std::stop_token& stop)
{
    const SqlInterruption interruption (stop);
    list = SongList (query.kind, query.id);
    list.name = query.name;
    list.sorted = query.sort != SongField::listOrder;
    if (query.isFiltered() && !isForeign (query.kind) && !index.waitUntilBuilt (stop))
        return LibraryCode::interrupted;
    if (isWholeLibrary (query.kind))
        return index.isBuilt() ? index.fill (database, query, list, stop)
                               : database.fillLibrary (&list, query.sort, query.ascending);
    if (const auto code = fillSource (query, database, list); code != LibraryCode::ok || !query.isFiltered())
        return code;
    if (!isForeign (query.kind))
        return index.filter (database, query, list, stop);
    // A foreign library is searched now and then, and read anew at each start: its index is not kept.
    SongIndex foreign;
    if (const auto code = foreign.build (database, SongIndex::Songs::foreign); code != LibraryCode::ok)
        return code;
    return foreign.filter (database, query, list, stop);
}
