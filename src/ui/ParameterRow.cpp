#include "ui/ParameterRow.h"

#include "engine/CPlatterdex.h"
#include "engine/CommandTable.h"
#include "engine/CommandTitle.h"
#include "skin/Palette.h"
#include "support/language/Translate.h"
#include "ui/look/SMLookAndFeel.h"
#include "ui/panel/PanelPaint.h"
#include "ui/widgets/PXTextButton.h"

namespace
{
constexpr int gap = 4, margin = 8, buttonWidth = 72;
}

ParameterRow::Layout::Layout (juce::Rectangle<int> row)
{
    row.reduce (margin, 2);
    number = row.removeFromLeft (40);
    row.removeFromLeft (margin);
    control = row.removeFromRight (juce::jmin (320, row.getWidth() / 3));
    row.removeFromRight (margin);
    value = row.removeFromRight (80);
    row.removeFromRight (margin);
    name = row;
}

ParameterRow::ParameterRow (CPlatterdex& e) : PollingView (Pace::calm), engine (e) {}

ParameterRow::~ParameterRow() = default;

void ParameterRow::show (int number)
{
    if (number == command)
        return;
    command = number;
    controls.clear();
    slider = nullptr;
    makeControls();
    resized();
    refresh();
    repaint();
}

void ParameterRow::makeControls()
{
    const auto found = CommandTable::find (command);
    if (!found || CommandTable::isUnbuilt (command))
        return;

    switch (found->kind)
    {
    case CommandKind::trigger:
        addPressButton (tr ("PRESS"));
        break;
    case CommandKind::state:
        addPressButton (tr ("HOLD"));
        break;
    case CommandKind::relative:
        addStepButton ("-", CommandCall::stepDown);
        addStepButton ("+", CommandCall::stepUp);
        break;
    case CommandKind::meter:
        return;
    case CommandKind::value:
        if (found->shape == MappingShape::jog)
        {
            addStepButton ("-", -1.0f);
            addStepButton ("+", 1.0f);
            break;
        }
        auto made = std::make_unique<juce::Slider> (juce::Slider::LinearHorizontal, juce::Slider::NoTextBox);
        slider = made.get();
        slider->setRange (0.0, 1.0);
        slider->setTooltip (commandTitle (command));
        slider->setWantsKeyboardFocus (false);
        slider->setScrollWheelEnabled (false); // the wheel scrolls the list
        slider->onValueChange = [this] { engine.edit (command, static_cast<float> (slider->getValue())); };
        slider->onDragStart = [this] { engine.beginGesture (command); };
        slider->onDragEnd = [this] { engine.endGesture (command); };
        controls.push_back (std::move (made));
        break;
    }
    for (auto& control : controls)
        addAndMakeVisible (*control);
}

void ParameterRow::addPressButton (const juce::String& text)
{
    auto button = std::make_unique<PXTextButton> (text);
    button->bind (engine, command);
    controls.push_back (std::move (button));
}

void ParameterRow::addStepButton (const juce::String& text, float step)
{
    auto button = std::make_unique<PXTextButton> (text);
    button->setTooltip (commandTitle (command));
    button->onClick = [this, step] { engine.edit (command, step); };
    controls.push_back (std::move (button));
}

void ParameterRow::resized()
{
    auto area = Layout (getLocalBounds()).control;
    if (slider != nullptr)
        return slider->setBounds (area);
    for (auto& control : controls)
    {
        control->setBounds (area.removeFromLeft (buttonWidth));
        area.removeFromLeft (gap);
    }
}

void ParameterRow::pollCalm()
{
    if (command == 0)
        return;
    const auto next = CommandTable::isUnbuilt (command) ? PanelPaint::dash() : engine.displayText (command);
    if (next != value)
    {
        value = next;
        repaint (Layout (getLocalBounds()).value);
    }
    for (auto& control : controls)
        if (auto* widget = dynamic_cast<CommandWidget*> (control.get()))
            widget->poll();
    if (slider != nullptr && !slider->isMouseButtonDown())
        slider->setValue (engine.controlValue (command), juce::dontSendNotification);
}

void ParameterRow::paint (juce::Graphics& g)
{
    const Layout layout (getLocalBounds());
    const auto built = !CommandTable::isUnbuilt (command);
    g.setFont (SMLookAndFeel::font (SMLookAndFeel::valueSize));
    g.setColour (palette::label);
    g.drawText (juce::String (command), layout.number, juce::Justification::centredRight, false);
    g.setColour (built ? palette::value : palette::label);
    g.drawText (commandTitle (command), layout.name, juce::Justification::centredLeft, true);
    g.drawText (value, layout.value, juce::Justification::centredRight, false);
}
