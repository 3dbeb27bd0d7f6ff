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

TEST (MixerCommands, KnobsAreLimitedAndResetToTheirCentre)
{
    EngineFixture fixture;
    const auto expectKnob = [&fixture] (const std::string& constant)
    {
        SCOPED_TRACE (constant);
        for (const auto& [in, out] : { std::pair { 0.25f, 0.25f }, { -3.0f, 0.0f }, { 64.0f, 1.0f } })
        {
            fixture.set (constant.c_str(), in);
            EXPECT_EQ (fixture.get (constant.c_str()), out);
        }
    };
    for (const std::string deck : { "A", "D" })
        for (const std::string knob : { "GAIN_", "EQ_HIGH_", "EQ_MID_", "EQ_LOW_" })
        {
            expectKnob (knob + deck);
            const auto reset = knob + "RESET_" + deck;
            fixture.set (reset.c_str(), 0.0f);
            EXPECT_EQ (fixture.get (reset.c_str()), 1.0f) << reset;
            fixture.set (reset.c_str());
            EXPECT_EQ (fixture.get ((knob + deck).c_str()), 0.5f) << reset;
        }
    for (const auto* fader :
         { "VOLUME_B", "CROSSFADER", "CROSSFADER_CURVE", "MONITOR_VOLUME", "MONITOR_MIX", "MASTER_VOLUME" })
        expectKnob (fader);
    EXPECT_EQ (fixture.get ("GAIN_B"), 0.5f); // the neighbour's knobs stayed where they were
    EXPECT_EQ (fixture.get ("VOLUME_A"), 1.0f);
}

TEST (MixerCommands, ButtonsReachTheirFlagAndNoOther)
{
    EngineFixture fixture;
    const auto& deck = fixture.deck (2);
    auto& settings = fixture.engine->settings;
    const auto flags = [&]
    {
        return std::vector<int> { deck.killHigh,         deck.killMid,
                                  deck.killLow,          settings.deckSetup[2].pfl,
                                  settings.monitorSplit, settings.monitorOverdrive };
    };
    const char* const buttons[] { "EQ_HIGH_KILL_C", "EQ_MID_KILL_C",       "EQ_LOW_KILL_C",
                                  "PFL_C",          "MONITOR_PHONE_SPLIT", "MONITOR_OVERDRIVE" };
    for (size_t i = 0; i < std::size (buttons); ++i)
    {
        std::vector<int> expected (std::size (buttons));
        fixture.set (buttons[i]);
        expected[i] = 1;
        EXPECT_EQ (flags(), expected) << buttons[i];
        EXPECT_EQ (fixture.get (buttons[i]), 1.0f);
        fixture.set (buttons[i]);
        EXPECT_EQ (fixture.get (buttons[i]), 0.0f);
    }

    EXPECT_EQ (fixture.get ("CROSSFADER_ASSIGN_LEFT_C"), 1.0f);
    fixture.set ("CROSSFADER_ASSIGN_RIGHT_C");
    EXPECT_EQ (fixture.get ("CROSSFADER_ASSIGN_LEFT_C"), 0.0f);
    EXPECT_EQ (fixture.get ("CROSSFADER_ASSIGN_RIGHT_C"), 1.0f);

    for (const auto& [press, punch, cut] : { std::tuple { "PUNCH_C", 1.0f, 0.0f },
                                             { "CUT_C", 0.0f, 1.0f },
                                             { "PUNCH_C", 1.0f, 0.0f },
                                             { "PUNCH_C", 0.0f, 0.0f },
                                             { "CUT_C", 0.0f, 1.0f },
                                             { "CUT_C", 0.0f, 0.0f } })
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

TEST (Mixer, NoControlOfAStripClicks)
{
    struct Jump
    {
        const char* command;
        float value, level;
    };
    Desk desk;
    desk.hold (0.5f, 22'050);
    const auto largest = 0.5 * (1.0 - std::exp (-1.0 / (0.005 * EngineFixture::rate))) + 1e-6;
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
        EXPECT_NEAR (tail (out, 0).back(), level, 1e-6) << command;
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
}

TEST (Mixer, MetersAndMonitorTakeTheMasterAfterTheLimiter)
{
    Desk desk;
    for (int d = 0; d < deckCount; ++d)
        desk.deck (d).volume = 1.0;
    desk.set ("MONITOR_MIX", 1.0f);
    desk.set ("MONITOR_VOLUME", 0.5f);
    auto out = desk.hold (0.75f, 8192, { 0, 1, 2 });
    EXPECT_NEAR (tail (out, 0).back(), 1.0, 1e-4);
    EXPECT_NEAR (tail (out, 2).back(), 0.25, 1e-4);
    EXPECT_EQ (desk.engine->getParameter (1005),
               std::min (1.0f, static_cast<float> (Signals::peak (tail (out, 0, 256)))));
    EXPECT_NEAR (desk.engine->getParameter (1001), 0.75, 1e-4);

    // The cue of three decks at full level may go beyond 1, the overdrive holds it.
    desk.set ("MONITOR_VOLUME", 1.0f);
    desk.set ("MONITOR_MIX", 0.0f);
    for (const auto* pfl : { "PFL_A", "PFL_B", "PFL_C" })
        desk.set (pfl);
    EXPECT_NEAR (tail (desk.hold (0.75f, 8192, { 0, 1, 2 }), 2).back(), 2.25, 1e-4);
    desk.set ("MONITOR_OVERDRIVE");
    EXPECT_NEAR (tail (desk.hold (0.75f, 8192, { 0, 1, 2 }), 2).back(), Monitor::overdriven (2.25), 1e-4);
    desk.set ("MONITOR_OVERDRIVE");
    desk.set ("MONITOR_PHONE_SPLIT");
    desk.set ("MASTER_VOLUME", 0.2f);
    desk.hold (0.75f, 44'100, { 0, 1, 2 }); // the limiter lets go
    out = desk.hold (0.75f, 8192, { 0, 1, 2 });
    EXPECT_NEAR (tail (out, 2).back(), 2.25, 1e-4);
    EXPECT_NEAR (tail (out, 3).back(), 0.45, 1e-4);
    EXPECT_NEAR (desk.engine->getParameter (1006), 0.45, 1e-4);
    EXPECT_NEAR (desk.get ("MASTER_VOLUME"), 0.2f, 1e-7);
    desk.hold (0.0f, 22'050);
    EXPECT_EQ (desk.engine->getParameter (1005), 0.0f);
}

TEST (Mixer, ATrackKeepsItsEqualiserAndItsFaderOverALoad)
{
    EngineFixture fixture;
    fixture.set ("EQ_LOW_KILL_A");
    fixture.set ("EQ_HIGH_A", 0.1f);
    fixture.set ("VOLUME_A", 0.7f);
    fixture.loadNoise (0, 2);
    EXPECT_EQ (fixture.get ("EQ_LOW_KILL_A"), 1.0f);
    EXPECT_EQ (fixture.get ("EQ_HIGH_A"), 0.1f);
    EXPECT_EQ (fixture.get ("VOLUME_A"), 0.7f);
    fixture.set ("PLAY_PAUSE_A");
    const auto out = fixture.render (22'050);
    EXPECT_GT (Signals::rms (tail (out, 0)), 0.01);
}
