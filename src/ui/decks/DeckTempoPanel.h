#pragma once

#include "ui/panel/ControlPanel.h"
#include "ui/poll/DeckWatch.h"
#include "ui/widgets/MenuButton.h"

/** The pitch fader and what belongs to it: tempo, range, key lock and bends. */
class DeckTempoPanel : public ControlPanel
{
public:
    DeckTempoPanel (CPlatterdex&, int deck);

    struct Texts
    {
        juce::String tempo, unit { "BPM" }, pitch;
        bool operator== (const Texts&) const = default;
    };

    const Texts& texts() const noexcept { return shown; }

    void paint (juce::Graphics&) override;

private:
    void pollMoving() override;
    void pollCalm() override;

    const DeckWatch watch;
    MenuButton& range;
    double steadyBpm = 0.0; ///< as shown
    Texts shown;
};
