#include "ui/deckviews/MarkLayout.h"

#include <algorithm>

MarkLayout MarkLayout::of (std::span<const GridBeat> beats, const TrackPlaces& places, TrackScale track,
                           int64_t left, int width)
{
    MarkLayout layout;
    const auto xOf = [&] (double frame) { return track.columnAt (frame) - left; };
    const auto add =
        [&] (std::vector<Mark>& to, MarkKind kind, double frame, int number, bool running = false)
    {
        if (const auto x = xOf (frame); x >= 0 && x < width)
            to.push_back ({ kind, static_cast<int> (x), number, running });
    };

    for (const auto& beat : beats)
        if (const auto kind = kindOfBeat (beat.fromDownbeat); kind != MarkKind::none)
            add (layout.beats, kind, beat.frame, kind == MarkKind::beat ? 0 : barNumber (beat.fromDownbeat));

    if (places.loop.has_value())
    {
        const auto edge = [&] (double frame)
        { return static_cast<int> (std::clamp<int64_t> (xOf (frame), 0, width)); };
        const Region region { edge (places.loop->in), edge (places.loop->out), places.loop->running };
        if (region.right > region.left)
            layout.loop = region;
    }

    const auto manualRuns = places.loop.has_value() && places.loop->running && places.loopIn.has_value()
                            && places.loop->in == *places.loopIn;
    if (places.loopIn.has_value())
        add (layout.flags, MarkKind::loopIn, *places.loopIn, 0, manualRuns);
    if (places.loopOut.has_value())
        add (layout.flags, MarkKind::loopOut, *places.loopOut, 0, manualRuns);
    if (places.startPoint.has_value())
        add (layout.flags, MarkKind::startPoint, *places.startPoint, 0);
    if (const auto slot = places.currentCue; slot >= 0 && slot < cueSlotCount && places.hasCue (slot))
        add (layout.flags, MarkKind::cuePoint, places.cues[static_cast<size_t> (slot)], slot + 1);
    for (int slot = 0; slot < hotCueCount; ++slot)
        if (places.hasCue (slot))
            add (layout.flags, MarkKind::hotCue, places.cues[static_cast<size_t> (slot)], slot + 1);
    if (places.startPoint.has_value())
        layout.unreachable = static_cast<int> (std::clamp<int64_t> (xOf (*places.startPoint), 0, width));
    return layout;
}
