#include "EngineFixture.h"
#include "mixer/Monitor.h"
#include "shared/Signals.h"

#include <gtest/gtest.h>

namespace
{
/** An engine whose four decks let their inputs through, so that the mixer can be given any signal. */
struct Desk : EngineFixture
{
    Desk()
    {
        for (auto& setup : engine->settings.deckSetup)
            setup.lineThrough = 1;
    }

    /** Lets the same signal into both sides of some decks. @returns all outputs */
    juce::AudioBuffer<float> play (std::span<const float> signal, std::initializer_list<int> decks = { 0 },
                                   int block = 256)
    {
        const auto frames = static_cast<int> (signal.size());
        juce::AudioBuffer<float> audio (CPlatterdex::outputChannels, frames);
        audio.clear();
        for (const auto deck : decks)
            for (int side = 0; side < 2; ++side)
                audio.copyFrom (2 * deck + side, 0, signal.data(), frames);
        for (int done = 0; done < frames; done += block)
        {
            juce::AudioBuffer<float> piece (audio.getArrayOfWritePointers(), CPlatterdex::outputChannels,
                                            done, std::min (block, frames - done));
            process (piece);
        }
        return audio;
    }

    juce::AudioBuffer<float> hold (float level, int frames = 8192, std::initializer_list<int> decks = { 0 })
    {
        return play (std::vector<float> (static_cast<size_t> (frames), level), decks);
    }
};

std::span<const float> tail (const juce::AudioBuffer<float>& audio, int channel, int frames = 1000)
{
    return EngineFixture::channel (audio, channel).last (static_cast<size_t> (frames));
}
}

TEST (MixerCommands, ResetsPutTheirKnobToItsRest)
{
    EngineFixture fixture;
    for (const auto& [knob, reset] : { std::pair { "GAIN_A", "GAIN_RESET_A" },
                                       { "EQ_HIGH_D", "EQ_HIGH_RESET_D" },
                                       { "EQ_MID_D", "EQ_MID_RESET_D" },
                                       { "EQ_LOW_D", "EQ_LOW_RESET_D" },
                                       { "FX_DRY_WET_GROUP_B", "FX_DRY_WET_RESET_GROUP_B" } })
    {
        fixture.set (knob, 0.25f);
        fixture.set (reset, 0.0f);
        EXPECT_EQ (fixture.get (reset), 0.25f);
        fixture.set (reset);
        const auto command = CommandTable::find (CommandTable::numberOf (knob));
        EXPECT_EQ (static_cast<double> (fixture.get (knob)), command->rest) << knob;
    }
}

TEST (MixerCommands, PunchAndCutTakeEachOthersPlace)
{
    EngineFixture fixture;
    for (const auto& [press, punch, cut] : { std::tuple { "PUNCH_C", 1.0f, 0.0f },
                                             { "CUT_C", 0.0f, 1.0f },
                                             { "PUNCH_C", 1.0f, 0.0f },
                                             { "PUNCH_C", 0.0f, 0.0f } })
    {
        fixture.set (press);
        EXPECT_EQ (fixture.get ("PUNCH_C"), punch);
        EXPECT_EQ (fixture.get ("CUT_C"), cut);
    }
}

