#include "engine/CommandParameter.h"

#include "engine/CPlatterdex.h"
#include "engine/CommandTable.h"

namespace
{
CommandKind kindOf (int number)
{
    return CommandTable::find (number).family->kind;
}
}

CommandParameter::CommandParameter (CPlatterdex& owner, int commandNumber)
    : AudioProcessorParameterWithID (juce::ParameterID { "c" + juce::String (commandNumber), 1 },
                                     CommandTable::name (commandNumber)),
      engine (owner),
      number (commandNumber)
{
    defaultValue = getValue();
}

float CommandParameter::getValue() const
{
    return isDiscrete() ? written.get() : juce::jlimit (0.0f, 1.0f, engine.getParameter (number));
}

void CommandParameter::setValue (float value)
{
    written = value;
    engine.setParameter (number, value);
}

bool CommandParameter::isDiscrete() const
{
    return kindOf (number) == CommandKind::trigger || kindOf (number) == CommandKind::state;
}

int CommandParameter::getNumSteps() const
{
    return isDiscrete() ? 2 : AudioProcessorParameter::getNumSteps();
}

juce::String CommandParameter::getText (float value, int maximumLength) const
{
    return juce::String (value, 2).substring (0, maximumLength);
}
