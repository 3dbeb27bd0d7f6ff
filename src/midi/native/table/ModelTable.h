#pragma once

#include "midi/native/table/Address.h"
#include "midi/native/table/FunctionRows.h"

#include <span>

// The concepts of a controller's table, with which every model is written:
//
//   Control   a function of the surface and its address on each deck, the form of its values, the layer in which it acts
//   Lamp      a function that a light, ring or meter shows, its addresses, and the values that the device takes
//   Jog       the constants of the wheels
//   Message   bytes that wake a device up or put it to sleep
//   TextField a place of a display
//
// One engine (Surface) reads them; px_surface.h does the same for a table that is written out as a script.

/** The way in which a control sends its values. */
enum class Form : uint8_t
{
    press,          ///< above 0 pressed, 0 released
    absolute,       ///< 0 to 127
    inverted,       ///< 127 to 0
    centre64,       ///< 0 to 127 with the rest at 64
    centre63,       ///< the same at 63
    centreInverted, ///< 127 to 0 with the rest at 64
    fine16,         ///< 14 bits: the high half here, the low half 16 above, which comes second
    fine32,         ///< the same, 32 above
    bend,           ///< 14 bits of a pitch bend
    bendInverted,
    twosComplement,         ///< 1 to 63 on, 127 to 64 back
    twosComplementInverted, ///< the other way round
    centred,                ///< value - 64
    sign,                   ///< a step back below 64, else on
    eitherCentre, ///< 33 to 95 as centred, others as two's complement: the devices are said to do both
    behringer, ///< the same, but a device that counts from 0 turns the other way, and sends 64 for a step back
    stepOn,    ///< a message for each step
    stepBack,
    cyclic7,       ///< a counter of 7 bits that goes round
    cyclicLow32,   ///< a counter of 14 bits: the high half here, the low half 32 above, which comes second
    cyclicLowBelow ///< the same, the low half one below
};

/** True for a form whose values are steps. */
constexpr bool isRelative (Form form) noexcept
{
    return form >= Form::twosComplement;
}

/** The states of the surface in which a row holds. -1 is any. */
struct Layer
{
    int8_t shift = -1;
    int8_t deckMode = -1;    ///< the layer of the deck's pads
    int8_t surfaceMode = -1; ///< the layer of the whole surface

    constexpr bool overlaps (const Layer& other) const noexcept
    {
        const auto meets = [] (int a, int b) { return a < 0 || b < 0 || a == b; };
        return meets (shift, other.shift) && meets (deckMode, other.deckMode)
               && meets (surfaceMode, other.surfaceMode);
    }
};

inline constexpr Layer always {}, plain { .shift = 0 }, shifted { .shift = 1 };

constexpr Layer inDeckMode (int mode) noexcept
{
    return { .deckMode = static_cast<int8_t> (mode) };
}

constexpr Layer inSurfaceMode (int mode) noexcept
{
    return { .surfaceMode = static_cast<int8_t> (mode) };
}

constexpr Layer operator& (Layer a, Layer b) noexcept
{
    const auto both = [] (int8_t x, int8_t y) { return x < 0 ? y : x; };
    return { both (a.shift, b.shift), both (a.deckMode, b.deckMode), both (a.surfaceMode, b.surfaceMode) };
}

/** The deck that a row's address stands for. */
enum class Decks : uint8_t
{
    listed, ///< A to D in the order of the addresses
    left,   ///< the one that the left side of the surface plays: A until another is selected
    right,  ///< the right side: B
    chosen  ///< the one that a section without a side plays: A
};
inline constexpr int sideCount = 3;

struct Control
{
    Function function;
    Addresses at {};
    Form form = Form::press;
    Layer layer {};
    Decks decks = Decks::listed;
};

/** The values that a lamp takes. */
struct LampForm
{
    enum class Kind : uint8_t
    {
        light,    ///< off, on; blinks by `blink`, or by turns where that is 255
        blinking, ///< on while the function blinks: a second address that blinks by itself
        scale,    ///< off to on, the reading between; a reading of 0 too
        segment,  ///< on from a share of the reading on: `part` of `parts`
        pointer   ///< one of `parts` lights in a row, on where the reading stands: `part` of `parts`
    };

    Kind kind = Kind::light;
    uint8_t off = 0, on = 127, blink = byTurns;
    uint8_t part = 0, parts = 0;

    static constexpr uint8_t byTurns = 255;

    constexpr bool operator== (const LampForm&) const noexcept = default;
};

inline constexpr LampForm light {}, light100 { .on = 100 }, light1 { .on = 1 }, steady { .blink = 0 },
    ownBlink { .kind = LampForm::Kind::blinking }, threeStates { .on = 1, .blink = 2 },
    fullScale { .kind = LampForm::Kind::scale };

