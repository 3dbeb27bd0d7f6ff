#include "deck/sync/PhaseAlignment.h"

#include "deck/sync/BeatPhase.h"
#include "deck/sync/TempoSync.h"
#include "support/language/Translate.h"

#include <algorithm>
#include <cmath>

namespace
{
/** A deck this close to its place stays: a jump would be heard, the distance is not. */
constexpr double closeSeconds = 0.0005;

// Remains of the tempo alone, such as the rounding of a table's beats to frames, are taken out within half a second.
constexpr double correctionSeconds = 0.5, greatestCorrection = 0.005;
constexpr double correctFromSeconds = 0.0001, correctToSeconds = 0.00001;

/** A distance that changes by more than this from one block to the next is a jump: the new distance is held. */
constexpr double greatestErrorSeconds = 0.025;

constexpr double greatestLocalTempo = 1.08;

constexpr const char* tooFarApart = N_ ("*** Sync can't hold ***|The tempos are|too far apart");

/** Beats as they are heard at the begin of this block, and how fast they pass. */
struct Beats
{
    double phase = 0.0;
    double perFrame = 0.0;                  ///< output frame
    double length = 1.0, usualLength = 1.0; ///< of one, in any unit

    /** The same in smaller beats. @param count   of them in one, 1 or 2 */
    Beats divided (double count) const noexcept
    {
        return { phase * count, perFrame * count, length / count, usualLength / count };
    }
};

/** Of a deck and its reference in time at half or double tempo the one's beats are divided until they are as long as the
    other's. */
double divisionOfDeck (const DeckPlayer& deck) noexcept
{
    return deck.sync.beatRatio == 0.5 ? 2.0 : 1.0;
}

double divisionOfReference (const DeckPlayer& deck) noexcept
{
    return deck.sync.beatRatio == 2.0 ? 2.0 : 1.0;
}

/** The place in a deck's track that is heard now, as if the rate had been reached already. */
double heardNow (DeckWorld& world, const DeckPlayer& deck) noexcept
{
    return deck.heardPosition() - TempoSync::lagOfRate (world, deck, deck.voice.heardRate (deck.head));
}

std::optional<Beats> beatsOf (DeckWorld& world, const DeckPlayer& deck) noexcept
{
    const auto here = BeatPhase::at (deck.grid(), deck.region(), heardNow (world, deck));
    if (!here.has_value())
        return {};
    return Beats { here->phase, TempoSync::speed (world, deck) / here->length, here->length,
                   deck.beatFrames() };
}

/** Beats as they are heard now, whatever loop the deck is in. */
std::optional<Beats> heardBeatsOf (DeckWorld& world, const DeckPlayer& deck) noexcept
{
    const auto here = BeatPhase::at (deck.grid(), deck.heardPosition());
    if (!here.has_value())
        return {};
    const auto usual = deck.beatFrames();
    return Beats { here->phase, TempoSync::speed (world, deck) / usual, usual, usual };
}

/** Nothing but its tempo moves the deck. */
bool runsFreely (const DeckPlayer& deck) noexcept
{
    return deck.isPlaying() && !deck.isHeld() && deck.head.bend == 0.0 && deck.head.jog == 0.0
           && deck.play.nudge == 0 && deck.play.reverse == 0;
}

/** True in a loop that does not turn from beat to beat. */
bool leavesBeat (const DeckPlayer& deck) noexcept
{
    const auto region = deck.region();
    return region.hasLoop() && !BeatPhase::at (deck.grid(), region, deck.heardPosition()).has_value();
}

/** The place to which a deck goes so that `wanted` beats after its even beat are heard now. In half or double tempo any
    of the divided beats will do, and it stays near the one that is heard. */
std::optional<double> placeNear (const DeckPlayer& deck, double wanted) noexcept
{
    const auto heard = deck.heardPosition();
    const auto beat = deck.grid().nearestEvenBeat (heard);
    if (!beat.has_value() || !(std::abs (wanted) <= 1.0))
        return {};

    const auto length = deck.beatFrames();
    const auto beatsOff = (heard - *beat) / length;
    if (std::abs (beatsOff) <= 1.0)
        return deck.sync.beatRatio == 1.0 ? *beat + wanted * length : heard;
    if (deck.sync.resync == SyncState::besideGrid)
        return *beat + (wanted + std::round (beatsOff)) * length;
    return {};
}

/** The factor that the tempos around two places ask of a deck beyond the tempos of the tracks. */
double localFactor (double length, double usualLength, const Beats& theirs) noexcept
{
    return std::clamp (length / usualLength * theirs.usualLength / theirs.length, 1.0 / greatestLocalTempo,
                       greatestLocalTempo);
}

/** Jumps there, finely adjusted to be in phase with the reference. */
void jumpToPhase (DeckWorld& world, DeckPlayer& deck, const Beats& theirs, double target) noexcept
{
    const auto division = divisionOfDeck (deck);
    const auto reference = theirs.divided (divisionOfReference (deck));
    const auto usual = deck.beatFrames() / division;
    const auto region = deck.region();
    const auto at = [&] (double place)
    {
        const auto found = BeatPhase::at (deck.grid(), region, place);
        return found ? BeatPhase { found->phase * division, found->length / division }
                     : BeatPhase { reference.phase, usual };
    };
    deck.sync.hold.factor = localFactor (at (target).length, usual, reference);
    const auto there = at (target);
    target += BeatPhase::wrapped (reference.phase - there.phase) * there.length;
    if (target < 0.0)
        target += there.length * std::ceil (-target / there.length);

    const auto isClose = std::abs (heardNow (world, deck) - target) < closeSeconds * deck.track.sampleRate;
    if (!isClose || deck.head.rate == 0.0)
        deck.jumpTo (target + TempoSync::lagOfRate (world, deck, deck.head.rate));
}

void holdFrom (DeckPlayer& deck, int reference, double distance) noexcept
{
    deck.sync.hold.reference = reference;
    deck.sync.hold.beatRatio = deck.sync.beatRatio;
    deck.sync.hold.distance = distance;
    deck.sync.hold.correcting = false;
}

std::optional<Beats> beatsOf (const DeckWorld& world, const SongPosition& host) noexcept
{
    if (!host.isPlaying || !host.beats.has_value())
        return {};
    return Beats { *host.beats, host.bpm / (60.0 * world.engineRate) };
}

void hold (DeckWorld& world, DeckPlayer& deck, int reference, const std::optional<Beats>& theirs) noexcept
{
    auto& held = deck.sync.hold;
    const auto isHeld = theirs.has_value() && deck.sync.oneShot == 0 && runsFreely (deck);
    const auto ours = isHeld ? beatsOf (world, deck) : std::nullopt;
    if (!ours.has_value())
    {
        held = {};
        return;
    }
    held.factor = localFactor (ours->length, ours->usualLength, *theirs);

    const auto common = theirs->divided (divisionOfReference (deck));
    const auto distance = BeatPhase::wrapped (common.phase - ours->phase * divisionOfDeck (deck));
    const auto seconds = BeatPhase::wrapped (distance - held.distance) / (common.perFrame * world.engineRate);
    if (held.reference != reference || held.beatRatio != deck.sync.beatRatio
        || !(std::abs (seconds) <= greatestErrorSeconds))
        return holdFrom (deck, reference, distance);

    held.correcting = std::abs (seconds) > (held.correcting ? correctToSeconds : correctFromSeconds);
    if (held.correcting)
        held.factor *=
            1.0 + std::clamp (seconds / correctionSeconds, -greatestCorrection, greatestCorrection);
}

/** Holds nothing for a while, but does not forget the distance. */
void pauseHold (DeckPlayer& deck) noexcept
{
    deck.sync.hold.factor = 1.0;
    deck.sync.hold.correcting = false;
}

PX_AUDIO_THREAD void findBeatRatio (DeckWorld& world, DeckPlayer& deck) noexcept
{
    const auto next = TempoSync::followed (world, deck).beatRatio;
    if (next == 0.0 && deck.sync.beatRatio != 0.0)
        world.listeners.postMessage (tooFarApart, deck.index);
    deck.sync.beatRatio = next;
}

void followMaster (DeckWorld& world, DeckPlayer& deck) noexcept
{
    const auto* master = world.deck (world.settings.masterDeck);
    if (master == nullptr || master == &deck)
    {
        deck.sync.hold = {};
        return;
    }
    if ((deck.sync.resync != 0 || master->sync.resync != 0) && PhaseAlignment::alignToMaster (world, deck))
        return;
    if (runsFreely (deck) && runsFreely (*master) && (leavesBeat (deck) || leavesBeat (*master)))
        return pauseHold (deck);
    hold (world, deck, master->index, runsFreely (*master) ? beatsOf (world, *master) : std::nullopt);
}

void followHost (DeckWorld& world, DeckPlayer& deck, const SongPosition& host) noexcept
{
    if ((deck.sync.resync != 0 || host.hasRestarted) && PhaseAlignment::alignToHost (world, deck, host))
        return;
    if (runsFreely (deck) && leavesBeat (deck))
        return pauseHold (deck);
    hold (world, deck, PhaseHold::hostReference, beatsOf (world, host));
}
}

