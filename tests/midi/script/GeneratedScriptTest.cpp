#include "EngineFixture.h"
#include "ScriptFixture.h"
#include "midi/mapping/MappingAction.h"
#include "midi/mapping/MidiScriptGenerator.h"

namespace
{
/** The commands whose generated line names another command, a fault that stays. */
int actsAs (int row, MidiControlType type)
{
    if (row >= 5 && row <= 8)
        return 5;
    return row >= 437 && row <= 440 && type == MidiControlType::absolute ? 437 : row;
}

/** Everything that the commands tell. */
std::vector<float> readingsOf (CPlatterdex& engine)
{
    std::vector<float> readings;
    for (int number = 1; number <= CommandTable::commandCount; ++number)
        readings.push_back (engine.getParameter (number));
    return readings;
}
}

/** Each row of a full table is played through the dispatcher of one engine and the generated script of another; afterwards both
    engines read the same. */
class GeneratedScript : public testing::TestWithParam<MidiControlType>
{
};

TEST_P (GeneratedScript, OfAFullTableActsAsTheDispatcher)
{
    MidiMapping byRow, byFault;
    const auto controlOf = [] (int row)
    {
        // Notes first, then controllers: 465 rows on few channels.
        return std::pair { (row % 2 == 0 ? 0x90 : 0xb0) + row / 200, row / 2 % 100 };
    };
    for (int row = 1; row < MidiMapping::rowCount; ++row)
    {
        const auto [status, data] = controlOf (row);
        byRow.setRow (row, { .status = status, .data = data, .controlType = static_cast<int> (GetParam()) });
    }
    EngineFixture dispatched, scripted;
    ScriptFixture f (scripted.engine.get());
    const auto file = f.folder.file ("generated.c");
    ASSERT_TRUE (generateMidiScript (byRow, file));
    ASSERT_TRUE (f.script.loadScript (file));
    for (const auto& told : f.told())
        EXPECT_FALSE (told.startsWith ("Error")) << told;

    MidiMappingDispatcher dispatcher (*dispatched.engine, byFault);
    for (int row = 1; row < MidiMapping::rowCount; ++row)
        for (const int value : { 127, 0, 40 })
        {
            const auto [status, data] = controlOf (row);
            byFault.clear();
            byFault.setRow (actsAs (row, GetParam()), byRow.row (row));
            dispatcher.dispatchMidiMapping (status, data, value);
            f.post (status, data, value);
        }

    const auto expected = readingsOf (*dispatched.engine);
    const auto differing = [&]
    {
        const auto actual = readingsOf (*scripted.engine);
        std::string names;
        for (size_t i = 0; i < expected.size(); ++i)
            if (std::abs (actual[i] - expected[i]) > 1e-5f)
                names += CommandTable::name (static_cast<int> (i) + 1) + ": " + std::to_string (actual[i])
                         + ", not " + std::to_string (expected[i]) + "\n";
        return names;
    };
    EXPECT_TRUE (ScriptFixture::comes ([&] { return differing().empty(); })) << differing();
}

INSTANTIATE_TEST_SUITE_P (ControlTypes, GeneratedScript,
                          testing::Values (MidiControlType::absolute, MidiControlType::inverted,
                                           MidiControlType::encoder, MidiControlType::encoderInverted),
                          [] (const auto& info) { return std::to_string (static_cast<int> (info.param)); });
