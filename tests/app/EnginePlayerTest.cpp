#include "app/audio/EnginePlayer.h"
#include "app/audio/SilentDevice.h"
#include "engine/CPlatterdex.h"
#include "shared/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <numeric>
#include <thread>

namespace
{
/** Writes 100 times the number of each output channel, plus a count of frames; keeps what came in. */
class Numbering : public juce::AudioProcessor
{
public:
    Numbering() { setPlayConfigDetails (10, 14, 48000.0, 256); }

    void processBlock (juce::AudioBuffer<float>& buffer, juce::MidiBuffer&) override
    {
        lockWasHeld = lockWasHeld && !othersGet (getCallbackLock());
        blocks.push_back (buffer.getNumSamples());
        for (const auto end = BlockTimes::now() + busyNanoseconds; BlockTimes::now() < end;)
            ;
        for (int i = 0; i < 10; ++i)
            for (int s = 0; s < buffer.getNumSamples(); ++s)
                inputs[static_cast<size_t> (i)].push_back (buffer.getSample (i, s));
        for (int i = 0; i < 14; ++i)
            for (int s = 0; s < buffer.getNumSamples(); ++s)
                buffer.setSample (i, s, static_cast<float> (100 * (i + 1) + (frame + s) % 100));
        frame += buffer.getNumSamples();
    }
    void prepareToPlay (double, int) override {}
    void releaseResources() override {}
    const juce::String getName() const override { return {}; }
    double getTailLengthSeconds() const override { return 0.0; }
    bool acceptsMidi() const override { return false; }
    bool producesMidi() const override { return false; }
    juce::AudioProcessorEditor* createEditor() override { return nullptr; }
    bool hasEditor() const override { return false; }
    int getNumPrograms() override { return 1; }
    int getCurrentProgram() override { return 0; }
    void setCurrentProgram (int) override {}
    const juce::String getProgramName (int) override { return {}; }
    void changeProgramName (int, const juce::String&) override {}
    void getStateInformation (juce::MemoryBlock&) override {}
    void setStateInformation (const void*, int) override {}

    std::array<std::vector<float>, 10> inputs;
    std::vector<int> blocks;
    bool lockWasHeld = true;
    int frame = 0;
    int64_t busyNanoseconds = 0; ///< of each block

private:
    static bool othersGet (const juce::CriticalSection& lock)
    {
        bool got = false;
        std::thread (
            [&]
            {
                got = lock.tryEnter();
                if (got)
                    lock.exit();
            })
            .join();
        return got;
    }
};

struct PlayerBench
{
    explicit PlayerBench (int blockFrames = 256)
    {
        device.open ({}, {}, 48000.0, blockFrames);
        player.audioDeviceAboutToStart (&device);
    }

    /** One call of the device. @returns the outputs, full of 9999 before */
    std::vector<std::vector<float>> play (int inputCount, int outputCount, int frames, int missingInput = -1,
                                          int missingOutput = -1)
    {
        std::vector<std::vector<float>> in (static_cast<size_t> (inputCount)),
            out (static_cast<size_t> (outputCount));
        std::vector<const float*> inPointers;
        std::vector<float*> outPointers;
        for (int i = 0; i < inputCount; ++i)
        {
            auto& channel = in[static_cast<size_t> (i)];
            channel.assign (static_cast<size_t> (frames), static_cast<float> (i + 1));
            inPointers.push_back (i == missingInput ? nullptr : channel.data());
        }
        for (int i = 0; i < outputCount; ++i)
        {
            auto& channel = out[static_cast<size_t> (i)];
            channel.assign (static_cast<size_t> (frames), 9999.0f);
            outPointers.push_back (i == missingOutput ? nullptr : channel.data());
        }
        player.audioDeviceIOCallbackWithContext (inPointers.data(), inputCount, outPointers.data(),
                                                 outputCount, frames, {});
        return out;
    }

    Numbering engine;
    Relaxed<int8_t> split { 0 };
    EnginePlayer player { engine, &split };
    SilentDevice device;
};
}

TEST (EnginePlayer, OutputsAreTheEnginesFirstOnesInOrder)
{
    for (const auto count : { 0, 2, 3, 14, 20 })
    {
        SCOPED_TRACE (count);
        PlayerBench bench;
        const auto out = bench.play (2, count, 64);
        for (size_t i = 0; i < out.size(); ++i)
            EXPECT_EQ (out[i][5], i < 14 ? static_cast<float> (100 * (i + 1) + 5) : 0.0f) << i;
        EXPECT_TRUE (bench.engine.lockWasHeld);
    }
    EXPECT_EQ (PlayerBench().play (0, 1, 32)[0][3], 153.0f)
        << "a single output carries both sides of the master";
}

