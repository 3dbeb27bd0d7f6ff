#include "midi/native/table/FunctionNumbers.h"

#include "engine/commands/AllRows.h"

namespace
{
consteval std::array<const CommandRow*, functionCount> findRows()
{
    std::array<const CommandRow*, functionCount> found {};
    for (size_t i = 0; i < functionCount; ++i)
        for (const auto part : CommandTable::parts)
            for (const auto& row : part)
                if (row.constant == functionRows[i].constant)
                    found[i] = &row;
    return found;
}

constexpr auto rows = findRows();

consteval bool everyCommandExists()
{
    for (size_t i = 0; i < functionCount; ++i)
        if ((rows[i] == nullptr) != functionRows[i].constant.empty())
            return false;
    return true;
}
static_assert (everyCommandExists(), "a function names a command that is not in the table");
}

int commandOf (const Function& function, int deck) noexcept
{
    const auto* row = rows[static_cast<size_t> (function.id)];
    if (row == nullptr || function.which >= row->numbers.count)
        return 0;
    const auto& n = row->numbers;
    return n.first + function.which * n.stride + (deck < n.decks ? deck * n.deckStride : 0);
}
