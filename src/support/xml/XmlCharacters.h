#pragma once

#include <string>

/** The characters of XML's grammar, and its entities. */
namespace XmlCharacters
{
/** Longest entity that is recognised, with its "&". */
inline constexpr size_t maxEntityBytes = 16;

/** Adds a character, which must not be a surrogate or beyond the last plane, as UTF-8. */
void append (std::string&, char32_t);

/** The text that an entity such as "&amp;" or "&#x41;" stands for, in UTF-8; itself if it is unknown. A number that is no character
    gives the replacement character. */
std::string resolveEntity (const std::string& entity);

/** A text as it may stand in an attribute or between tags: & < > " ' and control characters as entities. */
std::string escape (const std::string&);

constexpr bool isSpace (char32_t c)
{
    return c == ' ' || c == '\t' || c == '\n' || c == '\r';
}

constexpr bool isAsciiLetter (char32_t c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

constexpr bool isDigit (char32_t c)
{
    return c >= '0' && c <= '9';
}

/** Generous: every character beyond ASCII may stand in a name. */
constexpr bool isNameStart (char32_t c)
{
    return isAsciiLetter (c) || c == '_' || c == ':' || (c >= 0x80 && c < 0x110000);
}

constexpr bool isNamePart (char32_t c)
{
    return isNameStart (c) || isDigit (c) || c == '-' || c == '.';
}

constexpr bool isEntityPart (char32_t c)
{
    return isAsciiLetter (c) || isDigit (c) || c == '#';
}
}
