#pragma once

#include "ui/plugins/PluginScannerComponent.h"
#include "ui/window/ToolWindows.h"

#include <array>

/** The page of other people's plug-ins: the scanner, and the slots that play on the master. */
class VstPluginsPreferencesPage : public PollingView
{
public:
    explicit VstPluginsPreferencesPage (VstSlots&);

    static void open (ToolWindows&, juce::Component& opener, VstSlots&);

    PluginScannerComponent& scanner() noexcept { return scannerView; }

    void paint (juce::Graphics&) override;
    void resized() override;

private:
    void pollCalm() override;

    VstSlots& slots;
    PluginScannerComponent scannerView;
    std::array<juce::ToggleButton, deckCount> masterButtons;
    juce::Rectangle<int> routingArea;
};
