#pragma once

#include "engine/CPlatterdex.h"

#include <juce_gui_basics/juce_gui_basics.h>

/** The loop that the recorder has taken: its wave and the place that is heard. It is dragged onto a pad. */
class SamplerWaveform : public juce::Component, public juce::SettableTooltipClient
{
public:
    explicit SamplerWaveform (CPlatterdex&);

    /** Looks at the engine anew. Message thread, as all. */
    void poll();

    void paint (juce::Graphics&) override;
    void mouseDrag (const juce::MouseEvent&) override;

private:
    /** The column that the place heard lies in, or -1. */
    int playColumn() const;

    CPlatterdex& engine;
    uint32_t shownVersion = 0;
    int shownFrames = -1, shownColumn = -1;
};
