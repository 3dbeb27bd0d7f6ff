#pragma once

#include "midi/system/MidiSystem.h"
#include "support/language/Translate.h"
#include "ui/manual/HelpTopic.h"
#include "ui/midi/ControllerChoice.h"
#include "ui/midi/PortListComponent.h"
#include "ui/widgets/PXTextButton.h"

/** The page of the engine's ports: the native controller, two lists, and the way to the mapping editor. */
class MidiPortsPage : public juce::Component, public HelpTopicOwner
{
public:
    static constexpr int width = 620, height = 460;

    HelpTopic helpTopic() const override { return { "controller", "plug-it-in" }; }

    /** @param openMapping   opens the mapping editor */
    MidiPortsPage (MidiSystem&, std::function<void()> openMapping);

    void refresh();
    void paint (juce::Graphics&) override;
    void resized() override;

private:
    MidiSystem& midi;
    ControllerChoice controller { midi };
    PortListComponent inputs, outputs;
    juce::ToggleButton hostToggle { tr ("Open MIDI ports inside this host") };
    PXTextButton mappingButton { tr ("Open MIDI Mapping Editor") };
    juce::Rectangle<int> controllerLabel, inputLabel, outputLabel;
};
