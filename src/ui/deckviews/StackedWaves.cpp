#include "ui/deckviews/StackedWaves.h"

#include "engine/CPlatterdex.h"
#include "skin/Palette.h"
#include "support/language/Translate.h"
#include "ui/look/SMLookAndFeel.h"

#include <algorithm>

StackedWaves::StackedWaves (CPlatterdex& e) : PollingView (Pace::calm), engine (e)
{
    setOpaque (true);
    for (int deck = 0; deck < deckCount; ++deck)
        addChildComponent (*(rows[static_cast<size_t> (deck)] = std::make_unique<StackedWave> (e, deck)));
}

void StackedWaves::pollCalm()
{
    const auto decks = engine.settings.editor[EditorPreference::fourDeckMode] != 0 ? deckCount : 2;
    std::array<bool, deckCount> next {};
    for (int deck = 0; deck < decks; ++deck)
        next[static_cast<size_t> (deck)] = row (deck).hasTrack();
    if (next == shown)
        return;
    shown = next;
    resized();
    repaint();
}

void StackedWaves::resized()
{
    auto area = getLocalBounds();
    auto left = static_cast<int> (std::count (shown.begin(), shown.end(), true));
    for (size_t deck = 0; deck < rows.size(); ++deck)
    {
        rows[deck]->setVisible (shown[deck]);
        if (shown[deck])
            rows[deck]->setBounds (area.removeFromTop (area.getHeight() / left--));
    }
}

void StackedWaves::paint (juce::Graphics& g)
{
    g.fillAll (palette::ground);
    if (std::find (shown.begin(), shown.end(), true) != shown.end())
        return;
    g.setColour (palette::label);
    g.setFont (SMLookAndFeel::font (SMLookAndFeel::valueSize));
    g.drawText (tr ("The waves of loaded decks stand here."), getLocalBounds(), juce::Justification::centred,
                true);
}
