#pragma once

#include "library/query/SongIndex.h"

/** Answers a query: the rows of its source, in its order, as far as its filter leaves them. The list gets the query's kind,
    id and name. Any thread but the message thread; a stopped token ends it with LibraryCode::interrupted.
    @param index   of the same library; until it is built, the whole library is asked of the file, and a filter waits for it
    @returns as SongDatabase */
int runQuery (const SongQuery&, SongDatabase&, const SongIndex& index, SongList&,
              const std::stop_token& = {});
