#include "midi/native/ModelMapping.h"

#include "engine/CommandTable.h"
#include "midi/native/surface/SurfaceState.h"
#include "midi/native/table/FunctionNumbers.h"

namespace
{
struct Kind
{
    MidiControlType type = MidiControlType::absolute;
    MidiControlFeature features = MidiControlFeature::none;
};

constexpr MidiControlType turned (MidiControlType type) noexcept
{
    switch (type)
    {
    case MidiControlType::absolute:
        return MidiControlType::inverted;
    case MidiControlType::inverted:
        return MidiControlType::absolute;
    case MidiControlType::encoder:
        return MidiControlType::encoderInverted;
    case MidiControlType::encoderInverted:
        return MidiControlType::encoder;
    }
    return type;
}

/** A mapping's encoder steps up from 64 on, as devices do that count from there. */
std::optional<Kind> kindOf (Form form) noexcept
{
    switch (form)
    {
    case Form::press:
    case Form::absolute:
    case Form::centre64:
    case Form::centre63:
        return Kind {};
    case Form::inverted:
    case Form::centreInverted:
        return Kind { MidiControlType::inverted };
    case Form::fine32:
    case Form::bend:
        return Kind { MidiControlType::absolute, MidiControlFeature::fine };
    case Form::bendInverted:
        return Kind { MidiControlType::inverted, MidiControlFeature::fine };
    case Form::centred:
    case Form::sign:
    case Form::eitherCentre:
    case Form::behringer:
        return Kind { MidiControlType::encoder };
    case Form::twosComplement:
        return Kind { MidiControlType::encoderInverted };
    case Form::twosComplementInverted:
        return Kind { MidiControlType::encoder };
    default:
        return {};
    }
}

/** The kind as a command's shape takes it. @returns nothing for what a mapping can't say */
std::optional<Kind> kindFor (const Control& control, const CommandRow& command) noexcept
{
    auto kind = kindOf (control.form);
    if (!kind)
        return {};
    switch (command.shape)
    {
    case MappingShape::stepped: // a mapping's plain type of it counts downwards
        kind->type =
            kind->type == MidiControlType::encoder ? MidiControlType::inverted : MidiControlType::absolute;
        return isRelative (control.form) ? kind : std::nullopt;
    case MappingShape::pitch: // an endless knob turns the written value, which falls as the tempo rises
        if (isRelative (control.form))
            kind->type = turned (kind->type);
        else // no jump of the tempo
            kind->features = kind->features | MidiControlFeature::takeover;
        return kind;
    default:
        return kind;
    }
}

/** A control's command: the wheel's too, which has one without being a plain command. */
int numberFor (const Control& control, int deck)
{
    const auto act = rowOf (control.function.id).act;
    if (act == Act::jog || act == Act::jogBend)
        return control.form == Form::centred ? CommandTable::numberOf ("JOG_", deck) : 0;
    return act == Act::command || act == Act::touch ? commandOf (control.function, deck) : 0;
}
}

void fillMapping (const Model& model, MidiMapping& mapping)
{
    const SurfaceState start;
    for (const auto& control : model.controls)
        for (size_t place = 0; place < control.at.size(); ++place)
        {
            const auto& address = control.at[place];
            const auto deck = start.deckAt (control.decks, place);
            const auto number =
                address.isSet() && start.isIn (control.layer, deck) ? numberFor (control, deck) : 0;
            if (number == 0 || mapping.row (number).isAssigned())
                continue;
            if (const auto kind = kindFor (control, *CommandTable::find (number).row))
                mapping.setRow (number, { .status = address.status,
                                          .data = address.data,
                                          .controlType = static_cast<int32_t> (kind->type),
                                          .features = kind->features });
        }
}

const char* mappingLackOf (const Model& model, const Control& control, size_t place,
                           const MidiMapping& mapping)
{
    const SurfaceState start;
    const auto deck = start.deckAt (control.decks, place);
    const auto& address = control.at[place];
    if (!start.isIn (control.layer, deck))
        return "belongs to another layer";
    const auto number = numberFor (control, deck);
    if (number == 0)
        return "is more than a command, or a state of the surface";
    const auto row = mapping.row (number);
    const auto command = CommandTable::find (number);
    if (!kindFor (control, *command.row))
        return "its form of values is none of a mapping's";
    if (row.status != address.status || row.data != address.data)
        return "its command has another control";
    if (rowOf (control.function.id).act == Act::jog)
        return "a mapping's wheel has constants of its own";
    if (isRelative (control.form))
        return "a mapping makes one step of a message";
    if (command->shape == MappingShape::pitch)
        return "a mapping picks sliders up by a rule of its own";
    if (control.form == Form::centre64 || control.form == Form::centre63
        || control.form == Form::centreInverted)
        return "a mapping's middle is half a step beside the fader's";
    if (rowOf (control.function.id).act == Act::touch && model.jog.touchNeedsScratchMode)
        return "a mapping has no scratch mode";
    return nullptr;
}
