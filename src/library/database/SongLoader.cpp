#include "library/database/SongLoader.h"

#include "library/sql/LibraryCode.h"
#include "library/sql/SqlInterruption.h"

#include <utility>

namespace
{
constexpr Worker::Key newestOnly = 0;
}

void SongLoader::request (SongList list, Fill fill)
{
    const std::scoped_lock scope (lock);
    result.reset();
    const auto store = [this, mine = ++generation] (Result made)
    {
        const std::scoped_lock storing (lock);
        if (mine == generation)
            result = std::move (made);
    };
    worker.post (newestOnly,
                 { [store, list = std::move (list), fill = std::move (fill)] (const std::stop_token& token)
                   {
                       const SqlInterruption interruption (token);
                       Result made { list, LibraryCode::ok };
                       made.code = fill (made.list);
                       store (std::move (made));
                   },
                   [store] (const char*) {
                       store ({ {}, LibraryCode::failed });
                   } });
}

void SongLoader::cancel()
{
    const std::scoped_lock scope (lock);
    ++generation;
    result.reset();
    worker.cancel();
}

std::optional<SongLoader::Result> SongLoader::take()
{
    const std::scoped_lock scope (lock);
    return std::exchange (result, std::nullopt);
}
