#include "engine/Automix.h"

#include "deck/sync/MasterDeck.h"
#include "mixer/AutoCrossfader.h"

#include <algorithm>
#include <cmath>

namespace
{
/** A fade from a deck that has nothing more to play takes this long at most. */
constexpr double emptyFadeSeconds = 0.5;

/** A deck that got no track asks again. */
constexpr double askAgainMs = 1000.0;

bool isLoading (const DeckPlayer& deck) noexcept
{
    return deck.isLoading != 0;
}

/** Whole seconds of music, of a playing deck those until it ends. */
double wholeSecondsLeft (const DeckPlayer& deck) noexcept
{
    const auto frames = deck.track.loadedFrames - deck.heardPosition();
    const auto speed = deck.track.sampleRate
                       * (deck.play.on != 0 && deck.tempo.factor > 0.0 ? deck.tempo.factor.get() : 1.0);
    return std::floor (std::max (0.0, frames / speed));
}

int8_t fadeTowards (int deck) noexcept
{
    return deck == 0 ? AutoCrossfader::toLeft : AutoCrossfader::toRight;
}
}

void Automix::moveFade (double milliseconds) noexcept
{
    auto& settings = world.settings;
    const auto leavesRight = settings.autoFadeState == AutoCrossfader::toLeft;
    auto& left = deck (leavesRight ? 1 : 0);
    auto& entered = deck (leavesRight ? 0 : 1);

    const auto hurries = isOn() && left.isPlayedOut() && entered.play.on != 0;
    const auto factor = hurries ? std::max (1.0, settings.automixFadeSeconds / emptyFadeSeconds) : 1.0;
    if (AutoCrossfader::advance (settings, milliseconds * factor) == AutoCrossfader::idle || !isOn()
        || left.play.on == 0)
        return;
    left.play.on = 0;
    left.play.cueHold = 0;
    left.play.loadNext = 1;
    settings.masterDeck = static_cast<int8_t> (entered.index);
}

void Automix::swapBass() noexcept
{
    if (world.settings.automixBassSwap == 0)
        return;
    const auto ofRight = world.settings.crossfader * 0.5;
    smartKnobs.moveBeside (0, ChannelParameter::eqLow, 0.5 - ofRight);
    smartKnobs.moveBeside (1, ChannelParameter::eqLow, ofRight);
}

void Automix::setSync() noexcept
{
    const auto wanted = static_cast<int8_t> (world.settings.automixSync != 0);
    for (int d : { 0, 1 })
    {
        world.setup (deck (d)).sync = wanted;
        if (wanted != 0)
            deck (d).tempo.keyLock = 1;
    }

    // A leader that stands still, on whatever deck, leads nobody.
    const auto* master = world.deck (world.settings.masterDeck);
    if (wanted != 0 && master != nullptr && master->play.on == 0 && deck (automixDeck).play.on != 0)
        world.settings.masterDeck = static_cast<int8_t> (automixDeck);
}

void Automix::keepOnAir() noexcept
{
    auto& onAir = deck (automixDeck);
    auto& other = deck (1 - automixDeck);
    if (onAir.play.on == 0 && !onAir.isPlayedOut())
        putOnAir (onAir);
    else if (onAir.isEmpty() && !isLoading (onAir) && !other.isPlayedOut())
        putOnAir (other);
}

void Automix::putOnAir (DeckPlayer& next) noexcept
{
    next.play.on = 1;
    next.play.cueHold = 0;
    if (world.settings.automixSync != 0)
        next.sync.resync = SyncState::besideGrid;
    world.settings.autoFadeState = fadeTowards (next.index);
    automixDeck = next.index;
    MasterDeck::choose (world, next);
}

void Automix::askForTracks (double milliseconds) noexcept
{
    for (int d : { 0, 1 })
    {
        auto& each = deck (d);
        auto& waited = sinceAsked[static_cast<size_t> (d)];
        waited += milliseconds;
        if (isLoading (each) || each.isPlaying())
            continue;
        const auto wants = each.isEmpty() || (each.isAtEnd() && d != automixDeck);
        if (each.play.loadNext == 0 && !(wants && waited >= askAgainMs))
            continue;
        each.play.loadNext = 0;
        waited = 0.0;
        world.requests.ask (EngineRequest::loadNextTrack, d);
    }
}

void Automix::advance (double milliseconds) noexcept
{
    moveFade (milliseconds);
    swapBass();
    if (!isOn())
        return;
    setSync();
    keepOnAir();
    askForTracks (milliseconds);
}

void Automix::handOverNearEnd() noexcept
{
    if (!isOn())
        return;
    const auto& onAir = deck (automixDeck);
    auto& other = deck (1 - automixDeck);
    const auto fade = world.settings.automixFadeSeconds.get();
    if (onAir.isEmpty() || isLoading (onAir) || other.isPlayedOut() || fade < wholeSecondsLeft (onAir))
        return;

    // A track that still loads may be a longer one, and its tempo isn't known yet.
    const auto waits = isLoading (other)
                       && (world.settings.automixSync != 0 || wholeSecondsLeft (other) <= fade)
                       && !onAir.isPlayedOut();
    if (waits)
        return;
    if (wholeSecondsLeft (other) > fade)
        putOnAir (other);
    else if (other.play.on != 0)
        return;
    else if (other.heardPosition() != 0.0)
        other.jumpTo (0.0);
    else
        putOnAir (other);
}
