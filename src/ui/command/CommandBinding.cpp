#include "ui/command/CommandBinding.h"

#include "engine/CPlatterdex.h"
#include "engine/CommandTable.h"
#include "engine/CommandTitle.h"

namespace
{
bool isOfKind (int number, CommandKind kind)
{
    const auto command = CommandTable::find (number);
    return command && command->kind == kind;
}
}

CommandBinding::CommandBinding (CPlatterdex& e, int number) noexcept : engine (&e), commandNumber (number) {}

bool CommandBinding::isHeld() const noexcept
{
    return isBound() && isOfKind (commandNumber, CommandKind::state);
}

bool CommandBinding::isValue() const noexcept
{
    return isBound() && isOfKind (commandNumber, CommandKind::value);
}

double CommandBinding::value() const
{
    return isBound() ? engine->controlValue (commandNumber) : 0.0;
}

bool CommandBinding::isOn() const
{
    return isBound() && engine->getParameter (commandNumber) > 0.0f;
}

void CommandBinding::set (double value) const
{
    if (isBound())
        engine->edit (commandNumber, static_cast<float> (value));
}

void CommandBinding::beginGesture() const
{
    if (isBound())
        engine->beginGesture (commandNumber);
}

void CommandBinding::endGesture() const
{
    if (isBound())
        engine->endGesture (commandNumber);
}

void CommandBinding::press() const
{
    set (1.0);
}

void CommandBinding::release() const
{
    if (isHeld())
        set (0.0);
}

void CommandBinding::step (int direction) const
{
    set (direction > 0 ? CommandCall::stepUp : CommandCall::stepDown);
}

double CommandBinding::restValue() const
{
    const auto command = CommandTable::find (commandNumber);
    return command ? command->rest : 0.0;
}

juce::String CommandBinding::name() const
{
    return commandTitle (commandNumber);
}

juce::String CommandBinding::text() const
{
    return isBound() ? engine->displayText (commandNumber) : juce::String();
}
