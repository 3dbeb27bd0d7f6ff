#pragma once

#include "midi/system/MidiSystem.h"
#include "support/language/Translate.h"
#include "ui/poll/PollingView.h"
#include "ui/widgets/PXTextButton.h"

/** The choice of the native controller: the list of all models, the button that detects what is plugged in, and a note on the
    chosen one. */
class ControllerChoice : public PollingView
{
public:
    static constexpr int height = 24;

    explicit ControllerChoice (MidiSystem&);

    void resized() override;

private:
    void pollCalm() override; ///< a detection selects models too
    void tellOfModel();

    MidiSystem& midi;
    juce::ComboBox models;
    PXTextButton detectButton { tr ("Auto Detect Controller") },
        infoButton { tr ("Click here for more info.") };
};
