#include "midi/mapping/MidiMapping.h"

#include "engine/CommandTable.h"
#include "support/language/Translate.h"

#include <algorithm>

MidiMappingRow MidiMapping::unpack (uint32_t word) noexcept
{
    return { statusOf (word), dataOf (word), static_cast<int32_t> (word >> 16 & 0xffu), 0,
             static_cast<MidiControlFeature> (word >> 24) };
}

MidiMappingRow MidiMapping::row (int number) const noexcept
{
    return isCommand (number) ? unpack (words[static_cast<size_t> (number)]) : MidiMappingRow {};
}

void MidiMapping::setRow (int number, const MidiMappingRow& row) noexcept
{
    if (!isCommand (number))
        return;
    const auto byte = [] (int value, int highest)
    { return static_cast<uint32_t> (std::clamp (value, 0, highest)); };
    words[static_cast<size_t> (number)] = byte (row.status, 255) | byte (row.data, 255) << 8
                                          | byte (row.controlType, 3) << 16
                                          | (static_cast<uint32_t> (row.features) & 7u) << 24;
    changes += 1;
}

void MidiMapping::clear() noexcept
{
    for (auto& word : words)
        word = 0u;
    changes += 1;
}

std::vector<MidiControlChoice> controlChoices (int row)
{
    using Type = MidiControlType;
    using Feature = MidiControlFeature;
    std::vector<MidiControlChoice> choices { { N_ ("Default"), Type::absolute, Feature::none },
                                             { N_ ("Invert"), Type::inverted, Feature::none },
                                             { N_ ("Encoder"), Type::encoder, Feature::none },
                                             { N_ ("Encoder Invert"), Type::encoderInverted,
                                               Feature::none } };
    const auto command = CommandTable::find (row);
    if (!command)
        return choices;
    switch (command->shape)
    {
    case MappingShape::continuous:
    case MappingShape::pitch:
        choices.insert (
            choices.end(),
            { { N_ ("Soft Takeover"), Type::absolute, Feature::takeover },
              { N_ ("Soft Takeover Invert"), Type::inverted, Feature::takeover },
              { N_ ("14-bit Soft Takeover"), Type::absolute, Feature::fine | Feature::takeover },
              { N_ ("14-bit Soft Takeover Invert"), Type::inverted, Feature::fine | Feature::takeover } });
        [[fallthrough]];
    case MappingShape::seek:
        choices.insert (choices.end(), { { N_ ("14-bit"), Type::absolute, Feature::fine },
                                         { N_ ("14-bit Invert"), Type::inverted, Feature::fine } });
        break;
    case MappingShape::jog:
        choices.push_back ({ N_ ("Wheel without touch"), Type::absolute, Feature::wheel });
        break;
    case MappingShape::trigger:
    case MappingShape::held:
    case MappingShape::resetToCentre:
    case MappingShape::stepped:
        break;
    }
    return choices;
}
