#include "NativeFixture.h"

#include "engine/CommandTable.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cmath>

namespace
{
/** Seconds of each storm; 0, unless somebody asks for more, is a short one of a fixed length. */
int stormSeconds()
{
    return juce::SystemStats::getEnvironmentVariable ("PX_STORM_SECONDS", "0").getIntValue();
}

struct StormFixture : NativeFixture
{
    explicit StormFixture (int model) : NativeFixture (model)
    {
        for (int d = 0; d < 4; ++d)
            loadNoise (d, 2);
    }

    /** Half of the messages are those of the model's own controls, which chance alone would seldom meet. */
    void sendOne (const Model& model)
    {
        const auto& control =
            model.controls[static_cast<size_t> (random.nextInt (static_cast<int> (model.controls.size())))];
        const auto& address = control.at[static_cast<size_t> (random.nextInt (4))];
        const auto isOwn = random.nextBool() && address.isSet();
        handle (isOwn ? address.status : 0x80 + random.nextInt (0x70),
                isOwn && !address.isBend() ? address.data : random.nextInt (128), random.nextInt (128));
    }

    void expectAllInRange()
    {
        for (int number = 1; number <= CommandTable::commandCount; ++number)
        {
            const auto& range = CommandTable::find (number)->range;
            const auto reading = static_cast<double> (engine->getParameter (number));
            const auto followsSync =
                CommandTable::constant (number).starts_with ("PITCH_"); // past its slider
            EXPECT_TRUE (followsSync ? std::isfinite (reading)
                                     : reading >= range.lowest && reading <= range.highest)
                << CommandTable::constant (number) << " " << reading;
        }
        for (int d = 0; d < 4; ++d)
            EXPECT_TRUE (std::isfinite (deck (d).head.position) && std::isfinite (deck (d).head.jog)) << d;
        for (const auto& side : state().deckOfSide)
            EXPECT_LT (side.get(), 4);
    }

    juce::Random random { 7 };
};

class StormOf : public testing::TestWithParam<int>
{
};
}

TEST_P (StormOf, RandomMessagesLeaveAllInRange)
{
    using Clock = std::chrono::steady_clock;
    constexpr int round = 500, shortest = 6;
    StormFixture fixture (GetParam());
    const auto& model = *ModelList::entry (GetParam()).table;
    const auto end = Clock::now() + std::chrono::seconds (stormSeconds());
    int rounds = 0;
    while ((rounds < shortest || Clock::now() < end) && !HasFailure())
    {
        for (int i = 0; i < round; ++i)
            fixture.sendOne (model);
        fixture.tick();
        const auto sound = fixture.render (512);
        for (const auto sample : fixture.channel (sound, 0))
            ASSERT_TRUE (std::isfinite (sample));
        fixture.expectAllInRange();
        ++rounds;
    }
    std::printf ("%2d %-26s %d messages\n", GetParam(), ModelList::entry (GetParam()).name, rounds * round);
}

INSTANTIATE_TEST_SUITE_P (Models, StormOf, testing::ValuesIn (modelsWithTables()));
