#include "offline/set/SetScript.h"

#include "offline/set/SetActions.h"

#include <juce_core/juce_core.h>

#include <algorithm>

namespace
{
constexpr std::string_view byteOrderMark = "\xef\xbb\xbf";

/** "load, sample or end." */
std::string actionNames()
{
    std::string text;
    for (const auto& action : SetAction::all())
        text += (text.empty()                          ? ""
                 : &action == &SetAction::all().back() ? " or "
                                                       : ", ")
                + std::string (action.name);
    return text + ".";
}

SetScript::Event readEvent (SetLine& line, int lineNumber)
{
    SetScript::Event event;
    event.line = lineNumber;
    event.seconds = line.number ("The time at the start of the line");
    if (event.seconds < 0.0)
        line.fail ("A time can't be negative.");
    else if (event.seconds > SetScript::latestSeconds)
        line.fail ("A time can't be later than 1000000 seconds.");

    const auto word = line.word();
    const auto action = std::ranges::find (SetAction::all(), word, &SetAction::name);
    if (action != SetAction::all().end())
        event.action = action->read (line);
    else if (word.empty())
        line.fail ("After the time an action is missing: " + actionNames());
    else
        line.fail ("There is no action " + SetLine::quoted (word) + ": " + actionNames());
    line.expectEnd();
    return event;
}

/** Names the fault of a line whose bytes are no text; null if there is none. */
const char* faultOfText (std::string_view line)
{
    if (!juce::CharPointer_UTF8::isValidString (line.data(), static_cast<int> (line.size())))
        return "The line is not UTF-8 text.";
    const auto isControl = [] (char c) { return (c >= 0 && c < ' ' && c != '\t') || c == 0x7f; };
    return std::any_of (line.begin(), line.end(), isControl) ? "The line holds control characters." : nullptr;
}
}

bool SetScript::hasHost() const noexcept
{
    return std::any_of (events.begin(), events.end(),
                        [] (const Event& event) { return std::holds_alternative<Host> (event.action); });
}

bool SetScript::hasPlugins() const noexcept
{
    return std::any_of (events.begin(), events.end(),
                        [] (const Event& event) { return std::holds_alternative<Plugin> (event.action); });
}

bool SetScript::hasMidi() const noexcept
{
    return std::any_of (events.begin(), events.end(),
                        [] (const Event& event)
                        {
                            return std::holds_alternative<Midi> (event.action)
                                   || std::holds_alternative<PrintMidi> (event.action)
                                   || std::holds_alternative<Script> (event.action);
                        });
}

std::variant<SetScript, SetScriptError> parseSetScript (std::string_view text)
{
    SetScript script;
    if (text.starts_with (byteOrderMark))
        text.remove_prefix (byteOrderMark.size());

    bool hasEnded = false;
    for (int number = 1; !text.empty(); ++number)
    {
        auto content = text.substr (0, text.find ('\n'));
        text.remove_prefix (std::min (text.size(), content.size() + 1));
        if (content.ends_with ('\r'))
            content.remove_suffix (1);
        if (const auto* fault = faultOfText (content))
            return SetScriptError { number, fault };

        SetLine line (content);
        if (line.isAtEnd())
            continue;
        auto event = readEvent (line, number);
        if (line.error().empty() && hasEnded)
            line.fail ("Nothing may follow the end of the set.");
        if (line.error().empty() && !script.events.empty() && event.seconds < script.events.back().seconds)
            line.fail ("The time goes back behind that of line " + std::to_string (script.events.back().line)
                       + ".");
        if (!line.error().empty())
            return SetScriptError { number, line.error() };
        hasEnded = std::holds_alternative<SetScript::End> (event.action);
        script.events.push_back (std::move (event));
    }
    return script;
}
