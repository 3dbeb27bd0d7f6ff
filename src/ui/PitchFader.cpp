#include "ui/PitchFader.h"

#include "engine/CPlatterdex.h"
#include "ui/DeckCommands.h"
#include "ui/Look.h"

PitchFader::PitchFader (CPlatterdex& e, int deck)
    : Slider (LinearVertical, NoTextBox),
      engine (e),
      pitch (commandOfDeck ("PITCH_", deck)),
      reset (commandOfDeck ("PITCH_RESET_", deck))
{
    setTooltip ("Pitch. Double click to reset.");
    setRange (0.0, 1.0);
    setValue (0.5, juce::dontSendNotification);
    setSliderSnapsToMousePosition (false);
    setScrollWheelEnabled (true);
    setWantsKeyboardFocus (false);
    setMouseClickGrabsKeyboardFocus (false);
}

void PitchFader::poll()
{
    // The command takes the fader from high to low and reads back the pitch itself.
    if (!isMouseButtonDown())
        setValue (1.0 - static_cast<double> (engine.getParameter (pitch)), juce::dontSendNotification);
}

void PitchFader::valueChanged()
{
    engine.setParameter (pitch, static_cast<float> (getValue()));
}

void PitchFader::mouseDoubleClick (const juce::MouseEvent&)
{
    engine.setParameter (reset, 1.0f);
    setValue (0.5, juce::dontSendNotification);
}

void PitchFader::paint (juce::Graphics& g)
{
    const auto centre = static_cast<int> (getPositionOfValue (0.5));
    g.setColour (Look::label);
    g.fillRect (0, centre, getWidth(), 1);
    Slider::paint (g);
}
