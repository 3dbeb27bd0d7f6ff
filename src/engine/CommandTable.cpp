#include "engine/CommandTable.h"

#include "engine/commands/AllRows.h"

#include <unordered_map>

namespace CommandTable
{
namespace
{
constexpr size_t notInTable = commandCount + meterCount;

/** The entry of a number: the commands, then the meters. */
constexpr size_t entryOf (int number) noexcept
{
    if (number >= 1 && number <= commandCount)
        return static_cast<size_t> (number - 1);
    if (number >= firstMeter && number < firstMeter + meterCount)
        return static_cast<size_t> (commandCount + number - firstMeter);
    return notInTable;
}

struct Table
{
    std::array<Command, commandCount + meterCount> entries {};
    bool complete = true;
};

constexpr Table makeTable()
{
    Table made;
    size_t placed = 0;
    for (const auto part : parts)
        for (const auto& row : part)
            for (int deck = 0; deck < row.numbers.decks; ++deck)
                for (int which = 0; which < row.numbers.count; ++which)
                {
                    const auto& n = row.numbers;
                    const auto entry = entryOf (n.first + which * n.stride + deck * n.deckStride);
                    if (entry == notInTable || made.entries[entry].row != nullptr)
                        made.complete = false;
                    else
                        made.entries[entry] = { &row, deck, which };
                    ++placed;
                }
    made.complete = made.complete && placed == made.entries.size();
    return made;
}

constexpr auto table = makeTable();
static_assert (table.complete, "the rows leave a number out, or claim one twice");

std::string fillIn (std::string_view pattern, const Command& command)
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
    const auto entry = entryOf (number);
    return entry != notInTable ? table.entries[entry] : Command {};
}

std::string name (int number)
{
    const auto command = find (number);
    return command ? fillIn (command->name, command) : std::string();
}

std::string constant (int number)
{
    const auto command = find (number);
    return command ? fillIn (command->constant, command) : std::string();
}

int numberOf (std::string_view wanted)
{
    static const auto byConstant = []
    {
        std::unordered_map<std::string, int> all;
        for (const int number : numbers())
            all.emplace (constant (number), number);
        return all;
    }();
    const auto found = byConstant.find (std::string (wanted));
    return found != byConstant.end() ? found->second : 0;
}

int numberOf (std::string_view wanted, int deck)
{
    std::string whole (wanted);
    if (whole.ends_with ('_'))
        whole += static_cast<char> ('A' + deck);
    return numberOf (whole);
}

bool isUnbuilt (int number) noexcept
{
    const auto command = find (number);
    return command && command->write == nullptr && command->kind != CommandKind::meter;
}
}
