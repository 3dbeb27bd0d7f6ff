#pragma once

#include "library/query/SongIndex.h"

#include <optional>

/** The field by which a kind picks its songs; nothing for kinds that hold their songs or take all. Any thread. */
std::optional<SongField> pickingField (SongListKind) noexcept;

/** Answers a query: the rows of its source, in its order, as far as its filter leaves them. The list gets the query's kind,
    id and name. Any thread but the message thread; a stopped token ends it with LibraryCode::interrupted.
    @param index   of the same library; until it is built, the whole library is asked of the file, and a filter waits for it
    @returns as SongDatabase */
int runQuery (const SongQuery&, SongDatabase&, const SongIndex& index, SongList&,
              const std::stop_token& = {});
