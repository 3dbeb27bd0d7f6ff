#include "library/tags/PictureSize.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace
{
template <size_t count>
bool beginsWith (std::span<const uint8_t> bytes, const std::array<uint8_t, count>& magic)
{
    return bytes.size() >= count && std::equal (magic.begin(), magic.end(), bytes.begin());
}

uint64_t bigEndian (std::span<const uint8_t> bytes)
{
    uint64_t value = 0;
    for (const auto byte : bytes)
        value = value << 8 | byte;
    return value;
}

/** Of the first frame header among the segments. */
uint64_t jpegPixels (std::span<const uint8_t> bytes)
{
    for (size_t at = 2; at + 9 <= bytes.size() && bytes[at] == 0xff;)
    {
        const auto marker = bytes[at + 1];
        if (marker == 0xff)
        {
            ++at;
            continue;
        }
        const auto isTable = marker == 0xc4 || marker == 0xc8 || marker == 0xcc;
        if (marker >= 0xc0 && marker <= 0xcf && !isTable)
            return bigEndian (bytes.subspan (at + 5, 2)) * bigEndian (bytes.subspan (at + 7, 2));
        at += 2 + bigEndian (bytes.subspan (at + 2, 2));
    }
    return 0;
}
}

uint64_t statedPixels (std::span<const uint8_t> bytes)
{
    constexpr std::array<uint8_t, 4> png { 0x89, 'P', 'N', 'G' };
    constexpr std::array<uint8_t, 2> jpeg { 0xff, 0xd8 };
    constexpr std::array<uint8_t, 3> gif { 'G', 'I', 'F' };
    if (beginsWith (bytes, png) && bytes.size() >= 24)
        return bigEndian (bytes.subspan (16, 4)) * bigEndian (bytes.subspan (20, 4));
    if (beginsWith (bytes, jpeg))
        return jpegPixels (bytes);
    if (beginsWith (bytes, gif) && bytes.size() >= 10)
        return static_cast<uint64_t> (bytes[6] | bytes[7] << 8)
               * static_cast<uint64_t> (bytes[8] | bytes[9] << 8);
    return 0;
}
