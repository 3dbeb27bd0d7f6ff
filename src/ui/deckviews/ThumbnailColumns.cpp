#include "ui/deckviews/ThumbnailColumns.h"

#include <algorithm>

ThumbnailColumns ThumbnailColumns::of (const TrackOverview& overview, int32_t frames, int32_t trackFrames,
                                       int width)
{
    width = std::max (1, width);
    ThumbnailColumns columns;
    columns.most.resize (static_cast<size_t> (width) + 1);
    columns.least.resize (columns.most.size());
    const auto entries =
        std::min (TrackOverview::entries, (frames + framesPerOverviewEntry - 1) / framesPerOverviewEntry);
    if (entries < 1)
        return columns;

    const auto frameAt = [&] (int64_t column) { return column * trackFrames / width; };
    const auto entryAt = [&] (int64_t column)
    { return std::min (static_cast<int32_t> (frameAt (column) / framesPerOverviewEntry), entries - 1); };
    for (int64_t x = 0; x <= width && (x == 0 || frameAt (x) <= frames); ++x)
    {
        const auto first = entryAt (x), end = std::max (first + 1, entryAt (x + 1));
        int8_t most = 0, least = 0;
        for (auto entry = first; entry < end; ++entry)
        {
            most = std::max (most, overview.overviewMax[static_cast<size_t> (entry)].get());
            least = std::min (least, overview.overviewMin[static_cast<size_t> (entry)].get());
        }
        columns.most[static_cast<size_t> (x)] = most;
        columns.least[static_cast<size_t> (x)] = least;
    }
    return columns;
}
