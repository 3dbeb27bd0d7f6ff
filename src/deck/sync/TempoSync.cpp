#include "deck/sync/TempoSync.h"

#include <algorithm>
#include <optional>

namespace
{
constexpr double nudgeUp = 1.04, nudgeDown = 0.96;

/** A deck goes back to beat for beat only where that is well within reach. */
constexpr double wellWithin = 1.05;

double fromFader (const DeckWorld& world, const DeckPlayer& deck) noexcept
{
    // The fader of a deck under a record shows the record's speed itself.
    const auto range = deck.play.followsRecord != 0 ? 1.0 : world.pitchRange.get();
    return 1.0 + (deck.tempo.pitch - 0.5) * range;
}

double signedRatio (const DeckWorld& world, const DeckPlayer& deck) noexcept
{
    return deck.track.sampleRate / world.engineRate * (deck.play.reverse != 0 ? -1.0 : 1.0);
}

/** @returns nothing for a deck that follows nobody */
std::optional<double> tempoOfReference (DeckWorld& world, const DeckPlayer& deck) noexcept
{
    if (world.setup (deck).sync == 0 || !(deck.marks.bpm > 0.0))
        return {};
    if (world.isStandalone == 0)
        return world.hostBpm / deck.marks.bpm;
    const auto* master = world.deck (world.settings.masterDeck);
    if (master == nullptr || master == &deck)
        return {};
    return master->marks.bpm / deck.marks.bpm * fromFader (world, *master);
}

/** @param margin   at either end, as a factor */
bool isWithinReach (double tempo, double margin = 1.0) noexcept
{
    return tempo >= DeckVoice::slowestStretch * margin && tempo <= DeckVoice::fastestStretch / margin;
}

bool isOctaveOff (const DeckPlayer& deck) noexcept
{
    return deck.sync.beatRatio != 1.0;
}
}

TempoSync::Followed TempoSync::followed (DeckWorld& world, const DeckPlayer& deck) noexcept
{
    const auto wanted = tempoOfReference (world, deck);
    if (!wanted.has_value())
        return { fromFader (world, deck) };
    if (world.settings.bypassStretcher != 0 || isWithinReach (*wanted, isOctaveOff (deck) ? wellWithin : 1.0))
        return { *wanted };
    for (const auto beatRatio : { 0.5, 2.0 })
        if (isWithinReach (*wanted * beatRatio))
            return { *wanted * beatRatio, beatRatio };
    return { fromFader (world, deck), 0.0 };
}

double TempoSync::withHand (const DeckWorld& world, const DeckPlayer& deck, double followedTempo) noexcept
{
    auto tempo = followedTempo * deck.sync.hold.factor - deck.head.bend;
    if (deck.play.nudge != 0)
        tempo *= deck.play.nudge > 0 ? nudgeUp : nudgeDown;
    return world.isStretched (deck) ? std::clamp (tempo, DeckVoice::slowestStretch, DeckVoice::fastestStretch)
                                    : tempo;
}

double TempoSync::speed (DeckWorld& world, const DeckPlayer& deck) noexcept
{
    return signedRatio (world, deck) * withHand (world, deck, followed (world, deck).tempo);
}

double TempoSync::lagOfRate (DeckWorld& world, const DeckPlayer& deck, double rate) noexcept
{
    const auto target = world.isStretched (deck) ? signedRatio (world, deck) : speed (world, deck);
    return (target - rate) * world.smoothing5ms / (1.0 - world.smoothing5ms);
}
