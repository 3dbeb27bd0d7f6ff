#include "demo/FirstBank.h"
#include "SamplerFixture.h"

#include <map>

namespace
{
struct LoadedBank : SamplerRun
{
    LoadedBank()
    {
        EXPECT_EQ (writeFirstBank (folder.file ("bank")), "");
        EXPECT_EQ (sampler().loadBank (firstBankFile (folder.file ("bank"))), "");
    }
    std::span<const float> samplesOf (int pad)
    {
        return { slot (pad).buffer.left(), static_cast<size_t> (slot (pad).lengthFrames) };
    }
};
}

TEST (FirstBank, EveryPadIsFilledAndHeardAndEndsInSilenceOrGoesRound)
{
    LoadedBank bank;
    for (int pad = 0; pad < Sampler::padCount; ++pad)
    {
        const auto samples = bank.samplesOf (pad);
        ASSERT_GT (samples.size(), 4000u) << pad;
        EXPECT_NEAR (Signals::peak (samples), 0.8, 0.3) << pad;
        EXPECT_GT (Signals::rms (samples), 0.01) << pad;
        EXPECT_NE (bank.slot (pad).texts().name, "") << pad;
        auto mean = 0.0;
        for (const auto sample : samples)
            mean += sample / static_cast<double> (samples.size());
        EXPECT_LT (std::abs (mean), 0.01) << pad;
        if (bank.slot (pad).isLooping())
            EXPECT_FALSE (bank.slot (pad).view.fadesOutAtSeam) << pad;
        else
            EXPECT_LT (Signals::peak (samples.last (200)), 0.01) << pad;
    }
}

TEST (FirstBank, LoopsHaveTheTempoAndBeatsTheyWereMadeWith)
{
    LoadedBank bank;
    const std::map<juce::String, std::pair<double, double>> loops { { "Pad Hold", { 120.0, 4.0 } },
                                                                    { "Hats", { 124.0, 1.0 } },
                                                                    { "Congas", { 126.0, 2.0 } },
                                                                    { "House", { 128.0, 4.0 } },
                                                                    { "Break", { 174.0, 8.0 } } };
    size_t found = 0;
    for (int pad = 0; pad < Sampler::padCount; ++pad)
    {
        const auto loop = loops.find (bank.slot (pad).texts().name);
        if (loop == loops.end())
        {
            EXPECT_EQ (bank.slot (pad).bpm, 0.0) << pad; // a hit is never stretched
            continue;
        }
        ++found;
        EXPECT_NEAR (bank.slot (pad).bpm, loop->second.first, 0.01) << pad;
        EXPECT_EQ (bank.slot (pad).musicalBeats(), loop->second.second) << pad;
        EXPECT_TRUE (bank.slot (pad).isLooping()) << pad;
    }
    EXPECT_EQ (found, loops.size());
}
