#pragma once

#include <array>
#include <cstdint>

/** The first two bytes of a control's messages, or of its lamp's. Status 0 is none. */
struct Address
{
    uint8_t status = 0;
    uint8_t data = 0; ///< note or controller; 0 for pitch bend, whose second byte is part of the value

    constexpr bool isSet() const noexcept { return status != 0; }
    constexpr bool isBend() const noexcept { return (status & 0xf0) == 0xe0; }
    constexpr int channel() const noexcept { return status & 15; }

    /** True for a message of this control, but for the low halves of 14 bits. */
    constexpr bool matches (int otherStatus, int otherData) const noexcept
    {
        return isSet() && status == otherStatus && (isBend() || data == otherData);
    }

    constexpr bool operator== (const Address&) const noexcept = default;
};

/** The addresses of one function on decks A to D; of a function without a deck the first. */
using Addresses = std::array<Address, 4>;

/** Addresses as tables write them. Channels are 1 to 16. */
namespace midi
{
constexpr Address note (int number, int channel = 1) noexcept
{
    return { static_cast<uint8_t> (0x90 + channel - 1), static_cast<uint8_t> (number) };
}

constexpr Address cc (int number, int channel = 1) noexcept
{
    return { static_cast<uint8_t> (0xb0 + channel - 1), static_cast<uint8_t> (number) };
}

constexpr Address bend (int channel = 1) noexcept
{
    return { static_cast<uint8_t> (0xe0 + channel - 1), 0 };
}

inline constexpr Address none {};

/** The same number on four channels in a row, one for each deck. */
constexpr Addresses byChannel (Address first, int decks = 4) noexcept
{
    Addresses all {};
    for (int deck = 0; deck < decks; ++deck)
        all[static_cast<size_t> (deck)] = { static_cast<uint8_t> (first.status + deck), first.data };
    return all;
}
}
