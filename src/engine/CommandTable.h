#pragma once

#include "engine/CommandRow.h"

#include <array>

/** The vocabulary of the whole system: commands 1 to 465, and the meters above them that can only be read. Any thread;
    find(), isUnbuilt() and the rows allocate nothing. */
namespace CommandTable
{
inline constexpr int commandCount = 465;
inline constexpr int firstMeter = 1001, meterCount = 6;

/** One command or meter. */
struct Command
{
    const CommandRow* row = nullptr;
    int deck = 0, which = 0;

    explicit operator bool() const noexcept { return row != nullptr; }
    const CommandRow* operator->() const noexcept { return row; }
};

/** All numbers, in order. */
constexpr std::array<int, commandCount + meterCount> numbers() noexcept
{
    std::array<int, commandCount + meterCount> all {};
    for (int i = 0; i < commandCount + meterCount; ++i)
        all[static_cast<size_t> (i)] = i < commandCount ? i + 1 : firstMeter + i - commandCount;
    return all;
}

/** The command of a number. @returns false for a number without one */
Command find (int number) noexcept;

/** The command's name as hosts and mapping dialogs show it; empty for a number without one. */
std::string name (int number);

/** The command's constant in scripts; empty for a number without one. */
std::string constant (int number);

/** The number of a constant. @returns 0 if there is none of that name */
int numberOf (std::string_view constant);

/** The same for a deck. @param constant   one that ends in an underscore gets the deck's letter
    @param deck   0 to 3; any for a constant without a deck */
int numberOf (std::string_view constant, int deck);

/** True for a command whose part of the system does not exist yet: its write does nothing. */
bool isUnbuilt (int number) noexcept;
}