bool PhaseAlignment::alignToMaster (DeckWorld& world, DeckPlayer& deck) noexcept
{
    const auto* master = world.deck (world.settings.masterDeck);
    if (master == nullptr || !deck.isPlaying() || deck.isHeld() || !master->isPlaying()
        || master->heardPosition() > master->track.loadedFrames)
        return false;

    auto beats = beatsOf (world, *master);
    if (!beats.has_value())
        beats = heardBeatsOf (world, *master);
    const auto heard = master->heardPosition();
    const auto beat = master->grid().nearestEvenBeat (heard);
    if (!beats.has_value() || !beat.has_value())
        return false;
    const auto target = placeNear (deck, (heard - *beat) / master->beatFrames());
    if (!target.has_value())
        return false;
    jumpToPhase (world, deck, *beats, *target);
    holdFrom (deck, master->index, 0.0);
    return true;
}

bool PhaseAlignment::alignToHost (DeckWorld& world, DeckPlayer& deck, const SongPosition& host) noexcept
{
    if (!deck.isPlaying() || deck.isHeld() || !host.isPlaying || !(host.bpm > 0.0))
        return false;

    const auto phase = BeatPhase::wrapped (host.timeInSeconds * host.bpm / 60.0);
    const auto target = placeNear (deck, phase);
    if (!target.has_value())
        return false;
    jumpToPhase (world, deck, { phase, host.bpm / (60.0 * world.engineRate) }, *target);
    holdFrom (deck, PhaseHold::hostReference,
              host.beats.has_value() ? BeatPhase::wrapped (*host.beats - phase) : 0.0);
    return true;
}

void PhaseAlignment::run (DeckWorld& world, const SongPosition& host) noexcept
{
    for (auto& deck : world.decks)
    {
        findBeatRatio (world, *deck);
        if (world.setup (*deck).sync == 0 || deck->sync.beatRatio == 0.0 || deck->play.followsRecord != 0)
        {
            deck->sync.hold = {};
            continue;
        }
        if (world.isStandalone == 0)
            followHost (world, *deck, host);
        else
            followMaster (world, *deck);
    }
}
