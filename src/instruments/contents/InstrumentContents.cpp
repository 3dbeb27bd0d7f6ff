#include "instruments/contents/InstrumentContents.h"

#include "instruments/contents/SlicegateBank.h"
#include "instruments/smartknob/SmartKnobs.h"

namespace
{
std::string letterOf (int deck)
{
    return std::string (1, static_cast<char> ('A' + deck));
}

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
    return { .fileName = "smartknob_" + letterOf (deck) + std::to_string (knob + 1) + ".xml",
             .revision = [&knobs, deck, knob] { return knobs.revision (deck, knob); },
             .write = [&knobs, deck, knob] { return writeSmartKnobPreset (knobs.preset (deck, knob)); },
             .read = read };
}

ContentStore::Content contentOf (SlicegateDeckState& pads, int deck)
{
    const auto revision = [&pads]
    {
        uint32_t sum = 0;
        for (int pad = 0; pad < padCount; ++pad)
            sum += pads.revision (pad);
        return sum;
    };
    const auto read = [&pads] (std::string_view bytes) -> std::string
    {
        const auto bank = readSlicegateBank (bytes);
        if (const auto* fault = std::get_if<std::string> (&bank))
            return *fault;
        loadBank (pads, std::get<SlicegateBank> (bank));
        return {};
    };
    return { .fileName = "slicegate_" + letterOf (deck) + ".xml",
             .revision = revision,
             .write = [&pads] { return writeSlicegateBank (bankOf (pads)); },
             .read = read };
}
}

ContentStore InstrumentContents::makeStore (const juce::File& folder, SmartKnobs& knobs,
                                            std::span<SlicegateDeckState> padsOfDecks)
{
    ContentStore store (folder);
    for (int deck = 0; deck < deckCount; ++deck)
    {
        for (int knob = 0; knob < SmartKnobs::knobsPerDeck; ++knob)
            store.add (contentOf (knobs, deck, knob));
        store.add (contentOf (padsOfDecks[static_cast<size_t> (deck)], deck));
    }
    return store;
}
