#include "support/xml/XmlCharacters.h"

#include <array>
#include <charconv>
#include <string_view>
#include <utility>

namespace
{
constexpr std::array<std::pair<std::string_view, char>, 5> namedEntities {
    { { "&amp;", '&' }, { "&lt;", '<' }, { "&gt;", '>' }, { "&quot;", '"' }, { "&apos;", '\'' } }
};
}

void XmlCharacters::append (std::string& target, char32_t c)
{
    const auto add = [&] (char32_t byte) { target += static_cast<char> (static_cast<unsigned char> (byte)); };
    if (c < 0x80)
        return add (c);
    if (c < 0x800)
        add (0xc0 | c >> 6);
    else
    {
        if (c < 0x10000)
            add (0xe0 | c >> 12);
        else
        {
            add (0xf0 | c >> 18);
            add (0x80 | (c >> 12 & 0x3f));
        }
        add (0x80 | (c >> 6 & 0x3f));
    }
    add (0x80 | (c & 0x3f));
}

std::string XmlCharacters::resolveEntity (const std::string& entity)
{
    for (const auto& [name, character] : namedEntities)
        if (name == entity)
            return { character };
    if (entity.size() < 4 || entity[1] != '#')
        return entity;

    const auto isHex = entity[2] == 'x' || entity[2] == 'X';
    const auto* first = entity.data() + (isHex ? 3 : 2);
    const auto* last = entity.data() + entity.size() - 1;
    uint32_t number = 0;
    const auto [end, error] = std::from_chars (first, last, number, isHex ? 16 : 10);
    if (end != last || first == last)
        return entity;
    const auto isCharacter =
        error == std::errc {} && number > 0 && number < 0x110000 && !(number >= 0xd800 && number < 0xe000);
    std::string text;
    append (text, isCharacter ? number : 0xfffd);
    return text;
}

std::string XmlCharacters::escape (const std::string& text)
{
    std::string escaped;
    for (const auto c : text)
    {
        const auto* entity = static_cast<const std::pair<std::string_view, char>*> (nullptr);
        for (const auto& candidate : namedEntities)
            if (candidate.second == c)
                entity = &candidate;
        if (entity != nullptr)
            escaped += entity->first;
        else if (static_cast<unsigned char> (c) < 0x20)
            escaped += "&#" + std::to_string (static_cast<int> (c)) + ";";
        else
            escaped += c;
    }
    return escaped;
}
