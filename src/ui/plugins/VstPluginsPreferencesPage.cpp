#include "ui/plugins/VstPluginsPreferencesPage.h"

#include "engine/CPlatterdex.h"
#include "skin/Palette.h"
#include "support/language/Translate.h"
#include "ui/panel/PanelPaint.h"

namespace
{
constexpr int width = 880, height = 520, margin = 12, title = 24, toggleRow = 24;
constexpr int routingHeight = title + 2 * toggleRow;
}

VstPluginsPreferencesPage::VstPluginsPreferencesPage (VstSlots& s)
    : PollingView (Pace::calm),
      slots (s),
      scannerView (s)
{
    addAndMakeVisible (scannerView);
    for (int deck = 0; deck < deckCount; ++deck)
    {
        auto& button = masterButtons[static_cast<size_t> (deck)];
        button.setButtonText (tr ("Apply VST slot %1 to master output", PanelPaint::letterOf (deck)));
        button.setTooltip (tr ("The slot's plug-in hears all that is played, in place of its deck."));
        button.onClick = [this, deck, pressed = &button]
        {
            slots.engine.settings.deckSetup[static_cast<size_t> (deck)].vstOnMaster =
                static_cast<int8_t> (pressed->getToggleState());
        };
        addAndMakeVisible (button);
    }
    setSize (width, height);
    pollCalm();
}

void VstPluginsPreferencesPage::resized()
{
    auto area = getLocalBounds().reduced (margin);
    routingArea = area.removeFromBottom (routingHeight);
    auto toggles = routingArea.withTrimmedTop (title);
    for (size_t deck = 0; deck < masterButtons.size(); ++deck)
        masterButtons[deck].setBounds (toggles.getX() + static_cast<int> (deck % 2) * toggles.getWidth() / 2,
                                       toggles.getY() + static_cast<int> (deck / 2) * toggleRow,
                                       toggles.getWidth() / 2, toggleRow);
    scannerView.setBounds (area.withTrimmedTop (title).withTrimmedBottom (margin));
}

void VstPluginsPreferencesPage::open (ToolWindows& windows, juce::Component& opener, VstSlots& slots)
{
    windows.open (tr ("VST Plugins"), opener,
                  [&slots] (const auto&) { return std::make_unique<VstPluginsPreferencesPage> (slots); });
}

void VstPluginsPreferencesPage::pollCalm()
{
    for (int deck = 0; deck < deckCount; ++deck)
        masterButtons[static_cast<size_t> (deck)].setToggleState (
            slots.engine.settings.deckSetup[static_cast<size_t> (deck)].vstOnMaster != 0,
            juce::dontSendNotification);
}

void VstPluginsPreferencesPage::paint (juce::Graphics& g)
{
    g.fillAll (palette::panel);
    PanelPaint::value (g, tr ("VST Plugins"), { margin, margin - 4, width, title },
                       juce::Justification::centredLeft);
    PanelPaint::value (g, tr ("Advanced VST Audio Routing"), routingArea.withHeight (title),
                       juce::Justification::centredLeft);
}
