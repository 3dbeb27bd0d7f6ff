#include "ui/midi/PortListComponent.h"

#include "skin/Palette.h"
#include "support/language/Translate.h"
#include "ui/look/SMLookAndFeel.h"
#include "ui/panel/PanelPaint.h"

namespace
{
constexpr int margin = 8;
}

PortListComponent::PortListComponent (MidiPortSet& p, MidiDirection d)
    : PollingView (Pace::calm),
      ports (p),
      direction (d)
{
    viewport.setViewedComponent (&list, false);
    viewport.setScrollBarsShown (true, false);
    addAndMakeVisible (viewport);
}

PortListComponent::~PortListComponent() = default;

void PortListComponent::pollCalm()
{
    auto now = ports.rows (direction);
    if (now == rows)
        return;
    rows = std::move (now);
    makeToggles();
    repaint();
}

void PortListComponent::makeToggles()
{
    toggles.clear();
    for (const auto& row : rows)
    {
        const auto text = row.index < 0                 ? tr ("%1 - not connected", row.title())
                          : row.isWanted && !row.isOpen ? tr ("%1 - can't be opened", row.title())
                                                        : row.title();
        auto toggle = std::make_unique<juce::ToggleButton> (text);
        toggle->setToggleState (row.isWanted, juce::dontSendNotification);
        toggle->setAlpha (row.isWanted && !row.isOpen ? 0.6f : 1.0f);
        toggle->onClick = [this, row, pressed = toggle.get()]
        {
            ports.setEnabled (direction, { row.name, row.place }, pressed->getToggleState());
            if (onChange != nullptr)
                onChange();
        };
        list.addAndMakeVisible (*toggle);
        toggles.push_back (std::move (toggle));
    }
    resized();
}

void PortListComponent::paint (juce::Graphics& g)
{
    g.setColour (palette::ground);
    g.fillRect (getLocalBounds());
    if (rows.empty())
        PanelPaint::label (g, tr ("(No MIDI I/O available)"), getLocalBounds());
}

void PortListComponent::resized()
{
    viewport.setBounds (getLocalBounds().reduced (1));
    list.setSize (viewport.getMaximumVisibleWidth(), static_cast<int> (toggles.size()) * rowHeight);
    auto area = list.getLocalBounds().withTrimmedLeft (margin);
    for (auto& toggle : toggles)
        toggle->setBounds (area.removeFromTop (rowHeight));
}
