#include "plugins/ipc/ScannerProtocol.h"

#include <charconv>

namespace
{
constexpr std::string_view processIdWord = "slaveprocessid ", scanWord = "scan ", trialWord = "trial ";

/** Takes a number off the front of a text. @returns nothing if there is none */
template <typename Number>
std::optional<Number> takeNumber (std::string_view& text)
{
    Number number {};
    const auto [end, fault] = std::from_chars (text.data(), text.data() + text.size(), number);
    if (fault != std::errc())
        return {};
    text.remove_prefix (static_cast<size_t> (end - text.data()));
    return number;
}

bool take (std::string_view& text, std::string_view word)
{
    if (!text.starts_with (word))
        return false;
    text.remove_prefix (word.size());
    return true;
}

std::string quoted (const std::string& text)
{
    std::string inside ("\"");
    inside += text;
    inside += '"';
    return inside;
}

/** Takes a text in quotes off the front, up to the last quote there is. */
std::optional<std::string> takeQuoted (std::string_view& text)
{
    const auto last = text.rfind ('"');
    if (!text.starts_with ('"') || last == 0)
        return {};
    std::string inside (text.substr (1, last - 1));
    text.remove_prefix (last + 1);
    return inside;
}
}

std::string ScannerProtocol::processIdMessage (int processId)
{
    return std::string (processIdWord) + std::to_string (processId);
}

std::optional<int> ScannerProtocol::processIdIn (std::string_view message)
{
    if (!take (message, processIdWord))
        return {};
    const auto number = takeNumber<int> (message);
    return number && *number > 0 && message.empty() ? number : std::nullopt;
}

std::string ScannerProtocol::messageOf (const ScanOrder& order)
{
    return std::string (scanWord) + quoted (order.path) + " " + std::to_string (order.width);
}

std::optional<ScannerProtocol::ScanOrder> ScannerProtocol::scanOrderIn (std::string_view message)
{
    if (!take (message, scanWord))
        return {};
    const auto path = takeQuoted (message);
    if (!path || path->empty() || !take (message, " "))
        return {};
    const auto width = takeNumber<int> (message);
    if (!width || !message.empty() || (*width != 32 && *width != 64))
        return {};
    return ScanOrder { *path, *width };
}

std::string ScannerProtocol::messageOf (const TrialOrder& order)
{
    return std::string (trialWord) + std::to_string (order.sampleRate) + " "
           + std::to_string (order.blockSize) + " " + quoted (order.stateFile) + "\n" + order.list;
}

std::optional<ScannerProtocol::TrialOrder> ScannerProtocol::trialOrderIn (std::string_view message)
{
    if (!take (message, trialWord))
        return {};
    const auto lineEnd = message.find ('\n');
    if (lineEnd == std::string_view::npos)
        return {};
    auto line = message.substr (0, lineEnd);
    const auto rate = takeNumber<double> (line);
    if (!rate || !(*rate > 0.0) || !take (line, " "))
        return {};
    const auto block = takeNumber<int> (line);
    if (!block || *block < 1 || !take (line, " "))
        return {};
    const auto state = takeQuoted (line);
    if (!state || !line.empty())
        return {};
    return TrialOrder { *rate, *block, std::string (message.substr (lineEnd + 1)), *state };
}
