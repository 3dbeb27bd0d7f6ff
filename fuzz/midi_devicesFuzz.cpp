#include "Check.h"

#include "midi/ports/PortElements.h"

#include <algorithm>

/** Checks that a device list's ports have names and places, each once, and are read again as they are written. */
extern "C" int LLVMFuzzerTestOneInput (const uint8_t* data, size_t size)
{
    const auto lists = parseMidiDeviceList (std::make_unique<juce::MemoryInputStream> (data, size, false));
    if (!lists)
        return 0;
    for (const auto* list : { &lists->inputs, &lists->outputs })
        for (const auto& port : *list)
        {
            FUZZ_CHECK (port.name.isNotEmpty() && port.place >= 0 && port.place < 64);
            FUZZ_CHECK (std::count (list->begin(), list->end(), port) == 1);
        }

    struct Deaf : MidiReceiver
    {
        void midiArrived (const juce::String&, std::span<const uint8_t>) override {}
    } deaf;
    MidiPortService service { MidiPortService::Backends() };
    MidiPortSet set (service, deaf);
    lists->applyTo (set);
    const auto text = deviceListText (set, lists->opensInHost);
    const auto again = parseMidiDeviceList (
        std::make_unique<juce::MemoryInputStream> (text.toRawUTF8(), text.getNumBytesAsUTF8(), false));
    FUZZ_CHECK (again && again->opensInHost == lists->opensInHost);
    FUZZ_CHECK (again->inputs == lists->inputs && again->outputs == lists->outputs);
    return 0;
}
