#include "OfflineRun.h"

TEST (OfflineHost, TimeMovesByRenderedFramesOnly)
{
    OfflineRun run (1000);
    const auto& world = run.host->engine().environment;
    EXPECT_EQ (world.clock(), 0u);
    EXPECT_TRUE (run.host->render (3 * runRate / 2));
    EXPECT_EQ (run.host->position(), 3 * runRate / 2);
    EXPECT_EQ (world.clock(), 1500u);
    EXPECT_EQ (world.wallClock().formatted ("%Y-%m-%d %H:%M:%S"), "2000-01-01 00:00:01");
    EXPECT_EQ (run.master.size(), static_cast<size_t> (3 * runRate / 2));
}

TEST (OfflineHost, EngineKnowsItsRateBeforeTheFirstBlock)
{
    const TemporaryFolder folder;
    OfflineHost::Options options;
    options.root = folder;
    options.sampleRate = 96000.0;
    OfflineHost host (options);
    EXPECT_EQ (host.engine().decks.engineRate, 96000.0);
    EXPECT_EQ (host.position(), 0);
}

TEST (OfflineHost, InputsReachTheirDecks)
{
    OfflineRun run (500);
    auto& engine = run.host->engine();
    for (auto& setup : engine.settings.deckSetup)
        setup.lineThrough = 1;
    EXPECT_TRUE (run.host->render (runRate)); // the faders open

    run.host->input = [] (juce::AudioBuffer<float>& inputs, int64_t first)
    {
        ASSERT_EQ (inputs.getNumChannels(), CPlatterdex::inputChannels);
        for (int channel = 0; channel < 8; ++channel)
            for (int i = 0; i < inputs.getNumSamples(); ++i)
                inputs.setSample (channel, i,
                                  static_cast<float> (channel + 1) / 16.0f
                                      + static_cast<float> (first + i) / 65536.0f);
    };
    constexpr int64_t bandSplitSettles = runRate + 600;
    int64_t frame = runRate;
    run.host->sink = [&frame] (const float* const* channels, int frames)
    {
        for (int i = 0; i < frames; ++i, ++frame)
            for (int side = 0; side < 2 && frame >= bandSplitSettles; ++side)
                EXPECT_NEAR (channels[4 + side][i],
                             static_cast<float> (side + 1) / 16.0f + static_cast<float> (frame) / 65536.0f,
                             0.002);
        return true;
    };
    EXPECT_TRUE (run.host->render (1234));
    EXPECT_EQ (frame, runRate + 1234);
}

TEST (OfflineHost, SinkEndsTheRendering)
{
    OfflineRun run (100);
    int blocks = 0;
    run.host->sink = [&blocks] (auto, int) { return ++blocks < 3; };
    EXPECT_FALSE (run.host->render (1000));
    EXPECT_EQ (run.host->position(), 300);
}

TEST (HostPosition, CountsSecondsAndBeatsOverTempoChanges)
{
    HostPosition transport (48000.0);
    const auto expectAt = [&transport] (double seconds, double beats, bool isPlaying)
    {
        const auto position = transport.getPosition();
        ASSERT_TRUE (position.hasValue());
        EXPECT_NEAR (*position->getTimeInSeconds(), seconds, 1e-9);
        EXPECT_NEAR (*position->getPpqPosition(), beats, 1e-9);
        EXPECT_EQ (position->getIsPlaying(), isPlaying);
    };
    transport.advance (48000);
    expectAt (0.0, 0.0, false);
    transport.play();
    transport.advance (48000);
    expectAt (1.0, 2.0, true);
    transport.setBpm (60.0);
    transport.advance (24000);
    expectAt (1.5, 2.5, true);
    transport.stop();
    transport.advance (24000);
    expectAt (1.5, 2.5, false);
    transport.seek (10.0);
    expectAt (10.0, 10.0, false);
    EXPECT_EQ (*transport.getPosition()->getTimeInSamples(), 480000);
}
