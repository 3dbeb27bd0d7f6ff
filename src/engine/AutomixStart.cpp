#include "deck/sync/MasterDeck.h"
#include "engine/Automix.h"
#include "mixer/AutoCrossfader.h"

#include <array>

namespace
{
enum Holding
{
    empty,
    loaded,
    playing
};

/** The beginning of automix on two decks, done in the order of the fields. */
struct Beginning
{
    Holding a, b;
    struct Deck
    {
        bool stops, rewinds, starts, asks;
        bool rewindsAtEnd = false;
    } onA, onB;
    int onAir;
    int8_t fade;
};

constexpr auto toLeft = AutoCrossfader::toLeft, toRight = AutoCrossfader::toRight,
               idle = AutoCrossfader::idle;

// clang-format off
constexpr std::array beginnings {
    //                             A: stops, rewinds, starts, asks, rewinds at end      B
    Beginning { playing, playing,  { false, false, false, false, true },   { true,  true,  false, false },       0, toLeft },
    Beginning { playing, loaded,   { false, false, false, false, true },   { false, true,  false, false },       0, toLeft },
    Beginning { playing, empty,    { false, false, false, false, true },   { false, false, false, true },        0, toLeft },
    Beginning { empty,   loaded,   { false, false, false, true },          { false, true,  true,  false },       1, toRight },
    Beginning { empty,   empty,    { false, false, true,  true },          { true,  false, false, true },        0, idle },
    Beginning { loaded,  loaded,   { false, true,  true,  false },         { false, true,  false, false },       0, toLeft },
    Beginning { loaded,  empty,    { false, true,  true,  false },         { false, false, false, true },        0, toLeft },
    Beginning { loaded,  playing,  { true,  true,  false, false },         { false, false, false, false, true }, 1, toRight },
    Beginning { empty,   playing,  { false, false, false, true },          { false, false, false, false, true }, 1, toRight },
};
// clang-format on

Holding holdingOf (const DeckPlayer& deck) noexcept
{
    return deck.play.on != 0 ? playing : deck.isEmpty() ? empty : loaded;
}

void begin (DeckWorld& world, DeckPlayer& deck, const Beginning::Deck& what)
{
    if (what.stops)
        deck.play.on = deck.play.cueHold = 0;
    if (what.rewinds || (what.rewindsAtEnd && deck.isAtEnd()))
    {
        deck.jumpTo (0.0);
        if (deck.play.on == 0)
            deck.emptyRings();
    }
    if (what.starts)
    {
        deck.play.on = 1;
        deck.sync.resync = 1;
    }
    // A deck that plays with nothing loaded is as empty as one that stands still.
    if (what.asks || (what.stops && deck.isEmpty()))
        deck.play.loadNext = 1;
    if (what.stops || what.starts)
        MasterDeck::choose (world, deck);
}
}

void Automix::start()
{
    const CallbackLock lock (world.callbackLock, "startAutomix");
    if (isOn())
        return;
    const auto a = holdingOf (deck (0)), b = holdingOf (deck (1));
    const auto* row = std::find_if (beginnings.begin(), beginnings.end(),
                                    [&] (const Beginning& each) { return each.a == a && each.b == b; });
    begin (world, deck (0), row->onA);
    begin (world, deck (1), row->onB);
    automixDeck = row->onAir;
    world.settings.autoFadeState = row->fade;
    if (row->fade == idle)
        world.settings.crossfader = 0.0;
    world.settings.automixOn = 1;
}

void Automix::stop()
{
    const CallbackLock lock (world.callbackLock, "stopAutomix");
    if (!isOn())
        return;
    world.settings.automixOn = 0;
    for (int d : { 0, 1 })
        deck (d).play.loadNext = 0;
}
