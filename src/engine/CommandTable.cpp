#include "engine/CommandTable.h"

#include "engine/commands/EffectCommands.h"
#include "engine/commands/LoopGridCommands.h"
#include "engine/commands/MixerCommands.h"
#include "engine/commands/TransportCommands.h"
#include "engine/commands/UnbuiltCommands.h"

#include <span>
#include <unordered_map>

namespace CommandTable
{
namespace
{
constexpr std::array<std::span<const CommandFamily>, 5> parts { transportFamilies, loopGridFamilies,
                                                                mixerFamilies, effectFamilies,
                                                                unbuiltFamilies };

struct Table
{
    std::array<Command, commandCount + 1> entries {};
    bool complete = true;
};

constexpr Table makeTable()
{
    Table made;
    int placed = 0;
    for (const auto part : parts)
        for (const auto& family : part)
            for (int deck = 0; deck < family.deckCount; ++deck)
                for (int which = 0; which < family.whichCount; ++which)
                {
                    const auto number = family.first + which * family.whichStride + deck * family.deckStride;
                    if (number < 1 || number > commandCount
                        || made.entries[static_cast<size_t> (number)].family != nullptr)
                        made.complete = false;
                    else
                        made.entries[static_cast<size_t> (number)] = { &family, deck, which };
                    ++placed;
                }
    made.complete = made.complete && placed == commandCount;
    return made;
}

constexpr auto table = makeTable();
static_assert (table.complete, "the families leave a number out, or claim one twice");

std::string fillIn (const char* pattern, const Command& command)
{
    std::string text (pattern);
    const auto replace = [&text] (std::string_view placeholder, const std::string& value)
    {
        if (const auto at = text.find (placeholder); at != std::string::npos)
            text.replace (at, placeholder.size(), value);
    };
    replace ("{d}", std::string (1, static_cast<char> ('A' + command.deck)));
    replace ("{n}", std::to_string (command.which + 1));
    return text;
}
}

Command find (int number) noexcept
{
    if (number < 1 || number > commandCount)
        return {};
    return table.entries[static_cast<size_t> (number)];
}

std::string name (int number)
{
    const auto command = find (number);
    return command.family != nullptr ? fillIn (command.family->name, command) : std::string();
}

std::string constant (int number)
{
    const auto command = find (number);
    return command.family != nullptr ? fillIn (command.family->constant, command) : std::string();
}

int numberOf (std::string_view wanted)
{
    static const auto numbers = []
    {
        std::unordered_map<std::string, int> all;
        for (int number = 1; number <= commandCount; ++number)
            all.emplace (constant (number), number);
        return all;
    }();
    const auto found = numbers.find (std::string (wanted));
    return found != numbers.end() ? found->second : 0;
}

bool isUnbuilt (int number) noexcept
{
    const auto command = find (number);
    return command.family != nullptr && command.family->write == nullptr;
}
}
