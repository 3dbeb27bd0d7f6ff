#include "ui/CommandButton.h"

#include "engine/CPlatterdex.h"
#include "engine/CommandTable.h"

namespace
{
bool isHeld (int number)
{
    const auto command = CommandTable::find (number);
    return command.family != nullptr && command.family->kind == CommandKind::state;
}
}

CommandButton::CommandButton (CPlatterdex& e, int commandNumber, const juce::String& text)
    : TextButton (text),
      engine (e),
      number (commandNumber),
      isHeldCommand (isHeld (commandNumber))
{
    setTooltip (CommandTable::name (number));
    setTriggeredOnMouseDown (true);
    // The keyboard plays the decks; a button that kept the space bar to itself would be in the way.
    setWantsKeyboardFocus (false);
    setMouseClickGrabsKeyboardFocus (false);
    if (!isHeldCommand)
        onClick = [this] { engine.setParameter (number, 1.0f); };
}

CommandButton::~CommandButton()
{
    setHeld (false);
}

void CommandButton::poll()
{
    setToggleState (engine.getParameter (number) > 0.0f, juce::dontSendNotification);
}

void CommandButton::setLitColour (juce::Colour colour)
{
    setColour (buttonOnColourId, colour);
}

void CommandButton::mouseDown (const juce::MouseEvent& event)
{
    if (event.mods.isLeftButtonDown())
        TextButton::mouseDown (event);
    else if (event.mods.isPopupMenu() && alternative != 0)
        engine.setParameter (alternative, 1.0f);
}

void CommandButton::mouseDrag (const juce::MouseEvent& event)
{
    if (event.mods.isLeftButtonDown())
        TextButton::mouseDrag (event);
}

void CommandButton::mouseUp (const juce::MouseEvent& event)
{
    if (event.mods.isLeftButtonDown())
        TextButton::mouseUp (event);
}

void CommandButton::buttonStateChanged()
{
    TextButton::buttonStateChanged();
    setHeld (getState() == buttonDown);
}

void CommandButton::setHeld (bool down)
{
    if (!isHeldCommand || held == down)
        return;
    held = down;
    engine.setParameter (number, down ? 1.0f : 0.0f);
}
