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

TEST (OfflineHost, InputSeesEveryBlockAndTheSinkEndsTheRendering)
{
    OfflineRun run (100);
    int blocks = 0;
    run.host->input = [&] (juce::AudioBuffer<float>& inputs, int64_t first)
    {
        EXPECT_EQ (first, run.host->position());
        EXPECT_EQ (inputs.getNumChannels(), CPlatterdex::inputChannels);
        EXPECT_EQ (inputs.getMagnitude (0, inputs.getNumSamples()), 0.0f) << "cleared before";
        inputs.setSample (0, 0, 1.0f);
    };
    run.host->sink = [&blocks] (auto, int) { return ++blocks < 3; };
    EXPECT_FALSE (run.host->render (1000));
    EXPECT_EQ (run.host->position(), 300);
}
