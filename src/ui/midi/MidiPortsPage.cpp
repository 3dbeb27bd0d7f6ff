#include "ui/midi/MidiPortsPage.h"

#include "skin/Palette.h"
#include "support/language/Translate.h"
#include "ui/panel/PanelPaint.h"

namespace
{
constexpr int margin = 12, gap = 8, labelHeight = 20, buttonWidth = 200, buttonHeight = 24;
}

MidiPortsPage::MidiPortsPage (MidiSystem& m, std::function<void()> openMapping)
    : midi (m),
      inputs (m.control.ports, MidiDirection::input),
      outputs (m.control.ports, MidiDirection::output)
{
    inputs.onChange = outputs.onChange = [this]
    {
        if (!midi.saveDeviceList() && midi.engine.environment.prompts != nullptr)
            midi.engine.environment.prompts->notify (
                tr ("MIDI"), tr ("The list of devices could not be kept: its folder can't be "
                                 "written to."));
    };
    addAndMakeVisible (controller);
    addAndMakeVisible (inputs);
    addAndMakeVisible (outputs);

    hostToggle.setTooltip (
        tr ("A host keeps the ports for itself as a rule. Turn this on to play Platterdex directly."));
    hostToggle.setToggleState (midi.opensPorts(), juce::dontSendNotification);
    hostToggle.onClick = [this] { midi.setOpensPorts (hostToggle.getToggleState()); };
    addChildComponent (hostToggle);
    hostToggle.setVisible (midi.isInHost());

    mappingButton.setTooltip (tr ("Links the controls of a controller with commands."));
    mappingButton.onClick = std::move (openMapping);
    addAndMakeVisible (mappingButton);
    setSize (width, height);
}

void MidiPortsPage::refresh()
{
    controller.refresh();
    inputs.refresh();
    outputs.refresh();
}

void MidiPortsPage::paint (juce::Graphics& g)
{
    g.fillAll (palette::panel);
    PanelPaint::label (g, tr ("Remote Controller"), controllerLabel, juce::Justification::centredLeft);
    PanelPaint::label (g, tr ("MIDI Inputs"), inputLabel, juce::Justification::centredLeft);
    PanelPaint::label (g, tr ("MIDI Outputs"), outputLabel, juce::Justification::centredLeft);
}

void MidiPortsPage::resized()
{
    auto area = getLocalBounds().reduced (margin);
    controllerLabel = area.removeFromTop (labelHeight);
    controller.setBounds (area.removeFromTop (ControllerChoice::height));
    area.removeFromTop (gap);
    auto bottom = area.removeFromBottom (buttonHeight);
    mappingButton.setBounds (bottom.removeFromRight (buttonWidth));
    hostToggle.setBounds (bottom.withTrimmedRight (gap));
    area.removeFromBottom (margin);
    auto upper = area.removeFromTop ((area.getHeight() - gap) / 2);
    area.removeFromTop (gap);
    inputLabel = upper.removeFromTop (labelHeight);
    inputs.setBounds (upper);
    outputLabel = area.removeFromTop (labelHeight);
    outputs.setBounds (area);
}
