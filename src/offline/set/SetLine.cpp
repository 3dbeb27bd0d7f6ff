#include "offline/set/SetLine.h"

#include "engine/CommandTable.h"
#include "support/Suggestion.h"

#include <juce_core/juce_core.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>

namespace
{
bool isBlank (char c) noexcept
{
    return c == ' ' || c == '\t';
}

bool isMeter (int number)
{
    const auto command = CommandTable::find (number);
    return command && command->kind == CommandKind::meter;
}
}

std::string SetLine::quoted (std::string_view text)
{
    constexpr size_t longest = 40;
    auto end = std::min (text.size(), longest);
    while (end < text.size() && end > 0 && (static_cast<unsigned char> (text[end]) & 0xc0u) == 0x80u)
        --end;
    return "\"" + std::string (text.substr (0, end)) + (end < text.size() ? "..." : "") + "\"";
}

std::optional<double> SetLine::toNumber (std::string_view word)
{
    if (word.starts_with ('+'))
        word.remove_prefix (1);
    double value = 0.0;
    const auto *begin = word.data(), *end = begin + word.size();
    const auto [stopped, error] = std::from_chars (begin, end, value);
    if (error != std::errc {} || stopped != end || !std::isfinite (value))
        return {};
    return value;
}

std::string_view SetLine::word()
{
    if (isAtEnd())
        return {};
    const auto end = std::find_if (rest.begin(), rest.end(), isBlank);
    const auto found = rest.substr (0, static_cast<size_t> (end - rest.begin()));
    rest.remove_prefix (found.size());
    skipBlanks();
    return found;
}

std::string_view SetLine::path (const std::string& whose)
{
    if (isAtEnd())
        return fail (whose + " needs the path of a file.");
    return rest.front() == '"' ? quotedText ("path") : barePath (whose);
}

std::string_view SetLine::name (const char* what)
{
    if (isAtEnd())
        return fail (std::string (what) + " is missing.");
    return rest.front() == '"' ? quotedText ("name") : word();
}

double SetLine::number (const char* what)
{
    const auto text = word();
    if (text.empty())
        return fail (std::string (what) + " is missing."), 0.0;
    if (const auto value = toNumber (text))
        return *value;
    return fail (std::string (what) + " is not a number: " + quoted (text) + "."), 0.0;
}

float SetLine::singleNumber (const char* what)
{
    const auto value = number (what);
    if (std::abs (value) > std::numeric_limits<float>::max())
        return fail (std::string (what) + " is too large."), 0.0f;
    return static_cast<float> (value);
}

std::optional<int> SetLine::onlyNumber()
{
    auto ahead = *this;
    const auto text = ahead.word();
    int number = 0;
    const auto *begin = text.data(), *end = begin + text.size();
    const auto [stopped, error] = std::from_chars (begin, end, number);
    if (text.empty() || error == std::errc::invalid_argument || stopped != end || !ahead.isAtEnd())
        return {};
    *this = ahead;
    if (error != std::errc {})
        fail (quoted (text) + " is too large a number for a preset.");
    return number;
}

int SetLine::byte (const std::string& what, int lowest, int highest)
{
    const auto text = word();
    if (text.empty())
        return fail (what + " is missing."), lowest;
    const auto isHex = text.starts_with ("0x");
    const auto digits = isHex ? text.substr (2) : text;
    int value = -1;
    const auto *begin = digits.data(), *end = begin + digits.size();
    const auto [stopped, error] = std::from_chars (begin, end, value, isHex ? 16 : 10);
    if (error != std::errc {} || stopped != end || value < lowest || value > highest)
        fail (what + " lies between " + std::to_string (lowest) + " and " + std::to_string (highest)
              + ", decimal or as 0x90; it is not " + quoted (text) + ".");
    return value;
}

int SetLine::deck (const std::string& whose)
{
    const auto name = word();
    if (name.empty())
        return fail (whose + " needs a deck, A to D."), 0;
    constexpr std::string_view decks = "ABCDabcd0123";
    const auto found = decks.find (name.front());
    if (name.size() != 1 || found == std::string_view::npos)
        return fail ("There is no deck " + quoted (name) + ", only A to D."), 0;
    return static_cast<int> (found % 4);
}

int SetLine::command (bool metersToo)
{
    const auto text = word();
    if (text.empty())
        return fail ("The command is missing."), 0;

    int number = 0;
    const auto *begin = text.data(), *end = begin + text.size();
    if (const auto [stopped, error] = std::from_chars (begin, end, number);
        error == std::errc {} && stopped == end)
    {
        if (!CommandTable::find (number) || (isMeter (number) && !metersToo))
            return fail ("There is no command of the number " + quoted (text) + "."), 0;
        return number;
    }
    number = CommandTable::numberOf (text);
    if (number == 0 || (isMeter (number) && !metersToo))
    {
        juce::StringArray constants;
        for (int each = 1; each <= CommandTable::commandCount; ++each)
            constants.add (CommandTable::constant (each));
        fail ("There is no command " + quoted (text) + "."
              + didYouMean (juce::String (std::string (text)), constants).toStdString());
    }
    return number;
}

void SetLine::expectEnd()
{
    if (!isAtEnd())
        fail ("There is more on the line than its action takes: " + quoted (rest) + ".");
}

std::string_view SetLine::fail (std::string sentence)
{
    if (failure.empty())
        failure = std::move (sentence);
    return {};
}

void SetLine::skipBlanks()
{
    while (!rest.empty() && isBlank (rest.front()))
        rest.remove_prefix (1);
}

std::string_view SetLine::quotedText (const std::string& what)
{
    const auto close = rest.find ('"', 1);
    if (close == std::string_view::npos)
        return fail ("The " + what + " has no closing quote.");
    const auto found = rest.substr (1, close - 1);
    rest.remove_prefix (close + 1);
    skipBlanks();
    return found.empty() ? fail ("The " + what + " is empty.") : found;
}

std::string_view SetLine::barePath (const std::string& whose)
{
    size_t end = 0;
    auto ahead = *this;
    while (!ahead.isAtEnd())
    {
        const auto next = ahead.word();
        if (next == "nowait" && ahead.isAtEnd())
            break;
        end = static_cast<size_t> (next.data() + next.size() - rest.data());
    }
    if (end == 0)
        return fail (whose + " needs the path of a file.");
    const auto found = rest.substr (0, end);
    rest.remove_prefix (end);
    skipBlanks();
    return found;
}