constexpr LampForm lightOf (int on, int off = 0) noexcept
{
    return { .off = static_cast<uint8_t> (off), .on = static_cast<uint8_t> (on) };
}

constexpr LampForm scale (int lowest, int highest) noexcept
{
    return { .kind = LampForm::Kind::scale,
             .off = static_cast<uint8_t> (lowest),
             .on = static_cast<uint8_t> (highest) };
}

constexpr LampForm segment (int part, int parts, int on = 127) noexcept
{
    return { .kind = LampForm::Kind::segment,
             .on = static_cast<uint8_t> (on),
             .part = static_cast<uint8_t> (part),
             .parts = static_cast<uint8_t> (parts) };
}

constexpr LampForm pointer (int part, int parts, int on = 127) noexcept
{
    auto form = segment (part, parts, on);
    form.kind = LampForm::Kind::pointer;
    return form;
}

struct Lamp
{
    Function function;
    Addresses at {};
    LampForm form {};
    Layer layer {};
    Decks decks = Decks::listed;
};

/** The constants of a model's wheels. */
struct Jog
{
    /** The measure of a turn. */
    enum class Law : uint8_t
    {
        steps, ///< the steps of the message
        of127, ///< steps / 127
        power  ///< of steps / 127; bends by 2 to the power of it, less 1
    };

    double bend = 0.005;  ///< of the tempo, for a turn of 1
    double scratch = 0.1; ///< speed, for a turn of 1
    Law law = Law::steps;
    double stepsPerUnit = 1.0; ///< steps of the device that count as one

    /** False where the wheel doesn't feel the hand: it scratches a deck that is stopped or in scratch mode, and the
        scratch ends by itself. */
    bool feelsHand = true;

    /** True if the hand scratches only while the deck's scratch mode is on. */
    bool touchNeedsScratchMode = false;
};

/** A message that is sent as it stands: three bytes, or a system exclusive one. */
struct Message
{
    std::array<uint8_t, 16> bytes {};
    uint8_t size = 0;
};

template <typename... Bytes>
constexpr Message message (Bytes... bytes) noexcept
{
    return { .bytes = { static_cast<uint8_t> (bytes)... }, .size = sizeof...(bytes) };
}

/** A place of a device's display. */
struct TextField
{
    enum class Text : uint8_t
    {
        title,     ///< of the chosen deck's track
        label,     ///< `words` as they stand
        effectName ///< " FX: " and the effect's number of slot 1 of the chosen deck
    };

    uint8_t number = 0;
    Text text = Text::label;
    std::string_view words {};
    Layer layer {};
};

/** A control whose function is not known, for those who learn it. */
struct NamedControl
{
    Address at;
    std::string_view name;
};

/** A model's table. */
struct Model
{
    int number = 0; ///< in the list of models
    std::span<const Control> controls {};
    std::span<const Lamp> lamps {};
    Jog jog {};
    std::span<const Message> wake {}, sleep {};
    bool clearsCache = false;             ///< paints all lamps anew when the model is selected
    bool forcesLamps = false;             ///< sends each lamp once then, whatever was sent before
    std::span<const uint8_t> textHead {}; ///< precedes the number of a text field
    std::span<const TextField> texts {};

    /** For a device that has to be told the layer of the whole surface: what is sent after a control has changed a state of the
        surface, by layer; the last one for all layers above. */
    std::span<const Message> layerMessages {};

    bool isDoubtful = false;    ///< the numbers come from a sister device, and nobody has tried them
    std::string_view remark {}; ///< for the model's page
};

/** True if no two controls can act on one message, and all their values fit their functions. */
consteval bool areSound (std::span<const Control> controls)
{
    for (size_t i = 0; i < controls.size(); ++i)
        for (const auto& address : controls[i].at)
            for (size_t j = i + 1; address.isSet() && j < controls.size(); ++j)
                for (const auto& other : controls[j].at)
                    if (other.matches (address.status, address.data)
                        && controls[i].layer.overlaps (controls[j].layer))
                        return false;
    return true;
}

/** True if no two lamps say different things of one address, and each has something to show. */
consteval bool areSound (std::span<const Lamp> lamps)
{
    for (size_t i = 0; i < lamps.size(); ++i)
    {
        if (rowOf (lamps[i].function.id).light == Light::none)
            return false;
        for (const auto& address : lamps[i].at)
            for (size_t j = i + 1; address.isSet() && j < lamps.size(); ++j)
                for (const auto& other : lamps[j].at)
                    if (other.matches (address.status, address.data)
                        && lamps[i].layer.overlaps (lamps[j].layer))
                        return false;
    }
    return true;
}
