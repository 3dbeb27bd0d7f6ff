#include "midi/ports/MergePorts.h"

juce::String deviceBehindBridge (const juce::String& jackName)
{
    if (jackName.startsWith ("a2j:"))
        return jackName.fromFirstOccurrenceOf ("): ", false, false);
    if (jackName.startsWith ("Midi-Bridge:"))
        return jackName.fromFirstOccurrenceOf (":(", false, false).fromFirstOccurrenceOf (") ", false, false);
    return jackName;
}

std::vector<MidiPortInfo> mergePorts (std::vector<MidiPortInfo> sequencer,
                                      const std::vector<MidiPortInfo>& jack)
{
    juce::StringArray alone; // devices of the sequencer that no port of JACK has been found for
    for (const auto& port : sequencer)
        alone.add (port.name);
    for (const auto& port : jack)
    {
        if (const auto twin = alone.indexOf (deviceBehindBridge (port.name)); twin >= 0)
            alone.remove (twin);
        else
            sequencer.push_back (port);
    }
    return sequencer;
}
