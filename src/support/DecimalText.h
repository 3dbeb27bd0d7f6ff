#pragma once

#include <array>
#include <charconv>
#include <string>

/** A number with a fixed count of decimals and a point, whatever the locale of the process. Not for the audio thread. */
inline std::string decimalText (double value, int decimals)
{
    std::array<char, 400> text; // the longest double has 309 digits before its point
    const auto end =
        std::to_chars (text.data(), text.data() + text.size(), value, std::chars_format::fixed, decimals).ptr;
    return { text.data(), end };
}
