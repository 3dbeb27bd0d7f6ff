#include "ui/slicegate/SlicegateComponent.h"

#include "engine/CPlatterdex.h"
#include "skin/Palette.h"
#include "ui/look/ShortText.h"
#include "ui/panel/PanelPaint.h"

namespace
{
constexpr int columns = 4, left = 4, firstRow = 26;
constexpr juce::Point<int> badgePlace { 4, 4 };
const juce::Rectangle<int> nameArea { 28, 4, 120, 20 };
}

SlicegateComponent::SlicegateComponent (CPlatterdex& e, int d) : ControlPanel (e), deck (d), badge (e, d)
{
    badge.setTopLeftPosition (badgePlace);
    addAndMakeVisible (badge);
    for (int i = 0; i < padCount; ++i)
    {
        auto& made = own (std::make_unique<SlicegatePad> (e, d, i));
        made.setTopLeftPosition (left + i % columns * SlicegatePad::width,
                                 firstRow + i / columns * SlicegatePad::height);
        pads[static_cast<size_t> (i)] = &made;
    }
}

void SlicegateComponent::pollMoving()
{
    pollControls();
    const auto& state = engine.slicegates[static_cast<size_t> (deck)];
    juce::String now;
    for (int i = 0; i < padCount; ++i)
        if (state.padState (i) == PadState::running)
            now = PadMenu::nameOf (engine, deck, i);
    now = shortText (now, SMLookAndFeel::font (SMLookAndFeel::valueSize), nameArea.getWidth());
    if (std::exchange (running, now) != now)
        repaint (nameArea);
}

void SlicegateComponent::paint (juce::Graphics& g)
{
    ControlPanel::paint (g);
    PanelPaint::value (g, running, nameArea, juce::Justification::centredLeft);
    g.setColour (palette::edgeDark);
    g.fillRect (getLocalBounds().removeFromBottom (1));
}
