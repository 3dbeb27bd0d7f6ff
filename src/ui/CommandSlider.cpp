#include "ui/CommandSlider.h"

#include "engine/CPlatterdex.h"
#include "engine/CommandTable.h"

namespace
{
juce::Slider::SliderStyle styleOf (CommandSlider::Shape shape)
{
    switch (shape)
    {
    case CommandSlider::Shape::knob:
        return juce::Slider::RotaryVerticalDrag;
    case CommandSlider::Shape::upright:
        return juce::Slider::LinearVertical;
    default:
        return juce::Slider::LinearHorizontal;
    }
}
}

CommandSlider::CommandSlider (CPlatterdex& e, int command, Shape shape, double rest)
    : Slider (styleOf (shape), NoTextBox),
      engine (e),
      number (command)
{
    setTooltip (CommandTable::name (number));
    setRange (0.0, 1.0);
    setDoubleClickReturnValue (true, rest);
    setSliderSnapsToMousePosition (false);
    setWantsKeyboardFocus (false);
    setMouseClickGrabsKeyboardFocus (false);
    poll();
}

void CommandSlider::poll()
{
    if (!isMouseButtonDown())
        setValue (static_cast<double> (engine.getParameter (number)), juce::dontSendNotification);
}

void CommandSlider::valueChanged()
{
    engine.setParameter (number, static_cast<float> (getValue()));
}
