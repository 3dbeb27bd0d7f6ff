#pragma once

#include "analysis/stretch/TimeStretcher.h"
#include "shared/Signals.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <vector>

/** A stretcher that is fed as a deck feeds it, from a signal given by its channels' samples. */
class StretcherDriver
{
public:
    using Channels = std::vector<std::vector<float>>;

    explicit StretcherDriver (int channels = 2, int blockSize = 128, float rate = 44100.0f)
        : block (blockSize)
    {
        CElastiqueProIf* made = nullptr;
        EXPECT_EQ (CElastiqueProIf::CreateInstance (made, blockSize, channels, rate, 2), 0);
        stretcher.reset (made);
        out.resize (static_cast<size_t> (channels));
    }

    CElastiqueProIf* operator->() { return stretcher.get(); }

    void set (double stretch, double pitch)
    {
        auto inForce = static_cast<float> (pitch);
        ASSERT_EQ (stretcher->setStretchAndPitch (static_cast<float> (stretch), &inForce, 0), 0);
    }

    /** Renders on to `frames` output frames, silence behind the signal's end. */
    void render (const Channels& in, int frames, const std::function<void (int)>& beforeBlock = {})
    {
        for (int made = static_cast<int> (out[0].size()); made < frames; made += block)
        {
            if (beforeBlock)
                beforeBlock (made);
            const auto count = stretcher->getFramesNeeded();
            ASSERT_GE (count, 0);
            std::vector<const float*> inputs;
            Channels given;
            for (const auto& channel : in)
            {
                auto& piece = given.emplace_back (static_cast<size_t> (count));
                const auto present = std::clamp (static_cast<int> (channel.size()) - taken, 0, count);
                std::copy_n (channel.begin() + std::min<long> (taken, static_cast<long> (channel.size())),
                             present, piece.begin());
                inputs.push_back (piece.data());
            }
            std::vector<float*> outputs;
            for (auto& channel : out)
            {
                channel.resize (static_cast<size_t> (made + block), 9.0f);
                outputs.push_back (channel.data() + made);
            }
            for (size_t c = inputs.size(); c < out.size(); ++c)
                inputs.push_back (inputs[0]);
            ASSERT_EQ (stretcher->process (inputs.data(), count, outputs.data()), 0) << made;
            taken += count;
        }
    }

    struct Destroy
    {
        void operator() (CElastiqueProIf* s) const { CElastiqueProIf::DestroyInstance (s); }
    };

    const int block;
    std::unique_ptr<CElastiqueProIf, Destroy> stretcher;
    Channels out;
    int taken = 0;
};
