#include "library/sql/StoredText.h"

#include <charconv>
#include <cmath>
#include <cstring>

namespace
{
/** A double in the fixed notation has up to 309 digits before the point. */
using NumberText = std::array<char, 400>;

juce::String stringOf (const char* begin, const char* end)
{
    // This constructor copies bytes; others decode them.
    return { juce::CharPointer_UTF8 (begin), juce::CharPointer_UTF8 (end) };
}

bool isAscii (const char* text, size_t length)
{
    unsigned char all = 0;
    for (size_t i = 0; i < length; ++i)
        all |= static_cast<unsigned char> (text[i]);
    return all < 0x80;
}

juce::String fromLatin1 (const char* text, size_t length)
{
    std::string utf8;
    utf8.reserve (2 * length);
    for (size_t i = 0; i < length; ++i)
    {
        const auto byte = static_cast<unsigned char> (text[i]);
        if (byte < 0x80)
            utf8 += static_cast<char> (byte);
        else
        {
            utf8 += static_cast<char> (0xc0 | (byte >> 6));
            utf8 += static_cast<char> (0x80 | (byte & 0x3f));
        }
    }
    return stringOf (utf8.data(), utf8.data() + utf8.size());
}
}

std::string StoredText::escaped (const juce::String& text)
{
    std::string result;
    const std::string_view bytes (text.toRawUTF8());
    result.reserve (bytes.size() + 2);
    for (const auto byte : bytes)
    {
        if (byte == '\'')
            result += byte;
        result += byte;
    }
    return result;
}

std::string StoredText::quoted (const juce::String& text)
{
    return "'" + escaped (text) + "'";
}

std::string StoredText::joined (std::span<const int32_t> numbers)
{
    std::string result;
    result.reserve (8 * numbers.size());
    std::array<char, 16> text;
    for (const auto number : numbers)
    {
        if (!result.empty())
            result += ',';
        result.append (text.data(), std::to_chars (text.data(), text.data() + text.size(), number).ptr);
    }
    return result;
}

std::string StoredText::integerOf (const juce::String& text)
{
    return std::to_string (text.getLargeIntValue());
}

std::string StoredText::ofReal (double value)
{
    NumberText text;
    if (!std::isfinite (value))
        return "0";
    return { text.data(), std::to_chars (text.data(), text.data() + text.size(), value).ptr };
}

juce::String StoredText::withTwoDecimals (double value)
{
    NumberText text;
    if (!std::isfinite (value))
        value = 0.0;
    return stringOf (
        text.data(),
        std::to_chars (text.data(), text.data() + text.size(), value, std::chars_format::fixed, 2).ptr);
}

juce::String StoredText::ofInteger (int64_t value)
{
    // Most numbers of most songs are 0: one shared text in place of a million small ones.
    static const juce::String zero ("0");
    if (value == 0)
        return zero;
    std::array<char, 24> text;
    return stringOf (text.data(), std::to_chars (text.data(), text.data() + text.size(), value).ptr);
}

juce::String StoredText::read (const char* stored)
{
    if (stored == nullptr || *stored == 0)
        return {};
    const auto length = std::strlen (stored);
    if (isAscii (stored, length) || juce::CharPointer_UTF8::isValidString (stored, static_cast<int> (length)))
        return stringOf (stored, stored + length);
    return fromLatin1 (stored, length);
}
