#include "deck/edit/Snap.h"

#include <algorithm>

double Snap::withinTrack (double frame) const noexcept
{
    return std::clamp (frame, 0.0, static_cast<double> (grid.loadedFrames));
}

std::optional<double> Snap::place() const noexcept
{
    if (!snaps)
        return withinTrack (heard);
    const auto beat = grid.nearestEvenBeat (heard);
    return beat ? std::optional (withinTrack (*beat)) : std::nullopt;
}
