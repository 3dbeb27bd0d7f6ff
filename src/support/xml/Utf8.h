#pragma once

#include <cstddef>

/** A character of UTF-8 and the bytes it takes. */
struct Utf8Character
{
    char32_t character;
    size_t length;
};

/** Bytes that can belong to one character. */
inline constexpr size_t maxUtf8Bytes = 4;

/** Reads the character at the start of some bytes, of which there must be one. Only the shortest form of a character
    counts, no halves of pairs, nothing beyond the last plane: a byte that begins no such character is taken as Latin-1,
    so that nothing is lost. */
constexpr Utf8Character utf8At (const unsigned char* bytes, size_t available)
{
    const auto lead = bytes[0];
    const size_t length = lead < 0x80   ? 1
                          : lead < 0xc2 ? 0
                          : lead < 0xe0 ? 2
                          : lead < 0xf0 ? 3
                          : lead < 0xf5 ? 4
                                        : 0;
    if (length < 2 || available < length)
        return { lead, 1 };

    auto character = static_cast<char32_t> (lead & (0x7fu >> length));
    for (size_t i = 1; i < length; ++i)
    {
        if ((bytes[i] & 0xc0) != 0x80)
            return { lead, 1 };
        character = character << 6 | (bytes[i] & 0x3f);
    }
    constexpr char32_t least[] { 0, 0, 0x80, 0x800, 0x10000 };
    const auto isSurrogate = character >= 0xd800 && character < 0xe000;
    if (character < least[length] || character > 0x10ffff || isSurrogate)
        return { lead, 1 };
    return { character, length };
}
