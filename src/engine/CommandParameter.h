#pragma once

#include "support/Relaxed.h"

#include <juce_audio_processors/juce_audio_processors.h>

class CPlatterdex;
struct CommandRow;

/** One command as a parameter of hosts that go by parameter objects: parameter i is command i + 1.

    Such hosts drop a write that equals what they read, and some carry one press by two ways, of which the second must
    be dropped. So a button, pressed and released, reads as it was last written: every press and every release arrives
    once. A stepped command takes 0 to 1 as a controller's 0 to 127, so its upper half steps up, and reads the middle.
    Others read their state as it would be written, limited to 0 to 1. The default value is the row's rest. */
class CommandParameter : public juce::AudioProcessorParameterWithID
{
public:
    CommandParameter (CPlatterdex&, int commandNumber);

    float getValue() const override;
    void setValue (float) override;
    float getDefaultValue() const override;
    bool isDiscrete() const override;
    bool isBoolean() const override { return isDiscrete(); }
    int getNumSteps() const override;
    juce::String getText (float value, int maximumLength) const override;
    float getValueForText (const juce::String& text) const override { return text.getFloatValue(); }

    /** Carries the command out for a hand in the editor, and tells the host. @param value   of the command, not limited
        to 0 to 1. Message thread. */
    void edit (float value);

    /** Gestures of several controls on one command count as one. Message thread. */
    void beginGesture();
    void endGesture();

private:
    CPlatterdex& engine;
    const int number;
    const CommandRow& row;
    Relaxed<float> written { 0.0f };
    int hands = 0; ///< in a gesture
};