TEST (EnginePlayer, TwoOutputsCarryTheSplitMonitorWhereThatIsWanted)
{
    for (const auto& [maySplit, isSplit] : { std::pair { 1, 1 }, { 1, 0 }, { 0, 1 } })
    {
        PlayerBench bench;
        bench.player.maySplit = static_cast<int8_t> (maySplit);
        bench.split = static_cast<int8_t> (isSplit);
        const auto out = bench.play (0, 2, 300);
        const auto isWanted = maySplit + isSplit == 2;
        EXPECT_EQ (out[0][299], isWanted ? 399.0f : 199.0f);
        EXPECT_EQ (out[1][299], isWanted ? 499.0f : 299.0f);
        for (size_t i = 0; i < 100; ++i) // the numbers themselves step at 100
            ASSERT_LE (out[0][i + 1] - out[0][i], isWanted && i < 99 ? 4.0f : 400.0f) << "glides over 5 ms";
        EXPECT_EQ (bench.play (0, 4, 3)[1][0], 200.0f) << "four outputs have both";
    }
}

TEST (EnginePlayer, AnyPairOfOutputsCarriesWhatIsChosenAndFadesOver)
{
    PlayerBench bench;
    auto& pairs = bench.player.pairs;
    pairs.setSource (0, 6);
    pairs.setSource (1, 0);
    pairs.setSource (2, 0); // one source on two pairs, for a booth
    pairs.setSource (3, OutputPairs::silent);
    const auto faded = bench.play (0, 14, 600);
    const auto after = bench.play (0, 14, 10);
    const std::array<int, 7> carried { 6, 0, 0, -1, 4, 5, 6 };
    for (size_t channel = 0; channel < after.size(); ++channel)
    {
        const auto source = carried[channel / 2];
        const auto wanted =
            source < 0 ? 0.0f : static_cast<float> (100 * (2 * source + static_cast<int> (channel % 2) + 1));
        EXPECT_EQ (after[channel][0], wanted) << channel;
    }
    for (const auto channel : { 0u, 2u, 6u })
        for (size_t i = 0; i + 1 < 600; ++i)
        {
            const auto step = std::abs (faded[channel][i + 1] - faded[channel][i]);
            ASSERT_LE (i % 100 == 99 ? 0.0f : step, 16.0f) << channel << " " << i; // the numbers step at 100
        }
    pairs.setSource (3, 3);
    EXPECT_EQ (bench.play (0, 14, 690)[6][689], 799.0f) << "out of silence again";

    PlayerBench mono;
    mono.player.pairs.setSource (0, 1);
    EXPECT_EQ (mono.play (0, 1, 600)[0][599], 449.0f) << "the mean of the chosen pair";
    PlayerBench two;
    two.player.maySplit = two.split = 1;
    two.player.pairs.setSource (0, 6);
    EXPECT_EQ (two.play (0, 2, 600)[1][599], 1499.0f) << "only the master is split";
}

TEST (EnginePlayer, TheTonePlaysOnItsPairAloneFirstLeftThenRight)
{
    PlayerBench bench;
    for (int pair = 0; pair < OutputPairs::count; ++pair)
        bench.player.pairs.setSource (pair, OutputPairs::silent);
    bench.play (0, 14, 600);
    bench.player.pairs.playTone (2);
    constexpr int frames = 48000 * 13 / 10, side = 48000 * 6 / 10;
    const auto out = bench.play (0, 14, frames);
    const auto peak = [&out] (size_t channel, int from, int to)
    {
        auto largest = 0.0f;
        for (int i = from; i < to; ++i)
            largest = std::max (largest, std::abs (out[channel][static_cast<size_t> (i)]));
        return largest;
    };
    for (const auto channel : { 0u, 1u, 2u, 3u, 6u, 7u, 8u, 9u, 10u, 11u, 12u, 13u })
        EXPECT_EQ (peak (channel, 0, frames), 0.0f) << channel;
    EXPECT_NEAR (peak (4, 0, side), 0.1f, 0.001f);
    EXPECT_EQ (peak (5, 0, side), 0.0f);
    EXPECT_EQ (peak (4, side, frames), 0.0f);
    EXPECT_NEAR (peak (5, side, 2 * side), 0.1f, 0.001f);
    EXPECT_EQ (peak (5, 2 * side, frames), 0.0f) << "it ends";
    auto crossings = 0;
    for (size_t i = 1; i < side; ++i)
        crossings += (out[4][i - 1] < 0.0f) != (out[4][i] < 0.0f) ? 1 : 0;
    EXPECT_NEAR (crossings, 2 * 440 * 0.6, 2);
    for (size_t i = 1; i < frames; ++i)
        ASSERT_LE (std::abs (out[4][i] - out[4][i - 1]), 0.1 * 2 * 3.15 * 440 / 48000) << "clicks at " << i;
}

