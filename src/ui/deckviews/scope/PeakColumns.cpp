#include "ui/deckviews/scope/PeakColumns.h"

#include <algorithm>
#include <cmath>

int64_t PeakColumns::columnAt (double frame) const noexcept
{
    return static_cast<int64_t> (std::floor (frame / framesPerColumn));
}

PeakColumns::Extremes PeakColumns::of (const PXAudioSampleBuffer& samples, int32_t loadedFrames,
                                       int64_t column, bool& inTrack) const noexcept
{
    const auto frameAt = [this] (int64_t c)
    { return static_cast<int64_t> (std::floor (static_cast<double> (c) * framesPerColumn)); };
    const auto first = frameAt (column);
    inTrack = first >= 0 && first < loadedFrames;
    if (!inTrack)
        return {};
    const auto end = std::min<int64_t> (frameAt (column + 1) + 1, loadedFrames);

    int16_t most = INT16_MIN, least = INT16_MAX;
    for (const auto* side : { samples.left(), samples.right() })
        for (auto i = first; i < end; ++i)
        {
            most = std::max (most, side[i]);
            least = std::min (least, side[i]);
        }
    return { most, least };
}
