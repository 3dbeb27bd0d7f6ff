#include "deck/Snap.h"

namespace
{
double withinTrack (const DeckPlayer& deck, double frame) noexcept
{
    return juce::jlimit (0.0, static_cast<double> (deck.track.loadedFrames), frame);
}
}

std::optional<double> Snap::heardPlace (DeckWorld& world, const DeckPlayer& deck) noexcept
{
    if (world.setup (deck).snap == 0 || deck.track.numBeats < 1)
        return withinTrack (deck, deck.heardPosition());
    const auto beat = deck.grid().nearestEvenBeat (deck.heardPosition());
    return beat ? std::optional (withinTrack (deck, *beat)) : std::nullopt;
}

double Snap::heardPlaceOrPlain (DeckWorld& world, const DeckPlayer& deck) noexcept
{
    return heardPlace (world, deck).value_or (withinTrack (deck, deck.heardPosition()));
}
