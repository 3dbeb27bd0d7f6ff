#include "instruments/presets/InstrumentContents.h"

#include "instruments/smartknob/SmartKnobs.h"

namespace
{
ContentStore::Content contentOf (SmartKnobs& knobs, int deck, int knob)
{
    const auto read = [&knobs, deck, knob] (std::string_view bytes) -> std::string
    {
        auto preset = readSmartKnobPreset (bytes);
        if (const auto* fault = std::get_if<std::string> (&preset))
            return *fault;
        knobs.loadSmartKnobPreset (deck, knob, std::get<SmartKnobPreset> (preset));
        return {};
    };
    return { .fileName = std::string ("smartknob_") + static_cast<char> ('A' + deck)
                         + std::to_string (knob + 1) + ".xml",
             .revision = [&knobs, deck, knob] { return knobs.revision (deck, knob); },
             .write = [&knobs, deck, knob] { return writeSmartKnobPreset (knobs.preset (deck, knob)); },
             .read = read };
}
}

ContentStore InstrumentContents::makeStore (const juce::File& folder, SmartKnobs& knobs)
{
    ContentStore store (folder);
    for (int deck = 0; deck < deckCount; ++deck)
        for (int knob = 0; knob < SmartKnobs::knobsPerDeck; ++knob)
            store.add (contentOf (knobs, deck, knob));
    return store;
}
