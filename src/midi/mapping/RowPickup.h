#pragma once

#include <optional>

/** The memory of one row between two messages: the halves of a 14-bit control, and the way of a fader to the value that it
    takes over. One thread. */
class RowPickup
{
public:
    /** Takes the high half of a 14-bit controller. Until a low half has ever come, 7 bits are all there is; afterwards the
        fader stands, until the low half follows, at the nearest edge of its new step, so that nothing jumps back.
        @param value   0 to 127. @returns the position, 0 to 1 */
    double takeHigh (int value) noexcept;

    /** Takes the low half, 0 to 127. @returns the position, 0 to 1 */
    double takeLow (int value) noexcept;

    /** True if a fader that now stands at a position moves the command: it stands at the command's value, has crossed it
        since its last move, or has moved it last.
        @param position   of the fader, 0 to 1
        @param current    the command's value on the fader's scale */
    bool takesOver (double position, double current) noexcept;

    /** Notes that the command now stands at this value, because of the fader. */
    void moved (double value) noexcept { written = value; }

private:
    int high = 0, low = 0;
    bool hasHigh = false, hasLow = false;
    std::optional<double> lastPosition, written;
};

/** The position of both bytes of a pitch bend, 0 to 1. */
constexpr double bendPosition (int low, int high) noexcept
{
    return (high * 128 + low) / 16383.0;
}
