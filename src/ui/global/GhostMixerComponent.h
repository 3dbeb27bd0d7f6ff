#pragma once

#include "ui/global/CrossfaderPanel.h"
#include "ui/global/PeakMeter.h"
#include "ui/panel/DeckBadge.h"
#include "ui/widgets/PXTextButton.h"

#include <array>
#include <memory>
#include <vector>

/** A deck's channel in two rows: lamp over crossfader side, kills over volume, meter, as many knobs as there is room for, the
    low band's always among them, and headphones. */
class GhostChannel : public ControlPanel
{
public:
    /** @param deck   0 to 3 */
    GhostChannel (CPlatterdex&, int deck);

    void resized() override;

private:
    void pollMoving() override;
    void changeSide();

    const int deck;
    DeckBadge badge;
    PXTextButton& side;
    PeakMeter& meter;
    std::vector<juce::Component*> kills; ///< high, mid, low
    std::vector<juce::Component*> knobs; ///< the most wanted first
    juce::Component *fader = nullptr, *pfl = nullptr;
};

/** The mixer as a narrow strip over the whole width, for the time that the page "MIXER" isn't shown. */
class GhostMixerComponent : public juce::Component
{
public:
    explicit GhostMixerComponent (CPlatterdex&);

    void setFourDecks (bool);

    void resized() override;
    void paint (juce::Graphics&) override;

private:
    std::array<std::unique_ptr<GhostChannel>, 4> channels;
    CrossfaderPanel crossfader;
};
