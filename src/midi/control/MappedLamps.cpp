#include "midi/control/MappedLamps.h"

#include "engine/CommandTable.h"

#include <algorithm>

void MappedLamps::findLamps (const MidiMapping& mapping)
{
    lamps.clear();
    for (int number = 1; number < MidiMapping::rowCount; ++number)
    {
        const auto row = mapping.row (number);
        const auto kind = row.status & 0xf0;
        if (!row.isAssigned() || CommandTable::find (number)->feedback == CommandFeedback::none
            || (kind != 0x90 && kind != 0xb0) || row.type() == MidiControlType::encoder
            || row.type() == MidiControlType::encoderInverted)
            continue;
        if (std::none_of (lamps.begin(), lamps.end(),
                          [&row] (const Lamp& lamp)
                          { return lamp.status == row.status && lamp.data == row.data; }))
            lamps.push_back ({ number, row.status, row.data, row.type() == MidiControlType::inverted });
    }
}

void MappedLamps::state (CPlatterdex& engine, const MidiMapping& mapping, MidiSender& sender)
{
    if (!mapping.showsLamps)
        return;
    if (const auto revision = mapping.revision(); revision != foundFor)
    {
        foundFor = revision;
        findLamps (mapping);
    }
    for (const auto& lamp : lamps)
    {
        const auto command = CommandTable::find (lamp.command);
        const auto reading = engine.controlValue (lamp.command);
        const auto isLevel = command->feedback == CommandFeedback::level;
        const auto span = command->range.highest - command->range.lowest;
        const auto level =
            span > 0.0 ? juce::jlimit (0.0, 1.0, (reading - command->range.lowest) / span) : 0.0;
        sender.sendMidiShort (lamp.status, lamp.data,
                              isLevel ? juce::roundToInt ((lamp.isInverted ? 1.0 - level : level) * 127.0)
                              : reading > 0.0 ? 127
                                              : 0);
    }
}
