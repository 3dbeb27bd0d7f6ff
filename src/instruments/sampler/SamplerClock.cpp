#include "instruments/sampler/SamplerClock.h"

#include "deck/sync/TempoSync.h"

#include <cmath>

namespace
{
/** Entries further off the tempo's distance than this are gaps of the table. */
constexpr double greatestDeviation = 0.08;

struct GridPlace
{
    double phase = 0.0;  ///< entries since the anchor
    double length = 1.0; ///< of the entry's distance, in frames of the file
};

std::optional<GridPlace> placeOn (const BeatGrid& grid, double frame) noexcept
{
    const auto period = grid.period();
    if (!(period > 0.0) || grid.beatCount() < 1)
        return {};
    const auto next = grid.firstEntryBeyond (frame);
    const auto entry = std::max (next - 1, 0);
    auto length = period;
    if (next >= 1 && next < grid.beatCount())
        if (const auto distance = grid.beatAt (next) - grid.beatAt (entry);
            std::abs (distance - period) <= greatestDeviation * period)
            length = distance;
    return GridPlace { entry - grid.downbeatEntry() + (frame - grid.beatAt (entry)) / length, length };
}

/** A loop turns from beat to beat, or half beat: so its turns don't leave the pulse. */
bool keepsPulse (const LoopRegion& region, double period) noexcept
{
    if (!region.hasLoop())
        return true;
    const auto entries = region.lengthOfLoop() / period;
    return std::round (entries) >= 1.0 && std::abs (entries - std::round (entries)) < 0.02;
}

void followDeck (SamplerClock& clock, DeckWorld& world, const DeckPlayer& master) noexcept
{
    clock.bpm = master.marks.bpm * master.tempo.factor;
    if (!master.isPlaying() || master.isHeld() || master.head.jog != 0.0)
        return;
    const auto grid = master.grid();
    const auto place = placeOn (grid, master.heardPosition());
    const auto speed = TempoSync::speed (world, master);
    if (!place.has_value() || !keepsPulse (master.region(), grid.period()) || speed == 0.0)
        return;
    clock.isRunning = true;
    clock.isNumbered = speed > 0.0;
    clock.perFrame = std::abs (speed) / place->length;
    clock.phaseAtEnd = clock.isNumbered ? place->phase : -place->phase;
}

void followHost (SamplerClock& clock, double engineRate, const SongPosition& host) noexcept
{
    clock.bpm = host.bpm > 0.0 ? host.bpm : SongPosition::defaultBpm;
    if (!host.isPlaying)
        return;
    clock.isRunning = true;
    clock.perFrame = clock.bpm / (30.0 * engineRate);
    const auto beats = host.beats.value_or (host.timeInSeconds * clock.bpm / 60.0);
    clock.phaseAtEnd = 2.0 * beats + clock.frames * clock.perFrame;
}
}

SamplerClock SamplerClock::of (DeckWorld& world, const SongPosition& host, int frames) noexcept
{
    SamplerClock clock;
    clock.frames = frames;
    if (world.isStandalone == 0)
        followHost (clock, world.engineRate, host);
    else if (const auto* master = world.deck (world.settings.masterDeck))
        followDeck (clock, world, *master);
    return clock;
}
