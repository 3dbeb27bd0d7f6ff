#include "ui/widgets/CommandBinding.h"

#include "engine/CPlatterdex.h"
#include "engine/CommandTable.h"

#include <string_view>

namespace
{
struct Rest
{
    std::string_view family; ///< what the command's constant begins with; the first that fits counts
    double value;
};

/** Where commands of values stand when nothing has been done with them; all others at 0. */
constexpr Rest rests[] {
    { "PITCH_", 0.5 },
    { "KEY_TUNING_", 0.5 },
    { "GAIN_", 0.5 },
    { "EQ_", 0.5 },
    { "FILTER_", 0.5 },
    { "BALANCE_", 0.5 },
    { "VOLUME_", 1.0 },
    { "CROSSFADER", 0.5 },
    { "MONITOR_VOLUME", 1.0 },
    { "MASTER_VOLUME", 1.0 },
    { "SAMPLER_MASTER_VOLUME", 0.5 },
};

CommandKind kindOf (int number)
{
    const auto command = CommandTable::find (number);
    return command.family == nullptr ? CommandKind::value : command.family->kind;
}

bool isTurnedRound (int number)
{
    const auto command = CommandTable::find (number);
    return command.family != nullptr && command.family->shape == MappingShape::pitch
           && command.family->kind == CommandKind::value;
}
}

CommandBinding::CommandBinding (CPlatterdex& e, int number) noexcept : engine (&e), commandNumber (number) {}

bool CommandBinding::isHeld() const noexcept
{
    return isBound() && kindOf (commandNumber) == CommandKind::state;
}

bool CommandBinding::isValue() const noexcept
{
    return isBound() && kindOf (commandNumber) == CommandKind::value;
}

double CommandBinding::value() const
{
    if (!isBound())
        return 0.0;
    const auto read = static_cast<double> (engine->getParameter (commandNumber));
    return isTurnedRound (commandNumber) ? 1.0 - read : read;
}

bool CommandBinding::isOn() const
{
    return isBound() && engine->getParameter (commandNumber) > 0.0f;
}

void CommandBinding::set (double value) const
{
    if (isBound())
        engine->setParameter (commandNumber, static_cast<float> (value));
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
    // Steps are told apart as a controller's are: from 64 on it goes up.
    set (direction > 0 ? 127.0 : 0.0);
}

double CommandBinding::restValue() const
{
    const auto constant = CommandTable::constant (commandNumber);
    for (const auto& rest : rests)
        if (std::string_view (constant).starts_with (rest.family))
            return rest.value;
    return 0.0;
}

juce::String CommandBinding::name() const
{
    return CommandTable::name (commandNumber);
}

juce::String CommandBinding::text() const
{
    return isBound() ? engine->displayText (commandNumber) : juce::String();
}
