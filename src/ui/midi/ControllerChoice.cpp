#include "ui/midi/ControllerChoice.h"

#include "midi/detect/ControllerDetection.h"
#include "midi/native/table/ModelList.h"
#include "midi/native/table/ModelPage.h"
#include "support/language/Translate.h"

namespace
{
constexpr int gap = 8, buttonWidth = 160;
}

ControllerChoice::ControllerChoice (MidiSystem& m) : PollingView (Pace::calm), midi (m)
{
    for (int model = 0; model < ModelList::count; ++model)
        models.addItem (ModelList::entry (model).name, model + 1);
    models.setTooltip (tr ("Change selected controller"));
    models.onChange = [this]
    {
        if (models.getSelectedId() > 0)
            midi.control.selectController (models.getSelectedId() - 1);
    };
    detectButton.setTooltip (tr ("Press to scan for attached controllers"));
    detectButton.onClick = [this] { autoDetectControllers (midi); };
    infoButton.setTooltip (tr ("Tells how the selected controller is played."));
    infoButton.onClick = [this] { tellOfModel(); };
    addAndMakeVisible (models);
    addAndMakeVisible (detectButton);
    addAndMakeVisible (infoButton);
}

void ControllerChoice::pollCalm()
{
    models.setSelectedId (midi.engine.settings.controllerPreset + 1, juce::dontSendNotification);
}

void ControllerChoice::tellOfModel()
{
    const auto model = models.getSelectedId() - 1;
    if (midi.engine.environment.prompts != nullptr)
        midi.engine.environment.prompts->notify (ModelList::entry (model).name, modelRemark (model));
}

void ControllerChoice::resized()
{
    auto area = getLocalBounds();
    infoButton.setBounds (area.removeFromRight (buttonWidth));
    area.removeFromRight (gap);
    detectButton.setBounds (area.removeFromRight (buttonWidth));
    area.removeFromRight (gap);
    models.setBounds (area);
}
