#include "MidiFixture.h"

#include <gtest/gtest.h>

namespace
{
/** A write that a message must lead to. */
struct Write
{
    int number;
    double value;
    float arg1 = 1.0f, arg2 = 1.0f;
};

/** The write of a row's shape, control type and value. @param reading   of the command before it */
std::optional<Write> expected (int row, int type, int value, double reading)
{
    const auto straight = value / 127.0, turned = 1.0 - straight;
    const auto step = value < 64 ? -1.0 : 1.0;
    const auto whenPressed = [&] (double written) -> std::optional<Write> {
        return value > 0 ? std::optional (Write { row, written }) : std::nullopt;
    };
    const std::array continuous { straight, turned, reading + step * 0.05, reading - step * 0.05 };
    const std::array pitch { straight, turned, 1.0 - reading + step * 0.0005, 1.0 - reading - step * 0.0005 };
    switch (CommandTable::find (row)->shape)
    {
    case MappingShape::trigger:
        return whenPressed (1.0);
    case MappingShape::resetToCentre:
        return whenPressed (0.5);
    case MappingShape::held:
        return Write { row, straight };
    case MappingShape::continuous:
        return Write { row, continuous[static_cast<size_t> (type)] };
    case MappingShape::pitch:
        return Write { row, pitch[static_cast<size_t> (type)] };
    case MappingShape::stepped:
        return Write { row, static_cast<double> (type == 0 ? 127 - value : value) };
    case MappingShape::jog:
        return Write { row, value - 64.0, -0.01f, 0.1f };
    case MappingShape::seek:
        return Write { row, type == 0 ? straight : turned };
    }
    return {};
}

/** All that a command can read, and the jogs, which can't be read. */
std::vector<double> stateOf (CPlatterdex& engine)
{
    std::vector<double> state;
    for (int number = 1; number <= CommandTable::commandCount; ++number)
        state.push_back (static_cast<double> (engine.getParameter (number)));
    for (const auto& deck : engine.decks.decks)
        state.insert (state.end(), { deck->head.jog, deck->head.bend, deck->heardPosition() });
    return state;
}
}

TEST (MappingRows, EveryRowActsByItsShapeInAllControlTypes)
{
    MidiFixture mapped;
    EngineFixture direct;
    for (EngineFixture* fixture : { static_cast<EngineFixture*> (&mapped), &direct })
        for (int deck = 0; deck < deckCount; ++deck)
            fixture->loadNoise (deck, 2);

    std::map<MappingShape, int> shapes;
    for (int row = 1; row <= CommandTable::commandCount; ++row)
    {
        const auto shape = CommandTable::find (row)->shape;
        ++shapes[shape];
        for (int type = 0; type < 4; ++type)
            for (const int value : { 127, 0, 30, 64 })
            {
                const auto write =
                    expected (row, type, value, static_cast<double> (direct.engine->getParameter (row)));
                mapped.midi->control.mapping.setRow (row, { 0x9f, 99, type });
                mapped.handle (0x9f, 99, value);
                if (write)
                    direct.engine->dispatch (write->number, static_cast<float> (write->value), write->arg1,
                                             write->arg2);
                ASSERT_EQ (stateOf (*mapped.engine), stateOf (*direct.engine))
                    << CommandTable::name (row) << ", type " << type << ", value " << value;
            }
        mapped.midi->control.mapping.setRow (row, {});
    }
    EXPECT_EQ (shapes[MappingShape::stepped], 12);
    EXPECT_EQ (shapes[MappingShape::pitch], 4);
    EXPECT_EQ (shapes[MappingShape::resetToCentre], 4);
    EXPECT_EQ (shapes[MappingShape::jog], 4);
    EXPECT_EQ (shapes[MappingShape::seek], 4);
    EXPECT_EQ (shapes[MappingShape::trigger], 315);
    EXPECT_EQ (shapes[MappingShape::held], 36);
    EXPECT_EQ (shapes[MappingShape::continuous], 86);
}

TEST (MappingRows, PadsOfTheSamplerHearTheVelocity)
{
    MidiFixture fixture;
    auto& sampler = fixture.engine->sampler;
    sampler.loadSample (2, EncodedFiles::writeWav (EncodedFiles::makeNoise (2, 44100, 44100.0), 44100.0,
                                                   fixture.folder.file ("hit.wav")));
    sampler.waitUntilIdle();
    sampler.setFollowsVelocity (2, true);
    sampler.setPlayMode (2, retriggerMode);
    fixture.midi->control.mapping.setRow (CommandTable::numberOf ("SAMPLER_PLAY_PAD_3"), { 0x99, 38, 0 });
    for (const int velocity : { 1, 40, 127 })
    {
        fixture.handle (0x99, 38, velocity);
        EXPECT_FLOAT_EQ (sampler.desk.slots[2].pressLevel, static_cast<float> (velocity) / 127.0f);
    }
}

TEST (MappingRows, AllRowsOfOneControlAct)
{
    MidiFixture fixture;
    for (const auto* constant : { "VOLUME_A", "VOLUME_D", "CROSSFADER" })
        fixture.midi->control.mapping.setRow (CommandTable::numberOf (constant), { 0xe3, 5 });
    fixture.handle (0xe3, 5, 0);
    fixture.handle (0xe3, 6, 127);
    EXPECT_EQ (fixture.get ("VOLUME_A") + fixture.get ("VOLUME_D") + fixture.get ("CROSSFADER"), 0.0f);
}
