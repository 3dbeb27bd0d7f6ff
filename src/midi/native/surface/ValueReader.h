#pragma once

#include "midi/native/table/ModelTable.h"

#include <optional>

/** A control's message as a function takes it. */
struct ControlValue
{
    bool isPressed = false; ///< value above 0; a step is a press too
    bool isRelative = false;
    bool isCoarse = false; ///< a position of 7 bits
    double position = 0.0; ///< 0 to 1, of a control that has a place
    double steps = 0.0;    ///< signed, of one that turns without end
};

/** Reads the values of all forms, and joins those that come in two messages. One thread. */
class ValueReader
{
public:
    /** True for a message of this control, a low half included. */
    static bool isOf (const Address&, Form, int status, int data) noexcept;

    /** @returns nothing for a first half, and for a counter's first position */
    std::optional<ControlValue> read (const Address&, Form, int status, int data, int value) noexcept;

    void reset() noexcept { *this = {}; }

private:
    uint8_t& highHalf (const Address& address) noexcept
    {
        return highHalves[static_cast<size_t> (address.channel() * 128 + address.data)];
    }

    /** The difference to the counter's last position, the short way round. */
    std::optional<double> turned (const Address&, int position, int size) noexcept;

    static constexpr int16_t unknown = -1;

    std::array<uint8_t, 16 * 128> highHalves {};
    std::array<int16_t, 16 * 128> lastPositions = []
    {
        std::array<int16_t, 16 * 128> all {};
        all.fill (unknown);
        return all;
    }();
};
