#include "midi/native/surface/SurfaceLamps.h"

#include "engine/CommandTable.h"
#include "midi/control/MidiControl.h"
#include "midi/native/table/FunctionNumbers.h"

#include <cmath>

namespace
{
/** A lamp that blinks by turns changes every 8 ticks, 400 ms. */
constexpr uint32_t blinkShift = 3;

/** The pitch that counts as the centre, a step of a slider of 127. */
constexpr double centreWidth = 0.5 / 127.0;

/** The state of a function: dark at 0, lit above, or blinking. */
struct Shown
{
    double reading = 0.0;
    bool blinks = false;
};

Shown lit (bool isOn) noexcept
{
    return { .reading = isOn ? 1.0 : 0.0 };
}

/** A command's reading within its range, 0 to 1. */
Shown readingOf (CPlatterdex& engine, int number)
{
    const auto& range = CommandTable::find (number)->range;
    return { .reading = (engine.getParameter (number) - range.lowest) / (range.highest - range.lowest) };
}

Shown playing (const DeckPlayer& deck)
{
    return { .reading = deck.play.on != 0 ? 1.0 : 0.0, .blinks = Transport::isStoppedAtCue (deck) };
}

Shown syncing (CPlatterdex& engine, const DeckPlayer& deck, size_t d)
{
    const auto isOn = engine.settings.deckSetup[d].sync != 0;
    return { .reading = isOn ? 1.0 : 0.0, .blinks = isOn && deck.sync.oneShot != 0 };
}

/** @param side   the selected deck of the row's side, of functions that select it */
Shown shownBy (CPlatterdex& engine, const SurfaceState& state, const Lamp& lamp, int deck, size_t place)
{
    const auto& function = lamp.function;
    const auto d = static_cast<size_t> (deck);
    const auto& player = *engine.decks.deck (deck);
    const auto number = commandOf (function, deck);
    const auto whole = state.mode[SurfaceState::wholeSurface].get();
    const auto selected = state.deckAt (lamp.decks, place);
    switch (rowOf (function.id).light)
    {
    case Light::none:
        return {};
    case Light::reading:
        return readingOf (engine, number);
    case Light::full:
        return lit (engine.getParameter (number) > 0.5f);
    case Light::held:
        return lit (state.held[static_cast<size_t> (function.id)][d] != 0);
    case Light::play:
        return playing (player);
    case Light::sync:
        return syncing (engine, player, d);
    case Light::loop:
        return lit (player.loops.mode != noLoop
                    && (function.id != FunctionId::loopBeats
                        || static_cast<uint8_t> (player.loopSizes.loop.get()) == function.which));
    case Light::loaded:
        return lit (!player.isEmpty());
    case Light::centred:
        return lit (std::abs (player.tempo.pitch - 0.5) < centreWidth);
    case Light::reverse:
        return lit (player.play.reverse != 0);
    case Light::timecode:
        return lit (engine.timecodes[d].mode() != TimecodeDeck::Mode::internal);
    case Light::timecodeMode:
        return lit (engine.timecodes[d].mode() == TimecodeDeck::Mode::absolute);
    case Light::shift:
        return lit (state.isShifted (deck));
    case Light::scratchMode:
        return lit (state.scratchMode[d] != 0);
    case Light::searchMode:
        return lit (state.searchMode[d] != 0);
    case Light::deckMode:
        return lit (state.mode[d] == function.which);
    case Light::deckModeFlip:
        return lit (state.mode[d] != 0);
    case Light::surfaceMode:
        return lit (whole == function.which);
    case Light::surfaceModeFlip:
        return lit (whole != 0);
    case Light::selectDeck:
        return lit (selected == function.which);
    case Light::nextDeck:
        return lit (lamp.decks == Decks::chosen ? selected != 0 : selected >= 2);
    case Light::decksShown:
        return lit (engine.settings.editor[EditorPreference::fourDeckMode] != 0);
    }
    return {};
}

int valueOf (const LampForm& form, const Shown& shown, uint32_t tick) noexcept
{
    const auto share = juce::jlimit (0.0, 1.0, shown.reading);
    switch (form.kind)
    {
    case LampForm::Kind::blinking:
        return shown.blinks ? form.on : form.off;
    case LampForm::Kind::scale:
        return static_cast<int> (std::lround (form.off + share * (form.on - form.off)));
    case LampForm::Kind::segment:
        return share * form.parts >= form.part - 0.5 ? form.on : form.off;
    case LampForm::Kind::pointer:
        return std::lround (share * (form.parts - 1)) == form.part - 1 ? form.on : form.off;
    case LampForm::Kind::light:
        break;
    }
    if (!shown.blinks)
        return shown.reading > 0.0 ? form.on : form.off;
    if (form.blink != LampForm::byTurns)
        return form.blink;
    return (tick >> blinkShift & 1u) != 0 ? form.on : form.off;
}
}

void SurfaceLamps::state (MidiControl& control, const Model& model, const SurfaceState& state, uint32_t tick,
                          bool force)
{
    for (const auto& lamp : model.lamps)
        for (size_t place = 0; place < lamp.at.size(); ++place)
        {
            const auto& address = lamp.at[place];
            const auto deck = state.deckAt (lamp.decks, place);
            if (!address.isSet() || !state.isIn (lamp.layer, deck))
                continue;
            const auto shown = shownBy (control.engine, state, lamp, deck, place);
            control.sender.sendMidiShort (address.status, address.data, valueOf (lamp.form, shown, tick),
                                          force);
        }
}
