#include "support/music/KeyName.h"

namespace KeyName
{
namespace
{
std::string lettersOf (std::string_view text)
{
    std::string letters;
    for (const auto c : text)
        if (c != ' ')
            letters += c >= 'A' && c <= 'Z' ? static_cast<char> (c - 'A' + 'a') : c;
    return letters;
}

/** @param text   small letters without spaces */
std::optional<int> readWheel (std::string_view text)
{
    const auto digits = text.substr (0, text.find_first_not_of ("0123456789"));
    const auto mode = text.substr (digits.size());
    if (digits.empty() || digits.size() > 2 || (mode != "a" && mode != "b"))
        return {};
    auto hour = 0;
    for (const auto digit : digits)
        hour = 10 * hour + (digit - '0');
    const auto first = mode == "b" ? 0 : 12;
    for (auto key = first; key < first + 12; ++key)
        if (wheelHour (key) == hour)
            return key;
    return {};
}

std::optional<int> readLetters (std::string_view text)
{
    static constexpr int naturals[] { 9, 11, 0, 2, 4, 5, 7 }; // A to G
    if (text.empty() || text[0] < 'a' || text[0] > 'g')
        return {};
    auto tone = naturals[text[0] - 'a'];
    text.remove_prefix (1);
    if (!text.empty() && (text[0] == '#' || text[0] == 'b'))
    {
        tone += text[0] == '#' ? 1 : 11;
        text.remove_prefix (1);
    }
    const auto isMinor = text == "m" || text == "min" || text == "minor";
    if (!isMinor && !text.empty() && text != "maj" && text != "major")
        return {};
    return tone % 12 + (isMinor ? 12 : 0);
}
}

std::optional<int> read (std::string_view text)
{
    const auto letters = lettersOf (text);
    const auto wheel = readWheel (letters);
    return wheel ? wheel : readLetters (letters);
}

std::string sortText (std::string_view text)
{
    if (text.empty())
        return {};
    if (const auto key = read (text))
        return { '\1', static_cast<char> ('A' + 2 * wheelHour (*key) + (*key < 12 ? 1 : 0)) };
    return "\2" + std::string (text);
}
}
