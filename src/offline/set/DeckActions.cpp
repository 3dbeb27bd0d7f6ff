#include "instruments/presets/SmartKnobLibrary.h"
#include "instruments/slicegate/FactoryPresets.h"
#include "instruments/smartknob/SmartKnobs.h"
#include "offline/set/SetActions.h"
#include "timecode/deckmode/TimecodeBrand.h"

#include <algorithm>
#include <array>

namespace
{
bool isPadPreset (int id)
{
    for (const auto& group : FactoryPresets::groups())
        for (const auto& entry : group.presets)
            if (entry.id == id)
                return true;
    return false;
}

SetScript::Preset readPreset (SetLine& line, SetScript::Preset::Target target)
{
    const auto isPad = target == SetScript::Preset::Target::slicegate;
    const std::string whose = isPad ? "A slicegate" : "A smartknob";
    const auto count = isPad ? padCount : SmartKnobs::knobsPerDeck;
    SetScript::Preset preset { .target = target, .deck = line.deck (whose), .index = 0, .source = 0 };
    const auto number = line.word();
    if (number.size() != 1 || number.front() < '1' || number.front() >= '1' + count)
        line.fail (whose + " needs the number of a " + (isPad ? "pad" : "knob") + ", 1 to "
                   + std::to_string (count) + ".");
    else
        preset.index = number.front() - '1';
    if (const auto id = line.onlyNumber())
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
}

SetScript::Action readLoad (SetLine& line)
{
    SetScript::Load load;
    load.deck = line.deck ("A load");
    if (!line.error().empty())
        return load;
    load.path = line.path();
    if (const auto mode = line.word(); mode == "nowait")
        load.waits = false;
    else if (!mode.empty())
        line.fail ("After the path only \"nowait\" may follow, not " + SetLine::quoted (mode) + ".");
    line.expectEnd();
    return load;
}

SetScript::Action readReverse (SetLine& line)
{
    SetScript::Reverse reverse;
    reverse.deck = line.deck ("A reverse");
    const auto mode = line.word();
    if (mode != "on" && mode != "off")
        line.fail ("A reverse is on or off, not " + SetLine::quoted (mode) + ".");
    reverse.on = mode == "on";
    line.expectEnd();
    return reverse;
}

SetScript::Action readGrid (SetLine& line)
{
    SetScript::Grid grid;
    grid.deck = line.deck ("A grid");
    const auto name = line.word();
    grid.reading = GridReading::find (name);
    if (grid.reading == nullptr)
    {
        std::string known;
        for (const auto& each : GridReading::all())
            known += (known.empty() ? "" : ", ") + std::string (each.name);
        line.fail ("A grid is read anew as one of " + known + ", not " + SetLine::quoted (name) + ".");
    }
    line.expectEnd();
    return grid;
}

SetScript::Action readTimecode (SetLine& line)
{
    using Mode = SetScript::Timecode::Mode;
    constexpr std::array<std::pair<std::string_view, Mode>, 3> modes {
        { { "internal", Mode::internal }, { "relative", Mode::relative }, { "absolute", Mode::absolute } }
    };
    SetScript::Timecode timecode;
    timecode.deck = line.deck ("A timecode");
    const auto record = line.name ("The name of the record");
    timecode.brand = findBrand (record);
    if (timecode.brand < 0)
        line.fail ("There is no record " + SetLine::quoted (record)
                   + "; platterdex timecode --list names those whose code is known.");
    const auto word = line.word();
    const auto mode = std::ranges::find (modes, word, &std::pair<std::string_view, Mode>::first);
    if (mode == modes.end())
        line.fail ("A timecode is absolute, relative or internal, not " + SetLine::quoted (word) + ".");
    else
        timecode.mode = mode->second;
    if (const auto input = line.word(); !input.empty())
    {
        timecode.inputPair = input.size() == 1 ? static_cast<int> (std::string_view ("ABCD").find (input))
                                               : -1; // npos is -1 too
        if (timecode.inputPair < 0)
            line.fail ("There is no input " + SetLine::quoted (input) + ", only A to D.");
    }
    line.expectEnd();
    return timecode;
}

SetScript::Action readPlugin (SetLine& line)
{
    SetScript::Plugin plugin { line.deck ("A plugin"), {} };
    plugin.name = line.path ("A plugin");
    line.expectEnd();
    return plugin;
}

SetScript::Action readSlicegate (SetLine& line)
{
    return readPreset (line, SetScript::Preset::Target::slicegate);
}

SetScript::Action readSmartknob (SetLine& line)
{
    return readPreset (line, SetScript::Preset::Target::smartknob);
}
