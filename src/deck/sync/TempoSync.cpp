#include "deck/sync/TempoSync.h"

#include <algorithm>

namespace
{
constexpr double nudgeUp = 1.04, nudgeDown = 0.96;

double fromFader (const DeckWorld& world, const DeckPlayer& deck) noexcept
{
    return 1.0 + (deck.tempo.pitch - 0.5) * world.pitchRange;
}

double signedRatio (const DeckWorld& world, const DeckPlayer& deck) noexcept
{
    return deck.track.sampleRate / world.engineRate * (deck.play.reverse != 0 ? -1.0 : 1.0);
}
}

double TempoSync::followed (DeckWorld& world, const DeckPlayer& deck) noexcept
{
    if (world.setup (deck).sync == 0 || !(deck.marks.bpm > 0.0))
        return fromFader (world, deck);
    if (world.isStandalone == 0)
        return world.hostBpm / deck.marks.bpm;
    const auto* master = world.deck (world.settings.masterDeck);
    return master != nullptr && master != &deck
               ? master->marks.bpm / deck.marks.bpm * fromFader (world, *master)
               : fromFader (world, deck);
}

double TempoSync::withHand (const DeckPlayer& deck, double followedTempo) noexcept
{
    const auto tempo = followedTempo * deck.sync.hold.factor - deck.head.bend;
    return deck.play.nudge == 0 ? tempo : tempo * (deck.play.nudge > 0 ? nudgeUp : nudgeDown);
}

double TempoSync::speed (DeckWorld& world, const DeckPlayer& deck) noexcept
{
    const auto tempo = withHand (deck, followed (world, deck));
    return signedRatio (world, deck)
           * (world.isStretched (deck)
                  ? std::clamp (tempo, DeckVoice::slowestStretch, DeckVoice::fastestStretch)
                  : tempo);
}

double TempoSync::lagOfRate (DeckWorld& world, const DeckPlayer& deck, double rate) noexcept
{
    const auto target = world.isStretched (deck) ? signedRatio (world, deck) : speed (world, deck);
    return (target - rate) * world.smoothing5ms / (1.0 - world.smoothing5ms);
}
