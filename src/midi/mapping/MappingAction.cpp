#include "midi/mapping/MappingAction.h"

#include "engine/CommandTable.h"

namespace
{
constexpr double encoderStep = 0.05, pitchEncoderStep = 0.0005;
constexpr float jogBend = -0.01f, jogScratch = 0.1f;
constexpr double jogCentre = 64.0;

bool followsFader (MappingShape shape)
{
    return shape == MappingShape::continuous || shape == MappingShape::pitch || shape == MappingShape::seek;
}

bool isEncoder (const MidiMappingRow& row)
{
    return row.type() == MidiControlType::encoder || row.type() == MidiControlType::encoderInverted;
}
}

MidiMappingDispatcher::MidiMappingDispatcher (CPlatterdex& e, const MidiMapping& m) : engine (e), mapping (m)
{
}

void MidiMappingDispatcher::dispatchMidiMapping (int status, int data, int value)
{
    mapping.forEachMatch (status, data,
                          [&] (int number, const MidiMappingRow& row)
                          {
                              auto& hits = hitCounts[static_cast<size_t> (number)];
                              hits = hits + 1;
                              if (row.features != MidiControlFeature::none
                                  && followsFader (CommandTable::find (number)->shape))
                                  follow (number, row, data, value);
                              else if (row.data == data)
                                  act (number, row, value);
                          });
}

bool MidiMappingDispatcher::isLastEnough (int status, int data) const
{
    bool isAbsolute = (status & 0xf0) == 0xb0;
    mapping.forEachMatch (status, data,
                          [&] (int number, const MidiMappingRow& row)
                          {
                              isAbsolute = isAbsolute && row.features == MidiControlFeature::none
                                           && followsFader (CommandTable::find (number)->shape)
                                           && (!isEncoder (row)
                                               || CommandTable::find (number)->shape == MappingShape::seek);
                          });
    return isAbsolute;
}

void MidiMappingDispatcher::move (int number, double value)
{
    engine.setParameter (number, static_cast<float> (value));
}

void MidiMappingDispatcher::act (int number, const MidiMappingRow& row, int value)
{
    const auto value01 = value / 127.0;
    const auto isTurned = row.type() != MidiControlType::absolute;
    const auto step =
        (value < 0x40 ? -1.0 : 1.0) * (row.type() == MidiControlType::encoderInverted ? -1.0 : 1.0);
    const auto reading = [&] { return static_cast<double> (engine.getParameter (number)); };
    switch (CommandTable::find (number)->shape)
    {
    case MappingShape::trigger:
        if (value > 0)
            move (number, 1.0);
        break;
    case MappingShape::held:
        move (number, value01); // above 0 a press; the sampler's pads hear how strong it is
        break;
    case MappingShape::continuous:
        move (number, isEncoder (row) ? reading() + step * encoderStep : isTurned ? 1.0 - value01 : value01);
        break;
    case MappingShape::pitch:
        // The fader writes from the top down and reads from the bottom up.
        move (number, isEncoder (row) ? (1.0 - reading()) + step * pitchEncoderStep
                      : isTurned      ? 1.0 - value01
                                      : value01);
        break;
    case MappingShape::resetToCentre:
        if (value > 0)
            move (number, 0.5);
        break;
    case MappingShape::stepped:
        move (number, isTurned ? value : 0x7f - value);
        break;
    case MappingShape::jog:
        if (has (row.features, MidiControlFeature::wheel))
            turnWheel (number, value - jogCentre);
        else
            engine.dispatch (number, static_cast<float> (value - jogCentre), jogBend, jogScratch);
        break;
    case MappingShape::seek:
        move (number, isTurned ? 1.0 - value01 : value01);
        break;
    }
}

void MidiMappingDispatcher::turnWheel (int number, double steps)
{
    const auto index = CommandTable::find (number).deck;
    const auto* deck = engine.decks.deck (index);
    if (deck == nullptr)
        return;
    if (deck->play.on != 0 && deck->jog.scratchOn == 0)
        engine.dispatch (number, static_cast<float> (steps), jogBend, jogScratch);
    else
        engine.transport.spinJog (index, steps * static_cast<double> (jogScratch));
}

void MidiMappingDispatcher::follow (int number, const MidiMappingRow& row, int data, int value)
{
    auto& pickup = pickups[static_cast<size_t> (number)];
    auto position = value / 127.0;
    if (has (row.features, MidiControlFeature::fine))
        position = (row.status & 0xf0) == 0xe0 ? bendPosition (data, value)
                   : data == row.data          ? pickup.takeHigh (value)
                                               : pickup.takeLow (value);
    if (row.type() != MidiControlType::absolute)
        position = 1.0 - position;
    if (has (row.features, MidiControlFeature::takeover))
    {
        if (!pickup.takesOver (position, engine.controlValue (number)))
            return;
        pickup.moved (position);
    }
    move (number, position);
}