TEST (MixerCommands, TheCrossfaderFadesByItselfUntilAHandTakesIt)
{
    EngineFixture fixture;
    fixture.engine->settings.automixFadeSeconds = 1;
    fixture.set ("AUTO_CROSSFADER_RIGHT");
    fixture.render (11'025);
    EXPECT_NEAR (fixture.get ("CROSSFADER"), 0.75f, 1e-4f);
    EXPECT_EQ (fixture.get ("AUTO_CROSSFADER_RIGHT"), 1.0f);
    fixture.set ("AUTO_CROSSFADER_LEFT");
    EXPECT_EQ (fixture.get ("AUTO_CROSSFADER_RIGHT"), 0.0f);
    fixture.render (22'050);
    EXPECT_NEAR (fixture.get ("CROSSFADER"), 0.25f, 1e-4f);
    fixture.set ("CROSSFADER", 0.3f);
    EXPECT_EQ (fixture.get ("AUTO_CROSSFADER_LEFT"), 0.0f);
    fixture.render (22'050);
    EXPECT_EQ (fixture.get ("CROSSFADER"), 0.3f);
    fixture.set ("AUTO_CROSSFADER_LEFT");
    fixture.render (22'050);
    EXPECT_EQ (fixture.get ("CROSSFADER"), 0.0f);
    EXPECT_EQ (fixture.get ("AUTO_CROSSFADER_LEFT"), 0.0f);
}

TEST (Mixer, EveryControlOfAStripTakesFiveMilliseconds)
{
    struct Jump
    {
        const char* command;
        float value, level;
    };
    Desk desk;
    EXPECT_EQ (desk.hold (0.5f, 22'050).getSample (0, 0), 0.0f) << "a strip opens from nothing";
    constexpr int timeConstant = 220;
    const auto largest = 0.5 * (1.0 - std::exp (-1.0 / (0.005 * EngineFixture::rate))) + 1e-6;
    double before = 0.5;
    for (const auto& [command, value, level] : { Jump { "VOLUME_A", 0.0f, 0.0f },
                                                 { "VOLUME_A", 1.0f, 0.5f },
                                                 { "CROSSFADER", 1.0f, 0.0f },
                                                 { "PUNCH_A", 1.0f, 0.5f },
                                                 { "CUT_A", 1.0f, 0.0f },
                                                 { "CUT_A", 1.0f, 0.0f },
                                                 { "CROSSFADER", 0.5f, 0.5f },
                                                 { "GAIN_A", 0.0f, 0.0f } })
    {
        desk.set (command, value);
        const auto out = desk.hold (0.5f, 22'050);
        for (const int channel : { 0, 1, 4, 5 })
            EXPECT_LE (Signals::largestStep (EngineFixture::channel (out, channel)), largest) << command;
        EXPECT_NEAR (out.getSample (4, timeConstant), level + (before - level) * std::exp (-1.0), 0.003)
            << command;
        EXPECT_NEAR (tail (out, 0).back(), level, 1e-6) << command;
        before = level;
    }
}

TEST (Mixer, TheCueIsHeardBeforeTheFaderAndAfterTheEqualiser)
{
    Desk desk;
    desk.set ("VOLUME_B", 0.0f);
    desk.set ("GAIN_B", 0.25f);
    desk.hold (0.5f);
    auto out = desk.hold (0.5f, 8192, { 1 });
    EXPECT_EQ (Signals::peak (tail (out, 2)), 0.0);
    desk.set ("PFL_B");
    out = desk.hold (0.5f, 8192, { 1 });
    EXPECT_NEAR (tail (out, 2).back(), 0.25, 1e-6);
    EXPECT_NEAR (tail (out, 3).back(), 0.25, 1e-6);
    EXPECT_EQ (Signals::peak (tail (out, 0)), 0.0);
    EXPECT_EQ (Signals::peak (tail (out, 6)), 0.0) << "the deck's own pair is after the fader";
    EXPECT_EQ (desk.engine->getParameter (1002), 0.0f);
    for (const auto* kill : { "EQ_LOW_KILL_B", "EQ_MID_KILL_B", "EQ_HIGH_KILL_B" })
        desk.set (kill);
    out = desk.hold (0.5f, 8192, { 1 }); // the band split rings out
    for (const int channel : { 2, 3, 6, 7 })
        EXPECT_EQ (Signals::peak (tail (out, channel)), 0.0);
    for (const auto* kill : { "EQ_LOW_KILL_B", "EQ_MID_KILL_B", "EQ_HIGH_KILL_B" })
        desk.set (kill);
    EXPECT_EQ (desk.hold (0.0f, 8192, { 1 }).getMagnitude (2, 0, 8192), 0.0f) << "nothing of the old";
}

TEST (Mixer, MetersAndMonitorTakeTheMasterAfterTheLimiter)
{
    Desk desk;
    const auto hold = [&] { return desk.hold (0.75f, 8192, { 0, 1, 2 }); };
    const auto meter = [&] (int number) { return desk.engine->getParameter (number); };
    desk.set ("MONITOR_MIX", 1.0f);
    desk.set ("MONITOR_VOLUME", 0.5f);
    auto out = hold();
    EXPECT_NEAR (tail (out, 0).back(), 1.0, 1e-4);
    EXPECT_NEAR (tail (out, 2).back(), 0.25, 1e-4);
    EXPECT_EQ (meter (1005), std::min (1.0f, static_cast<float> (Signals::peak (tail (out, 0, 256)))));
    EXPECT_NEAR (meter (1001), 0.75, 1e-4);

    // The cue of three decks at full level may go beyond 1, the overdrive holds it.
    desk.set ("MONITOR_VOLUME", 1.0f);
    desk.set ("MONITOR_MIX", 0.0f);
    for (const auto* command : { "PFL_A", "PFL_B", "PFL_C", "MONITOR_OVERDRIVE" })
        desk.set (command);
    EXPECT_NEAR (tail (hold(), 2).back(), Monitor::overdriven (2.25), 1e-4);
    desk.set ("MONITOR_OVERDRIVE");
    desk.set ("MONITOR_PHONE_SPLIT");
    desk.set ("MASTER_VOLUME", 0.2f);
    desk.hold (0.75f, 44'100, { 0, 1, 2 }); // the limiter lets go
    out = hold();
    EXPECT_NEAR (tail (out, 2).back(), 2.25, 1e-4);
    EXPECT_NEAR (tail (out, 3).back(), 0.45, 1e-4);
    EXPECT_NEAR (meter (1006), 0.45, 1e-4);
    desk.hold (0.0f, 22'050);
    EXPECT_EQ (meter (1005), 0.0f);
}
