#include "offline/set/SetActions.h"
#include "settings/SettingNames.h"
#include "support/DecimalText.h"
#include "support/Suggestion.h"

#include <cmath>

namespace
{
constexpr double slowestHost = 1.0, fastestHost = 1000.0;
}

SetScript::Action readSample (SetLine& line)
{
    SetScript::Sample sample;
    const auto pad = line.word();
    const auto number = SetLine::toNumber (pad).value_or (0.0);
    if (pad.empty())
        line.fail ("A sample needs a pad, 1 to 16.");
    else if (number < 1.0 || number > 16.0 || number != std::floor (number))
        line.fail ("There is no pad " + SetLine::quoted (pad) + ", only 1 to 16.");
    sample.pad = static_cast<int> (number) - 1;
    if (line.error().empty() && line.isAtEnd())
        line.fail ("A sample needs the path of a file.");
    sample.path = line.path();
    line.expectEnd();
    return sample;
}

SetScript::Action readSet (SetLine& line)
{
    SetScript::Command command;
    command.number = line.command (false);
    command.value = line.singleNumber ("The command's value");
    if (!line.isAtEnd())
    {
        command.arg1 = line.singleNumber ("The first argument");
        command.arg2 = line.singleNumber ("The second argument");
    }
    line.expectEnd();
    return command;
}

SetScript::Action readSetting (SetLine& line)
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
        line.fail ("There is no setting " + SetLine::quoted (std::string_view (setting.name)) + "."
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

SetScript::Action readHost (SetLine& line)
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
        line.fail ("The host does not know " + SetLine::quoted (action) + ", only play, stop, bpm and seek.");
    }
    line.expectEnd();
    return host;
}

SetScript::Action readPrint (SetLine& line)
{
    if (auto ahead = line; ahead.word() == "midi")
    {
        line = ahead;
        return SetScript::PrintMidi {};
    }
    return SetScript::Print { line.command (true) };
}