TEST (EnginePlayer, InputsArriveInOrderAndMissingOnesAreSilent)
{
    for (const auto count : { 0, 1, 2, 10, 16 })
    {
        SCOPED_TRACE (count);
        PlayerBench bench;
        bench.play (count, 2, 16, 0, 1);
        for (size_t i = 0; i < 10; ++i)
            EXPECT_EQ (bench.engine.inputs[i][15],
                       i > 0 && static_cast<int> (i) < count ? static_cast<float> (i + 1) : 0.0f)
                << i;
    }
}

TEST (EnginePlayer, AnyBlockSizeIsPlayedWholeWhateverWasAnnounced)
{
    PlayerBench bench;
    int frame = 0;
    for (const auto frames : { 1, 255, 256, 257, 5000, 0, 16384, 3 })
    {
        const auto out = bench.play (2, 2, frames);
        for (int s = 0; s < frames; ++s)
            ASSERT_EQ (out[1][static_cast<size_t> (s)], static_cast<float> (200 + (frame + s) % 100))
                << frames;
        frame += frames;
    }
    EXPECT_EQ (std::accumulate (bench.engine.blocks.begin(), bench.engine.blocks.end(), 0), frame);
    EXPECT_EQ (bench.player.times.blocks, 8u);
}

TEST (EnginePlayer, ABlockThatTakesLongerThanItLastsIsLate)
{
    constexpr int longBlock = 16384; // 341 ms
    PlayerBench bench;
    bench.play (2, 2, longBlock);
    EXPECT_EQ (bench.player.times.late, 0u);

    bench.engine.busyNanoseconds = 2'000'000;
    bench.play (2, 2, 64); // 1.3 ms
    bench.play (2, 2, longBlock);
    EXPECT_EQ (bench.player.times.late, 1u);
    EXPECT_GE (bench.player.times.longest.get(), bench.engine.busyNanoseconds);
    EXPECT_TRUE (bench.player.times.line().startsWith ("3 blocks, 1 late, ")) << bench.player.times.line();
}

TEST (BlockTimes, TellOfTheLastLateBlocksWithTheirEnds)
{
    BlockTimes times;
    times.add (0, 900'000, 1'000'000);
    EXPECT_EQ (times.lateLine(), "");

    const auto begin = BlockTimes::now();
    times.add (0, 2'500'000, 1'000'000);
    const auto first = times.lateLine();
    EXPECT_TRUE (first.startsWith ("Late: ") && first.endsWith (" s 2.500 ms.")) << first;
    const auto end = first.substring (6).getDoubleValue() * 1e9;
    EXPECT_GE (end, static_cast<double> (begin) - 1e5);
    EXPECT_LE (end, static_cast<double> (BlockTimes::now()) + 1e5);

    for (size_t i = 0; i < BlockTimes::keptLate; ++i)
        times.add (0, 3'000'000 + static_cast<int64_t> (i) * 1'000'000, 1'000'000);
    const auto full = juce::StringArray::fromTokens (times.lateLine(), ",", "");
    EXPECT_EQ (static_cast<size_t> (full.size()), BlockTimes::keptLate);
    EXPECT_TRUE (full[0].endsWith (" 3.000 ms")) << full[0];
    EXPECT_TRUE (full[full.size() - 1].endsWith (" 66.000 ms.")) << full[full.size() - 1];
}

TEST (EnginePlayer, TakesUpADeviceThatComesBackWithAnotherRate)
{
    const TemporaryFolder folder;
    EngineWorld world;
    world.folders.root = folder;
    world.seed = 1;
    CPlatterdex engine (world);
    EnginePlayer player (engine);
    for (const auto& [rate, block] : { std::pair { 48000.0, 256 }, { 96000.0, 2048 }, { 44100.0, 64 } })
    {
        SilentDevice device;
        device.open ({}, {}, rate, block);
        player.audioDeviceAboutToStart (&device);
        std::vector<float> left (4096), right (4096);
        float* outputs[] { left.data(), right.data() };
        player.audioDeviceIOCallbackWithContext (nullptr, 0, outputs, 2, 4096, {});
        player.audioDeviceStopped();
        EXPECT_EQ (engine.getSampleRate(), rate);
        EXPECT_EQ (engine.decks.engineRate, rate);
        EXPECT_EQ (engine.hostBlockSize, block);
    }
}
