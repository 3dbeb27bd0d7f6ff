#include "offline/SetScript.h"

#include "engine/CommandTable.h"
#include "instruments/presets/SmartKnobLibrary.h"
#include "instruments/slicegate/FactoryPresets.h"
#include "instruments/smartknob/SmartKnobs.h"
#include "settings/SettingNames.h"
#include "support/DecimalText.h"
#include "support/Suggestion.h"
#include "timecode/deckmode/TimecodeBrand.h"

#include <juce_core/juce_core.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>
#include <optional>

namespace
{
constexpr double slowestHost = 1.0, fastestHost = 1000.0;
constexpr const char* actionNames =
    "load, sample, set, setting, reverse, host, midi, script, browse, slicegate, "
    "smartknob, timecode, plugin, print or end.";
constexpr std::string_view byteOrderMark = "\xef\xbb\xbf";

bool isBlank (char c) noexcept
{
    return c == ' ' || c == '\t';
}

/** A piece of the user's text for a message, cut short between two characters. */
std::string quoted (std::string_view text)
{
    constexpr size_t longest = 40;
    auto end = std::min (text.size(), longest);
    while (end < text.size() && end > 0 && (static_cast<unsigned char> (text[end]) & 0xc0u) == 0x80u)
        --end;
    return "\"" + std::string (text.substr (0, end)) + (end < text.size() ? "..." : "") + "\"";
}

std::optional<double> toNumber (std::string_view word)
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

/** One line, taken apart word by word. The first failure is the line's; what is read after it is of no account. */
class Line
{
public:
    explicit Line (std::string_view text) : rest (text) { skipBlanks(); }

    /** Nothing but blanks or a comment is left. */
    bool isAtEnd() const noexcept { return rest.empty() || rest.front() == '#'; }

    /** The next word, or an empty one at the line's end. */
    std::string_view word()
    {
        if (isAtEnd())
            return {};
        const auto end = std::find_if (rest.begin(), rest.end(), isBlank);
        const auto found = rest.substr (0, static_cast<size_t> (end - rest.begin()));
        rest.remove_prefix (found.size());
        skipBlanks();
        return found;
    }

    /** A path in quotes, or without them everything up to a comment or a last word "nowait". @param whose   "A load" */
    std::string_view path (const std::string& whose = "A load")
    {
        if (isAtEnd())
            return fail (whose + " needs the path of a file.");
        return rest.front() == '"' ? quotedText ("path") : barePath (whose);
    }

    /** A name: one word, or several in quotes. @param what   begins the sentence of one that is missing */
    std::string_view name (const char* what)
    {
        if (isAtEnd())
            return fail (std::string (what) + " is missing.");
        return rest.front() == '"' ? quotedText ("name") : word();
    }

    /** @param what   begins the sentence of a word that is missing or no number */
    double number (const char* what)
    {
        const auto text = word();
        if (text.empty())
            return fail (std::string (what) + " is missing."), 0.0;
        if (const auto value = toNumber (text))
            return *value;
        return fail (std::string (what) + " is not a number: " + quoted (text) + "."), 0.0;
    }

    float singleNumber (const char* what)
    {
        const auto value = number (what);
        if (std::abs (value) > std::numeric_limits<float>::max())
            return fail (std::string (what) + " is too large."), 0.0f;
        return static_cast<float> (value);
    }

    void expectEnd()
    {
        if (!isAtEnd())
            fail ("There is more on the line than its action takes: " + quoted (rest) + ".");
    }

    std::string_view fail (std::string sentence)
    {
        if (failure.empty())
            failure = std::move (sentence);
        return {};
    }

    const std::string& error() const noexcept { return failure; }

private:
    void skipBlanks()
    {
        while (!rest.empty() && isBlank (rest.front()))
            rest.remove_prefix (1);
    }

    std::string_view quotedText (const std::string& what)
    {
        const auto close = rest.find ('"', 1);
        if (close == std::string_view::npos)
            return fail ("The " + what + " has no closing quote.");
        const auto found = rest.substr (1, close - 1);
        rest.remove_prefix (close + 1);
        skipBlanks();
        return found.empty() ? fail ("The " + what + " is empty.") : found;
    }

    std::string_view barePath (const std::string& whose)
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

