#pragma once

#include <string>
#include <string_view>

class CPlatterdex;

/** The way a command takes a value. */
enum class CommandKind
{
    trigger,  ///< fires when the value is above 0
    state,    ///< press (above 0) and release both act
    value,    ///< the value is taken as given
    relative, ///< a step: +1 for 64 or more, else -1
    meter     ///< can only be read
};

/** The way from a controller's message to a command's value, and to its line in a script. */
enum class MappingShape
{
    trigger,
    held,
    continuous,
    pitch,
    resetToCentre,
    stepped,
    jog,
    seek
};

/** The sense of a reading, compared with that of a write. */
enum class CommandPolarity
{
    straight,
    turned ///< written from the top down, read from the bottom up
};

/** The lamp, ring or meter of a controller that shows a command. */
enum class CommandFeedback
{
    none,
    lamp,  ///< lit while the command reads above 0
    level, ///< a ring or a motor fader at the reading
    meter
};

/** The arguments of a command's write. */
struct CommandCall
{
    /** The writes of a relative command, as a controller sends them. */
    static constexpr float stepUp = 127.0f, stepDown = 0.0f, leastStepUp = 64.0f;

    int deck = 0;  ///< of the row's decks, groups or slots; 0 where there is but one
    int which = 0; ///< of the row's numbered members, from 0
    float value = 0.0f;
    float arg1 = 1.0f, arg2 = 1.0f;

    bool isPressed() const noexcept { return value > 0.0f; }
    int step() const noexcept { return value >= leastStepUp ? 1 : -1; }
};

using CommandWrite = void (*) (CPlatterdex&, const CommandCall&);
using CommandRead = double (*) (CPlatterdex&, int deck, int which);
using CommandText = std::string (*) (CPlatterdex&, int deck, int which);

/** The numbers of a row's commands: first + which * stride + deck * deckStride. */
struct CommandNumbers
{
    int first = 0;
    int count = 1, stride = 1; ///< of the numbered members
    int decks = 1, deckStride = 1;
};

/** Four numbers in a row, decks A to D. */
constexpr CommandNumbers perDeck (int first) noexcept
{
    return { .first = first, .decks = 4 };
}

/** The span of a command's readings, and of a value's writes. */
struct CommandRange
{
    double lowest = 0.0, highest = 1.0;
    double step = 0.0; ///< 0 where every value between is possible
};

/** All there is to say of the commands that differ only in their deck (group, slot) and number. In name and constant {d}
    stands for the deck's letter and {n} for the number from 1. */
struct CommandRow
{
    CommandNumbers numbers;
    std::string_view name;
    std::string_view constant; ///< in scripts and sets
    CommandKind kind = CommandKind::trigger;
    MappingShape shape = MappingShape::trigger;

    /** Null while the command's part of the system does not exist. */
    CommandWrite write = nullptr;

    /** Null where there is nothing to read: the command reads `absent`. */
    CommandRead read = nullptr;

    /** A text to show in place of the reading with two decimals; null or empty for none. */
    CommandText text = nullptr;

    CommandRange range {};
    double rest = 0.0;   ///< the control's place when no hand has moved it, as a write gives it
    double absent = 0.0; ///< the reading without a deck
    CommandPolarity polarity = CommandPolarity::straight;
    CommandFeedback feedback = CommandFeedback::none;
    std::string_view writes {};   ///< the meaning of a write, in words
    std::string_view reads = "0"; ///< of a read
};
