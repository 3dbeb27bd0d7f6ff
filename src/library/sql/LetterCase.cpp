#include "library/sql/LetterCase.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <clocale>
#include <cstdint>
#include <cwctype>
#include <memory>
#include <vector>

namespace
{
/** The C library's own table of all scripts, which needs no installed language. */
locale_t allScripts()
{
    static const auto locale = newlocale (LC_CTYPE_MASK, "C.UTF-8", nullptr);
    return locale;
}

constexpr char32_t mappedCharacters = 0x10000;

/** A mapping of the first plane, which is looked up some million times in a sort. */
struct Mapping
{
    using Convert = wint_t (*) (wint_t, locale_t);

    explicit Mapping (Convert first, Convert second = nullptr) : table (mappedCharacters)
    {
        for (char32_t c = 0; c < mappedCharacters; ++c)
            table[c] = static_cast<uint16_t> (convert (first, second, c));
    }

    static char32_t convert (Convert first, Convert second, char32_t c)
    {
        if (allScripts() == nullptr)
            return c < 0x80 ? static_cast<char32_t> (first == towupper_l && second == nullptr
                                                         ? std::toupper (static_cast<int> (c))
                                                         : std::tolower (static_cast<int> (c)))
                            : c;
        const auto once = first (static_cast<wint_t> (c), allScripts());
        const auto result = static_cast<char32_t> (second == nullptr ? once : second (once, allScripts()));
        // A letter whose other case lies outside the first plane has none here.
        return result < mappedCharacters ? result : c;
    }

    char32_t operator() (char32_t c) const { return c < mappedCharacters ? table[c] : c; }

    std::vector<uint16_t> table;
};

struct Character
{
    char32_t value;
    size_t bytes; ///< 0 where they are not UTF-8
};

bool isContinuation (unsigned char byte)
{
    return (byte & 0xc0) == 0x80;
}

/** Decodes two and three bytes; four bytes have cases only in scripts that nobody tags music in, and stay. */
Character characterAt (std::string_view text, size_t at)
{
    const auto byte = [&] (size_t i) { return static_cast<unsigned char> (text[at + i]); };
    const auto left = text.size() - at;
    if (byte (0) >= 0xc2 && byte (0) < 0xe0 && left > 1 && isContinuation (byte (1)))
        return { static_cast<char32_t> ((byte (0) & 0x1f) << 6 | (byte (1) & 0x3f)), 2 };
    if (byte (0) >= 0xe0 && byte (0) < 0xf0 && left > 2 && isContinuation (byte (1))
        && isContinuation (byte (2)))
    {
        const auto value =
            static_cast<char32_t> ((byte (0) & 0x0f) << 12 | (byte (1) & 0x3f) << 6 | (byte (2) & 0x3f));
        if (value >= 0x800)
            return { value, 3 };
    }
    return { byte (0), 0 };
}

void append (std::string& text, char32_t c)
{
    if (c < 0x80)
        text += static_cast<char> (c);
    else if (c < 0x800)
    {
        text += static_cast<char> (0xc0 | (c >> 6));
        text += static_cast<char> (0x80 | (c & 0x3f));
    }
    else
    {
        text += static_cast<char> (0xe0 | (c >> 12));
        text += static_cast<char> (0x80 | ((c >> 6) & 0x3f));
        text += static_cast<char> (0x80 | (c & 0x3f));
    }
}

void convert (const Mapping& mapping, std::string_view text, std::string& result)
{
    result.clear();
    result.reserve (text.size());
    for (size_t i = 0; i < text.size();)
    {
        if (const auto byte = static_cast<unsigned char> (text[i]); byte < 0x80)
        {
            result += static_cast<char> (mapping.table[byte]);
            ++i;
            continue;
        }
        const auto [character, bytes] = characterAt (text, i);
        if (bytes == 0)
            result += text[i++];
        else
        {
            append (result, mapping (character));
            i += bytes;
        }
    }
}

const Mapping& foldMapping()
{
    static const Mapping mapping (towupper_l, towlower_l);
    return mapping;
}

/** The place behind the character at `at`. */
size_t behindCharacter (std::string_view text, size_t at)
{
    for (++at; at < text.size() && isContinuation (static_cast<unsigned char> (text[at])); ++at)
    {
    }
    return at;
}

bool isAscii (std::string_view text)
{
    unsigned char all = 0;
    for (const auto byte : text)
        all |= static_cast<unsigned char> (byte);
    return all < 0x80;
}

/** Looks for a text in lower case, as most of a search is: without a copy. Both are ASCII. */
bool containsAscii (std::string_view text, std::string_view lower)
{
    if (lower.empty())
        return true;
    const auto& table = foldMapping().table;
    const auto folded = [&] (size_t i) { return table[static_cast<unsigned char> (text[i])]; };
    const auto first = static_cast<unsigned char> (lower[0]);
    for (size_t i = 0; i + lower.size() <= text.size(); ++i)
    {
        if (folded (i) != first)
            continue;
        size_t same = 1;
        while (same < lower.size() && folded (i + same) == static_cast<unsigned char> (lower[same]))
            ++same;
        if (same == lower.size())
            return true;
    }
    return false;
}

/** Compares with one step back at a time, to the last "%". */
bool matchesWildcards (std::string_view pattern, std::string_view text)
{
    constexpr auto none = std::string_view::npos;
    size_t p = 0, t = 0, afterAny = none, anyFrom = 0;
    while (t < text.size())
    {
        if (p < pattern.size() && pattern[p] == '%')
        {
            afterAny = ++p;
            anyFrom = t;
        }
        else if (p < pattern.size() && pattern[p] == '_')
        {
            ++p;
            t = behindCharacter (text, t);
        }
        else if (p < pattern.size() && pattern[p] == text[t])
        {
            ++p;
            ++t;
        }
        else if (afterAny != none)
        {
            p = afterAny;
            t = ++anyFrom;
        }
        else
            return false;
    }
    while (p < pattern.size() && pattern[p] == '%')
        ++p;
    return p == pattern.size();
}
}

std::string LetterCase::upper (std::string_view text)
{
    static const Mapping mapping (towupper_l);
    std::string result;
    convert (mapping, text, result);
    return result;
}

std::string LetterCase::lower (std::string_view text)
{
    static const Mapping mapping (towlower_l);
    std::string result;
    convert (mapping, text, result);
    return result;
}

void LetterCase::fold (std::string_view text, std::string& folded)
{
    convert (foldMapping(), text, folded);
}

LetterCase::Pattern::Pattern (std::string_view like)
{
    fold (like, folded);
    isContained = folded.size() >= 2 && folded.front() == '%' && folded.back() == '%';
    if (isContained)
        literal = folded.substr (1, folded.size() - 2);
    isContained = isContained && literal.find_first_of ("%_") == std::string::npos;
    isPlain = isAscii (literal);
}

bool LetterCase::Pattern::matches (std::string_view text) const
{
    if (isAscii (text) && isContained && isPlain)
        return containsAscii (text, literal);
    thread_local std::string foldedText;
    fold (text, foldedText);
    return isContained ? foldedText.find (literal) != std::string::npos
                       : matchesWildcards (folded, foldedText);
}