    std::string_view rest;
    std::string failure;
};

bool isMeter (int number)
{
    const auto command = CommandTable::find (number);
    return command && command->kind == CommandKind::meter;
}

int readCommand (Line& line, bool metersToo)
{
    const auto text = line.word();
    if (text.empty())
        return line.fail ("The command is missing."), 0;

    int number = 0;
    const auto *begin = text.data(), *end = begin + text.size();
    if (const auto [stopped, error] = std::from_chars (begin, end, number);
        error == std::errc {} && stopped == end)
    {
        if (!CommandTable::find (number) || (isMeter (number) && !metersToo))
            return line.fail ("There is no command of the number " + quoted (text) + "."), 0;
        return number;
    }
    number = CommandTable::numberOf (text);
    if (number == 0 || (isMeter (number) && !metersToo))
    {
        juce::StringArray constants;
        for (int each = 1; each <= CommandTable::commandCount; ++each)
            constants.add (CommandTable::constant (each));
        line.fail ("There is no command " + quoted (text) + "."
                   + didYouMean (juce::String (std::string (text)), constants).toStdString());
    }
    return number;
}

/** @param whose   "A load", for the sentence */
int readDeck (Line& line, const std::string& whose)
{
    const auto deck = line.word();
    if (deck.empty())
        return line.fail (whose + " needs a deck, A to D."), 0;
    constexpr std::string_view names = "ABCDabcd0123";
    const auto found = names.find (deck.front());
    if (deck.size() != 1 || found == std::string_view::npos)
        return line.fail ("There is no deck " + quoted (deck) + ", only A to D."), 0;
    return static_cast<int> (found % 4);
}

SetScript::Load readLoad (Line& line)
{
    SetScript::Load load;
    load.deck = readDeck (line, "A load");
    if (!line.error().empty())
        return load;
    load.path = line.path();
    if (const auto mode = line.word(); mode == "nowait")
        load.waits = false;
    else if (!mode.empty())
        line.fail ("After the path only \"nowait\" may follow, not " + quoted (mode) + ".");
    line.expectEnd();
    return load;
}

SetScript::Sample readSample (Line& line)
{
    SetScript::Sample sample;
    const auto pad = line.word();
    const auto number = toNumber (pad).value_or (0.0);
    if (pad.empty())
        line.fail ("A sample needs a pad, 1 to 16.");
    else if (number < 1.0 || number > 16.0 || number != std::floor (number))
        line.fail ("There is no pad " + quoted (pad) + ", only 1 to 16.");
    sample.pad = static_cast<int> (number) - 1;
    if (line.error().empty() && line.isAtEnd())
        line.fail ("A sample needs the path of a file.");
    sample.path = line.path();
    line.expectEnd();
    return sample;
}

SetScript::Command readSet (Line& line)
{
    SetScript::Command command;
    command.number = readCommand (line, false);
    command.value = line.singleNumber ("The command's value");
    if (!line.isAtEnd())
    {
        command.arg1 = line.singleNumber ("The first argument");
        command.arg2 = line.singleNumber ("The second argument");
    }
    line.expectEnd();
    return command;
}

SetScript::Setting readSetting (Line& line)
{
    SetScript::Setting setting;
    setting.name = line.word();
    if (setting.name.empty())
        return line.fail ("The setting is missing."), setting;
    const auto* row = NamedSetting::find (setting.name).row;
    if (row == nullptr)
    {
        juce::StringArray names;
        for (const auto& each : SettingName::all())
            names.add (juce::String (std::string (each.name)) + (each.isOfDeck ? "_A" : ""));
        line.fail ("There is no setting " + quoted (std::string_view (setting.name)) + "."
                   + didYouMean (juce::String (setting.name), names).toStdString());
        return setting;
    }
    if (row->isText())
    {
        setting.text = line.path ("The setting");
    }
    else
    {
        setting.value = line.number ("The setting's value");
        if (line.error().empty() && !(setting.value >= row->lowest && setting.value <= row->highest))
            line.fail (setting.name + " must lie between " + decimalText (row->lowest, 3) + " and "
                       + decimalText (row->highest, 3) + ".");
    }
    line.expectEnd();
    return setting;
}

SetScript::Reverse readReverse (Line& line)
{
    SetScript::Reverse reverse;
    reverse.deck = readDeck (line, "A reverse");
    const auto mode = line.word();
    if (mode != "on" && mode != "off")
        line.fail ("A reverse is on or off, not " + quoted (mode) + ".");
    reverse.on = mode == "on";
    line.expectEnd();
    return reverse;
}

/** A whole number as the next word and the last. @returns nothing, and the line as it was, if there is none */
std::optional<int> readOnlyNumber (Line& line)
{
    auto ahead = line;
    const auto text = ahead.word();
    int number = 0;
    const auto *begin = text.data(), *end = begin + text.size();
    const auto [stopped, error] = std::from_chars (begin, end, number);
    if (text.empty() || error == std::errc::invalid_argument || stopped != end || !ahead.isAtEnd())
        return {};
    line = ahead;
    if (error != std::errc {})
        line.fail (quoted (text) + " is too large a number for a preset.");
    return number;
}

bool isPadPreset (int id)
{
    for (const auto& group : FactoryPresets::groups())
        for (const auto& entry : group.presets)
            if (entry.id == id)
                return true;
    return false;
}

SetScript::Preset readPreset (Line& line, SetScript::Preset::Target target)
{
    const auto isPad = target == SetScript::Preset::Target::slicegate;
    const std::string whose = isPad ? "A slicegate" : "A smartknob";
    const auto count = isPad ? padCount : SmartKnobs::knobsPerDeck;
    SetScript::Preset preset { .target = target, .deck = readDeck (line, whose), .index = 0, .source = 0 };
    const auto number = line.word();
    if (number.size() != 1 || number.front() < '1' || number.front() >= '1' + count)
        line.fail (whose + " needs the number of a " + (isPad ? "pad" : "knob") + ", 1 to "
                   + std::to_string (count) + ".");
    else
        preset.index = number.front() - '1';
    if (const auto id = readOnlyNumber (line))
    {
        preset.source = *id;
        if (isPad ? !isPadPreset (*id) : SmartKnobLibrary::find (*id) == nullptr)
            line.fail ("There is no preset " + std::to_string (*id) + "; platterdex presets lists them.");
    }
    else if (line.isAtEnd())
    {
        line.fail (whose + " needs the id of a preset or the path of a file.");
    }
    else
    {
        preset.source = std::string (line.path (whose));
    }
    line.expectEnd();
    return preset;
}

/** @returns the index of a record by its name or its medium's short one; -1 for none */
int findBrand (std::string_view name)
{
    const auto brands = timecodeBrands();
    const auto found =
        std::ranges::find_if (brands, [name] (const TimecodeBrand& each)
                              { return name == each.name || (each.isCoded() && name == each.medium->id); });
    return found == brands.end() ? -1 : static_cast<int> (found - brands.begin());
}

SetScript::Timecode readTimecode (Line& line)
{
    using Mode = SetScript::Timecode::Mode;
    constexpr std::array<std::pair<std::string_view, Mode>, 3> modes {
        { { "internal", Mode::internal }, { "relative", Mode::relative }, { "absolute", Mode::absolute } }
    };
    SetScript::Timecode timecode;
    timecode.deck = readDeck (line, "A timecode");
    const auto record = line.name ("The name of the record");
    timecode.brand = findBrand (record);
    if (timecode.brand < 0)
        line.fail ("There is no record " + quoted (record)
                   + "; platterdex timecode --list names those whose code is known.");
    const auto word = line.word();
    const auto mode = std::ranges::find (modes, word, &std::pair<std::string_view, Mode>::first);
    if (mode == modes.end())
        line.fail ("A timecode is absolute, relative or internal, not " + quoted (word) + ".");
    else
        timecode.mode = mode->second;
    if (const auto input = line.word(); !input.empty())
    {
        timecode.inputPair = input.size() == 1 ? static_cast<int> (std::string_view ("ABCD").find (input))
                                               : -1; // npos is -1 too
        if (timecode.inputPair < 0)
            line.fail ("There is no input " + quoted (input) + ", only A to D.");
    }
    line.expectEnd();
    return timecode;
}

SetScript::Plugin readPlugin (Line& line)
{
    SetScript::Plugin plugin { readDeck (line, "A plugin"), {} };
    plugin.name = line.path ("A plugin");
    line.expectEnd();
    return plugin;
}

SetScript::Host readHost (Line& line)
{
    using Action = SetScript::Host::Action;
    SetScript::Host host;
    const auto action = line.word();
    if (action.empty())
    {
        line.fail ("The host needs an action: play, stop, bpm or seek.");
    }
    else if (action == "play" || action == "stop")
    {
        host.action = action == "play" ? Action::play : Action::stop;
    }
    else if (action == "bpm")
    {
        host = { Action::bpm, line.number ("The host's tempo") };
        if (!(host.value >= slowestHost && host.value <= fastestHost))
            line.fail ("The host's tempo must lie between 1 and 1000 BPM.");
    }
    else if (action == "seek")
    {
        host = { Action::seek, line.number ("The host's position") };
        if (!(host.value >= 0.0 && host.value <= SetScript::latestSeconds))
            line.fail ("The host's position must lie between 0 and 1000000 seconds.");
    }
    else
    {
        line.fail ("The host does not know " + quoted (action) + ", only play, stop, bpm and seek.");
    }
    line.expectEnd();
    return host;
}

/** @param what   begins the sentence of a byte that is missing, no number or out of its range */
int readByte (Line& line, const std::string& what, int lowest, int highest)
{
    const auto text = line.word();
    if (text.empty())
        return line.fail (what + " is missing."), lowest;
    const auto isHex = text.starts_with ("0x");
    const auto digits = isHex ? text.substr (2) : text;
    int byte = -1;
    const auto *begin = digits.data(), *end = begin + digits.size();
    const auto [stopped, error] = std::from_chars (begin, end, byte, isHex ? 16 : 10);
    if (error != std::errc {} || stopped != end || byte < lowest || byte > highest)
        line.fail (what + " lies between " + std::to_string (lowest) + " and " + std::to_string (highest)
                   + ", decimal or as 0x90; it is not " + quoted (text) + ".");
    return byte;
}

SetScript::Midi readMidi (Line& line)
{
    SetScript::Midi midi;
    midi.port = line.name ("The name of the controller");
    midi.status = readByte (line, "The status", 128, 239);
    midi.data = readByte (line, "The data byte", 0, 127);
    midi.value = readByte (line, "The value", 0, 127);
    line.expectEnd();
    return midi;
}

SetScript::Script readScript (Line& line)
{
    if (line.isAtEnd())
        line.fail ("A script needs the path of its file.");
    SetScript::Script script { std::string (line.path()) };
    line.expectEnd();
    return script;
}

std::variant<SetScript::Print, SetScript::PrintMidi> readPrint (Line& line)
{
    if (auto ahead = line; ahead.word() == "midi")
    {
        line = ahead;
        return SetScript::PrintMidi {};
    }
    return SetScript::Print { readCommand (line, true) };
}

SetScript::Browse readBrowse (Line& line)
{
    using Action = SetScript::Browse::Action;
    SetScript::Browse browse;
    const auto action = line.word();
    if (action == "source")
    {
        browse.action = Action::source;
        browse.text = line.name ("The name of the source");
    }
    else if (action == "search")
    {
        browse.action = Action::search;
        browse.text = line.name ("The text of the search");
    }
    else if (action == "sort")
    {
        browse.action = Action::sort;
        browse.text = line.name ("The name of the column");
    }
    else if (action == "select")
    {
        browse.action = Action::select;
        const auto row = line.number ("The row");
        if (line.error().empty() && !(row >= 1.0 && row <= 1e6 && row == std::floor (row)))
            line.fail ("A row is a number from 1.");
        else
            browse.number = static_cast<int> (row);
    }
    else
    {
        line.fail ("A browse is source, search, select or sort, not " + quoted (action) + ".");
    }
    if (browse.action == Action::sort)
    {
        const auto way = line.word();
        if (!way.empty() && way != "down")
            line.fail ("After the column only \"down\" may follow, not " + quoted (way) + ".");
        browse.number = way.empty() ? 1 : -1;
    }
    line.expectEnd();
    return browse;
}

SetScript::Event readEvent (Line& line, int lineNumber)
{
    SetScript::Event event;
    event.line = lineNumber;
    event.seconds = line.number ("The time at the start of the line");
    if (event.seconds < 0.0)
        line.fail ("A time can't be negative.");
    else if (event.seconds > SetScript::latestSeconds)
        line.fail ("A time can't be later than 1000000 seconds.");

    const auto action = line.word();
    if (action == "load")
        event.action = readLoad (line);
    else if (action == "sample")
        event.action = readSample (line);
    else if (action == "set")
        event.action = readSet (line);
    else if (action == "setting")
        event.action = readSetting (line);
    else if (action == "reverse")
        event.action = readReverse (line);
    else if (action == "host")
        event.action = readHost (line);
    else if (action == "midi")
        event.action = readMidi (line);
    else if (action == "script")
        event.action = readScript (line);
    else if (action == "browse")
        event.action = readBrowse (line);
    else if (action == "slicegate")
        event.action = readPreset (line, SetScript::Preset::Target::slicegate);
    else if (action == "smartknob")
        event.action = readPreset (line, SetScript::Preset::Target::smartknob);
    else if (action == "timecode")
        event.action = readTimecode (line);
    else if (action == "plugin")
        event.action = readPlugin (line);
    else if (action == "print")
        std::visit ([&event] (const auto& print) { event.action = print; }, readPrint (line));
    else if (action == "end")
        event.action = SetScript::End {};
    else if (action.empty())
        line.fail (std::string ("After the time an action is missing: ") + actionNames);
    else
        line.fail ("There is no action " + quoted (action) + ": " + actionNames);
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

        Line line (content);
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
