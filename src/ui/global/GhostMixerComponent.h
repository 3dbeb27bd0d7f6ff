#pragma once

#include "ui/global/CrossfaderPanel.h"
#include "ui/panel/DeckBadge.h"

#include <array>
#include <memory>
#include <vector>

/** A deck's channel in one line. */
class GhostChannel : public ControlPanel
{
public:
    /** @param deck   0 to 3 */
    GhostChannel (CPlatterdex&, int deck);

    void resized() override;

private:
    DeckBadge badge;
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
