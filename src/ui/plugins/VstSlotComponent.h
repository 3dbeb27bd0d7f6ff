#pragma once

#include "plugins/slot/VstSlots.h"
#include "support/language/Translate.h"
#include "ui/panel/ControlPanel.h"
#include "ui/panel/DeckBadge.h"
#include "ui/plugins/PluginWindow.h"
#include "ui/widgets/MenuButton.h"
#include "ui/widgets/PXImageButton.h"

#include <array>

/** A deck's slot: which plug-in is in it, its window and presets, on and off, insert or send, dry/wet, and two of its
    parameters on knobs. */
class VstSlotComponent : public ControlPanel, private VstSlots::Listener
{
public:
    /** @param deck   0 to 3 */
    VstSlotComponent (CPlatterdex&, int deck);
    ~VstSlotComponent() override;

    void paint (juce::Graphics&) override;

    /** The two menus; public for tests. */
    void fillPluginMenu (juce::PopupMenu&);
    void choosePlugin (int item);
    void fillParameterMenu (juce::PopupMenu&, int which) const;

private:
    void pollMoving() override;
    void pollCalm() override;
    void pluginLeaves (int leftDeck) override;
    void showWindow (PluginWindow::Content);
    void stepPreset (int step);
    juce::String pluginText() const;
    juce::String parameterName (int which) const;
    juce::String parameterText (int which) const;
    juce::String latencyText() const;

    const int deck;
    VstSlots* const slots; ///< null where there are none: the controls stay, with nothing to choose
    DeckBadge badge;
    MenuButton pluginButton;
    std::vector<KnownPluginEntry> offered; ///< the plug-ins of the menu that was opened last
    PXTextButton editorButton { tr ("Editor") };
    PXImageButton formerButton { "_formerPresetButton" }, laterButton { "_laterPresetButton" };
    std::array<MenuButton, VstSlots::paramsPerSlot> parameterButtons;
    juce::Button* routingButton = nullptr;
    std::array<juce::String, VstSlots::paramsPerSlot> shownValues;
    juce::String shownLatency;
    std::unique_ptr<PluginWindow> window;
};
