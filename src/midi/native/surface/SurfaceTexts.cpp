#include "midi/native/surface/SurfaceTexts.h"

#include "engine/CommandTable.h"
#include "midi/control/MidiControl.h"

namespace
{
constexpr int longestText = 32;
constexpr double lastEffect = 9.0;

/** The characters that a device's own character set has in common with ours. */
std::string plain (const juce::String& text)
{
    std::string kept;
    for (const auto c : text.substring (0, longestText))
        kept += c >= 32 && c < 127 ? static_cast<char> (c) : ' ';
    return kept;
}

std::string textOf (CPlatterdex& engine, const TextField& field, int deck)
{
    switch (field.text)
    {
    case TextField::Text::title:
        return plain (engine.decks.deck (deck)->texts().title);
    case TextField::Text::label:
        return std::string (field.words);
    case TextField::Text::effectName:
    {
        const auto choice = engine.getParameter (CommandTable::numberOf ("EFFECT_SELECT_1_GROUP_", deck));
        return " FX: " + std::to_string (std::lround (choice * lastEffect) + 1);
    }
    }
    return {};
}
}

void SurfaceTexts::state (MidiControl& control, const Model& model, const SurfaceState& state)
{
    const int deck = state.deckAt (Decks::chosen, 0);
    size_t index = 0;
    for (const auto& field : model.texts)
    {
        if (sent.size() <= index)
            sent.emplace_back (1, '\0'); // unlike every text
        auto& last = sent[index++];
        if (!state.isIn (field.layer, deck))
        {
            last.assign (1, '\0'); // another layer writes there
            continue;
        }
        const auto now = textOf (control.engine, field, deck);
        if (now == last)
            continue;
        last = now;
        std::vector<uint8_t> bytes (model.textHead.begin(), model.textHead.end());
        bytes.push_back (field.number);
        bytes.insert (bytes.end(), now.begin(), now.end());
        bytes.push_back (0xf7);
        control.sender.sendMidiSysEx (bytes);
    }
}
