#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

class CPlatterdex;

/** How a command takes a value. */
enum class CommandKind
{
    trigger, ///< fires when the value is above 0
    state,   ///< press (above 0) and release both act
    value,   ///< the value is taken as given
    relative ///< a step: +1 for 64 or more, else -1
};

/** How a message of a controller turns into a command's value, and how a script says so. */
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

/** What a command's write is given. */
struct CommandCall
{
    int deck = 0;  ///< of the family's decks, groups or slots; 0 where there is but one
    int which = 0; ///< of the family's numbered members, from 0
    float value = 0.0f;
    float arg1 = 1.0f, arg2 = 1.0f;

    bool isPressed() const noexcept { return value > 0.0f; }
    int step() const noexcept { return value >= 64.0f ? 1 : -1; }
};

using CommandWrite = void (*) (CPlatterdex&, const CommandCall&);
using CommandRead = double (*) (CPlatterdex&, int deck, int which);
using CommandText = std::string (*) (CPlatterdex&, int deck, int which);

/** Commands that differ only in their deck (group, slot) and number: one row of the table of commands.

    A member's command number is first + which * whichStride + deck * deckStride. In the patterns {d} stands for the
    deck's letter and {n} for the number from 1. */
struct CommandFamily
{
    int first;
    int whichCount, whichStride;
    int deckCount, deckStride;
    const char* name;
    const char* constant; ///< in scripts
    CommandKind kind;
    MappingShape shape;
    CommandWrite write;
    CommandRead read;
    double neutral; ///< what a read gives without a deck
    const char* writeMeaning;
    const char* readMeaning;
    CommandText text =
        nullptr; ///< what a display shows in place of the value with two decimals; may be empty
};

/** The vocabulary of the whole system: commands 1 to 465. */
namespace CommandTable
{
inline constexpr int commandCount = 465;

/** One command. */
struct Command
{
    const CommandFamily* family = nullptr;
    int deck = 0, which = 0;
};

/** The command of a number. @returns one without a family outside 1 to 465 */
Command find (int number) noexcept;

/** The command's name as hosts and mapping dialogs show it; empty outside 1 to 465. */
std::string name (int number);

/** The command's constant in scripts; empty outside 1 to 465. */
std::string constant (int number);

/** The number of a constant. @returns 0 if there is none of that name */
int numberOf (std::string_view constant);

/** True for a command whose part of the system does not exist yet: its write does nothing. */
bool isUnbuilt (int number) noexcept;
}
