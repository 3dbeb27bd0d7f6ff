#pragma once

#include "midi/ports/BlockingRing.h"

#include <cstdint>

/** A message of three bytes in one word. */
namespace MidiWord
{
constexpr uint32_t pack (int status, int data, int value) noexcept
{
    return (static_cast<uint32_t> (status) & 0xffu) | (static_cast<uint32_t> (data) & 0xffu) << 8
           | (static_cast<uint32_t> (value) & 0xffu) << 16;
}

constexpr int status (uint32_t word) noexcept
{
    return static_cast<int> (word & 0xffu);
}
constexpr int data (uint32_t word) noexcept
{
    return static_cast<int> (word >> 8 & 0xffu);
}
constexpr int value (uint32_t word) noexcept
{
    return static_cast<int> (word >> 16 & 0xffu);
}

/** Makes a note off a note on of value 0, so that no consumer has to know both. */
constexpr uint32_t withoutNoteOff (uint32_t word) noexcept
{
    return (word & 0xf0u) == 0x80u ? (word & 0x00ff0fu) | 0x90u : word;
}
}

/** The messages between the ports and InMidiThread. A port that finds it full waits: nothing is lost. */
using MidiMessageQueue = BlockingRing<uint32_t, 512>;
