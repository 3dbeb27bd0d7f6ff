#pragma once

#include "ui/panel/ControlPanel.h"
#include "ui/widgets/PXTextButton.h"

/** The hold of a control record on a deck: tracking mode, thru, and how well the signal is read. 100 by 166. */
class DeckDVSPanel : public ControlPanel
{
public:
    DeckDVSPanel (CPlatterdex&, int deck);
    ~DeckDVSPanel() override;

    /** The diagnosis of the signal. */
    const juce::String& words() const noexcept { return shown; }

    void paint (juce::Graphics&) override;

private:
    void pollMoving() override;
    void openPage();

    const int deck;
    PXTextButton &thru, &page, &found;
    int foundBrand = -1;
    juce::String shown, quality;
};
