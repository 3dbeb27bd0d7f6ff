#pragma once

#include "support/Relaxed.h"

#include <juce_audio_processors/juce_audio_processors.h>

class CPlatterdex;

/** One command as a parameter of hosts that go by parameter objects: parameter i is command i + 1.

    Such hosts drop a write that equals what they read, and some carry one press by two ways, of which the second must
    be dropped. So a button, pressed and released, reads as it was last written: every press and every release arrives
    once. Other commands read their state, limited to 0 to 1. */
class CommandParameter : public juce::AudioProcessorParameterWithID
{
public:
    CommandParameter (CPlatterdex&, int commandNumber);

    float getValue() const override;
    void setValue (float) override;
    float getDefaultValue() const override { return defaultValue; }
    bool isDiscrete() const override;
    bool isBoolean() const override { return isDiscrete(); }
    int getNumSteps() const override;
    juce::String getText (float value, int maximumLength) const override;
    float getValueForText (const juce::String& text) const override { return text.getFloatValue(); }

private:
    CPlatterdex& engine;
    const int number;
    float defaultValue = 0.0f;
    Relaxed<float> written { 0.0f };
};
