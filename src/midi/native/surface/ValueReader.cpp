#include "midi/native/surface/ValueReader.h"

#include <utility>

namespace
{
constexpr double top = 127.0;

/** One over the positions of 14 bits. */
constexpr double of14Bits = 6.103515625e-5;

/** The distance of a low half from its control; 0 for a form of one message. */
constexpr int lowHalfAt (Form form) noexcept
{
    switch (form)
    {
    case Form::fine16:
        return 16;
    case Form::fine32:
    case Form::cyclicLow32:
        return 32;
    case Form::cyclicLowBelow:
        return -1;
    default:
        return 0;
    }
}

/** Stretches both sides of a fader whose rest is not in the middle of 0 to 127, so that it rests at 0.5. */
double aroundCentre (int value, int centre) noexcept
{
    return value <= centre ? 0.5 * value / centre : 0.5 + 0.5 * (value - centre) / (top - centre);
}

int twosComplement (int value) noexcept
{
    return value < 64 ? value : value - 128;
}

/** The values of a device that counts from 64, at any speed that a hand reaches; others count from 0. */
bool isAround64 (int value) noexcept
{
    return value > 32 && value < 96;
}

int steps (Form form, int value) noexcept
{
    switch (form)
    {
    case Form::twosComplement:
        return twosComplement (value);
    case Form::twosComplementInverted:
        return -twosComplement (value);
    case Form::centred:
        return value - 64;
    case Form::sign:
        return value < 64 ? -1 : 1;
    case Form::eitherCentre:
        return isAround64 (value) ? value - 64 : twosComplement (value);
    case Form::behringer:
        return value == 64 ? -1 : isAround64 (value) ? value - 64 : -twosComplement (value);
    case Form::stepOn:
        return value > 0 ? 1 : 0;
    case Form::stepBack:
        return value > 0 ? -1 : 0;
    default:
        return 0;
    }
}

double position (Form form, int value) noexcept
{
    switch (form)
    {
    case Form::inverted:
        return 1.0 - value / top;
    case Form::centre64:
        return aroundCentre (value, 64);
    case Form::centre63:
        return aroundCentre (value, 63);
    case Form::centreInverted:
        return 1.0 - aroundCentre (value, 64);
    default:
        return value / top;
    }
}

ControlValue placed (int value, double where, bool isCoarse = false) noexcept
{
    return { .isPressed = value > 0, .isCoarse = isCoarse, .position = where };
}

ControlValue moved (double by) noexcept
{
    return { .isPressed = by != 0.0, .isRelative = true, .steps = by };
}
}

bool ValueReader::isOf (const Address& address, Form form, int status, int data) noexcept
{
    if (address.matches (status, data))
        return true;
    const auto low = lowHalfAt (form);
    return low != 0 && address.isSet() && status == address.status && data == address.data + low;
}

std::optional<double> ValueReader::turned (const Address& address, int now, int size) noexcept
{
    auto& last = lastPositions[static_cast<size_t> (address.channel() * 128 + address.data)];
    const auto before = std::exchange (last, static_cast<int16_t> (now));
    if (before == unknown)
        return {};
    const auto way = (now - before + size) % size;
    return way >= size / 2 ? way - size : way;
}

std::optional<ControlValue> ValueReader::read (const Address& address, Form form, int, int data,
                                               int value) noexcept
{
    if (form == Form::bend || form == Form::bendInverted)
    {
        const auto where = (value * 128 + data) * of14Bits;
        return placed (value, form == Form::bend ? where : 1.0 - where);
    }
    if (form == Form::cyclic7)
    {
        const auto by = turned (address, value, 128);
        return by ? std::optional (moved (*by)) : std::nullopt;
    }
    if (lowHalfAt (form) == 0)
        return isRelative (form) ? moved (steps (form, value)) : placed (value, position (form, value), true);

    if (data == address.data)
    {
        highHalf (address) = static_cast<uint8_t> (value);
        return {};
    }
    const auto whole = highHalf (address) * 128 + value;
    if (!isRelative (form))
        return placed (highHalf (address), whole * of14Bits);
    const auto by = turned (address, whole, 128 * 128);
    return by ? std::optional (moved (*by)) : std::nullopt;
}
