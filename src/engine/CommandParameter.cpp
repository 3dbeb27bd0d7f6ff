#include "engine/CommandParameter.h"

#include "engine/CPlatterdex.h"
#include "engine/CommandTable.h"
#include "support/DecimalText.h"

namespace
{
/** The reading of a stepped command: none of its writes equals it. */
constexpr float betweenSteps = 0.5f;

/** The span of a host's 0 to 1 in a controller's terms. */
constexpr float stepScale = CommandCall::stepUp;

bool isButton (const CommandRow& row)
{
    return row.kind == CommandKind::trigger || row.kind == CommandKind::state;
}

bool isStepped (const CommandRow& row)
{
    return row.kind == CommandKind::relative;
}
}

CommandParameter::CommandParameter (CPlatterdex& owner, int commandNumber)
    : AudioProcessorParameterWithID (juce::ParameterID { "c" + juce::String (commandNumber), 1 },
                                     CommandTable::name (commandNumber)),
      engine (owner),
      number (commandNumber),
      row (*CommandTable::find (commandNumber).row)
{
}

float CommandParameter::getValue() const
{
    if (isButton (row))
        return written;
    return isStepped (row) ? betweenSteps
                           : juce::jlimit (0.0f, 1.0f, static_cast<float> (engine.controlValue (number)));
}

void CommandParameter::setValue (float value)
{
    written = value;
    engine.setParameter (number, isStepped (row) ? value * stepScale : value);
}

void CommandParameter::edit (float value)
{
    written = juce::jlimit (0.0f, 1.0f, value);
    beginGesture();
    engine.setParameter (number, value);
    sendValueChangedMessageToListeners (isStepped (row) ? juce::jlimit (0.0f, 1.0f, value / stepScale)
                                                        : juce::jlimit (0.0f, 1.0f, value));
    endGesture();
}

void CommandParameter::beginGesture()
{
    if (++hands == 1)
        beginChangeGesture();
}

void CommandParameter::endGesture()
{
    if (hands > 0 && --hands == 0)
        endChangeGesture();
}

float CommandParameter::getDefaultValue() const
{
    return isStepped (row) ? betweenSteps : static_cast<float> (row.rest);
}

bool CommandParameter::isDiscrete() const
{
    return isButton (row);
}

int CommandParameter::getNumSteps() const
{
    return isDiscrete() ? 2 : AudioProcessorParameter::getNumSteps();
}

juce::String CommandParameter::getText (float value, int maximumLength) const
{
    return juce::String (decimalText (static_cast<double> (value), 2)).substring (0, maximumLength);
}
