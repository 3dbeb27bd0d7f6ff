#pragma once

#include "support/Relaxed.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

/** The way from a control's message to a command's value, with the numbers that mapping files hold. */
enum class MidiControlType
{
    absolute,       ///< a fader or knob
    inverted,       ///< the same, mirrored
    encoder,        ///< values below 64 step down, others up
    encoderInverted ///< the other way round
};

/** Further ways, which only commands that follow a fader, and jog wheels, take up. Bits. */
enum class MidiControlFeature : uint8_t
{
    none = 0,
    fine = 1,     ///< 14 bits: controllers 0 to 31 with their low halves 32 above, or pitch bend
    takeover = 2, ///< the fader moves nothing until it has reached the command's value
    wheel = 4     ///< a jog wheel that does not feel the hand scratches a stopped deck
};

constexpr MidiControlFeature operator| (MidiControlFeature a, MidiControlFeature b) noexcept
{
    return static_cast<MidiControlFeature> (static_cast<uint8_t> (a) | static_cast<uint8_t> (b));
}

constexpr bool has (MidiControlFeature all, MidiControlFeature one) noexcept
{
    return (static_cast<uint8_t> (all) & static_cast<uint8_t> (one)) != 0;
}

/** The control of one command. */
struct MidiMappingRow
{
    int32_t status = 0;      ///< with the channel, 0 to 255; 0 is unassigned
    int32_t data = 0;        ///< note or controller, 0 to 255
    int32_t controlType = 0; ///< a MidiControlType
    int32_t spare = 0;       ///< always 0
    MidiControlFeature features = MidiControlFeature::none;

    bool isAssigned() const noexcept { return status != 0; }
    MidiControlType type() const noexcept { return static_cast<MidiControlType> (controlType); }
    bool operator== (const MidiMappingRow&) const noexcept = default;
};

/** The controls of all commands: rows 1 to 465 are the commands, row 0 is a reserved empty one. Any thread; a row is read and
    written in one piece. */
class MidiMapping
{
public:
    static constexpr int rowCount = 466;

    /** True for the rows of commands, 1 to 465. */
    static constexpr bool isCommand (int row) noexcept { return row > 0 && row < rowCount; }

    /** @returns an empty row for a number outside the table */
    MidiMappingRow row (int number) const noexcept;

    /** Limits the fields to their ranges. Numbers that are no command do nothing. */
    void setRow (int number, const MidiMappingRow&) noexcept;

    void clear() noexcept;

    /** The rows that a message of this status and data byte acts on, in order. @param visit   takes number and row */
    template <typename Visit>
    void forEachMatch (int status, int data, Visit&& visit) const
    {
        for (int number = 1; number < rowCount; ++number)
            if (const uint32_t word = words[static_cast<size_t> (number)]; isMatch (word, status, data))
                visit (number, unpack (word));
    }

    /** Rises with each change. */
    uint32_t revision() const noexcept { return changes; }

    /** True if the controller's lamps follow the commands that its buttons are mapped to. */
    Relaxed<bool> showsLamps { false };

private:
    static MidiMappingRow unpack (uint32_t word) noexcept;

    static constexpr int statusOf (uint32_t word) noexcept { return static_cast<int> (word & 0xffu); }
    static constexpr int dataOf (uint32_t word) noexcept { return static_cast<int> (word >> 8 & 0xffu); }

    static bool isMatch (uint32_t word, int status, int data) noexcept
    {
        if (statusOf (word) != status || status == 0)
            return false;
        return dataOf (word) == data || ((word >> 24 & 1u) != 0 && isLowHalf (status, dataOf (word), data));
    }

    /** True for the further messages of a control of 14 bits: the low half of a controller, pitch bend of any low byte. */
    static bool isLowHalf (int status, int own, int data) noexcept
    {
        const auto kind = status & 0xf0;
        return kind == 0xe0 || (kind == 0xb0 && own < 32 && data == own + 32);
    }

    /** Status in the lowest byte, data, control type, features. */
    std::array<Relaxed<uint32_t>, rowCount> words {};
    Relaxed<uint32_t> changes { 0 };
};

/** A control type as the editor offers it. */
struct MidiControlChoice
{
    const char* text;
    MidiControlType type;
    MidiControlFeature features;
};

/** The control types that a command can have: the four of all rows, and those that its shape takes up. */
std::vector<MidiControlChoice> controlChoices (int row);
