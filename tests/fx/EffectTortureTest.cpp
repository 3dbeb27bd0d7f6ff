#include "fx/DelayEffect.h"
#include "fx/SweepEffect.h"
#include "fx/modulation/ModulationFx.h"
#include "fx/reverb/ReverbFx.h"
#include "shared/Signals.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>
#include <vector>

#if defined(__SSE2__)
    #include <emmintrin.h>
#endif

namespace
{
/** Tells if an operation of this thread took or made a subnormal number since clear(). */
namespace SubnormalFlags
{
#if defined(__SSE2__)
constexpr unsigned flags = _MM_EXCEPT_DENORM | _MM_EXCEPT_UNDERFLOW;
void clear()
{
    _mm_setcsr (_mm_getcsr() & ~flags);
}
bool areRaised()
{
    return (_mm_getcsr() & flags) != 0;
}
#else
void clear() {}
bool areRaised()
{
    return false;
}
#endif
}

template <class Effect>
class EveryEffect : public testing::Test
{
};
template <SweepEffect::Mode which>
struct Sweep : SweepEffect
{
    Sweep() : SweepEffect (which) {}
};
using Mode = SweepEffect::Mode;
using Effects = testing::Types<FlangerFx, PhaserFx, ReverbFx, DelayEffect, Sweep<Mode::lowPass>,
                               Sweep<Mode::highPass>, Sweep<Mode::autoPan>, Sweep<Mode::trans>,
                               Sweep<Mode::bitCrusher>, Sweep<Mode::distortion>>;
TYPED_TEST_SUITE (EveryEffect, Effects);

/** Effects that forget old sound by themselves, and take nothing once a block. */
template <class Effect>
class ForgettingEffect : public testing::Test
{
};
using ForgettingEffects = testing::Types<FlangerFx, PhaserFx, ReverbFx>;
TYPED_TEST_SUITE (ForgettingEffect, ForgettingEffects);

constexpr std::array parameters { FxParameter::dryWet, FxParameter::frequency, FxParameter::feedback,
                                  FxParameter::step,   FxParameter::bypass,    FxParameter::feedbackSign };
}

TYPED_TEST (EveryEffect, StaysBoundedUnderJumpingParametersAndEndsInSilenceWithoutSubnormals)
{
    for (const auto rate : { 8000.0, 11025.0, 44100.0, 96000.0, 192000.0 })
    {
        TypeParam effect;
        effect.setSampleRate (rate);
        std::mt19937 random (static_cast<unsigned> (rate));
        std::uniform_real_distribution<double> any (0.0, 1.0);
        const auto blocks = static_cast<int> (rate / 100.0);
        for (int block = 0; block < blocks; ++block)
        {
            for (const auto parameter : parameters)
                effect.setFxParameter (parameter, block % 3 == 0 ? std::round (any (random)) : any (random));
            auto left = Signals::noise (100, static_cast<unsigned> (block), 1.0);
            auto right = Signals::noise (100, static_cast<unsigned> (block) + 7, 1.0);
            effect.process (left.data(), right.data(), 100, 20.0 + 480.0 * any (random));
            ASSERT_LT (std::max (Signals::peak (left), Signals::peak (right)), 12.0) << rate << " " << block;
        }

        effect.setFxParameter (FxParameter::bypass, 0.0);
        effect.setFxParameter (FxParameter::frequency, 1.0);
        effect.setFxParameter (FxParameter::step, 1.0);
        effect.setFxParameter (FxParameter::feedback, 0.0);
        effect.setFxParameter (FxParameter::dryWet, 0.5);
        std::vector<float> left (1000), right (1000);
        for (int done = 0; done < 10 * rate; done += 1000)
        {
            std::ranges::fill (left, 0.0f);
            std::ranges::fill (right, 0.0f);
            SubnormalFlags::clear();
            effect.process (left.data(), right.data(), 1000, 120.0);
            ASSERT_FALSE (SubnormalFlags::areRaised() && done > 0) << rate << " " << done;
        }
        // The largest room is still ringing then, 60 dB down in ten seconds.
        EXPECT_LT (std::max (Signals::peak (left), Signals::peak (right)), 2e-3) << rate;
    }
}

TYPED_TEST (ForgettingEffect, BypassedItLeavesTheAudioAndForgetsItsTail)
{
    TypeParam effect;
    effect.setSampleRate (44100.0);
    effect.setFxParameter (FxParameter::step, 1.0);
    effect.setFxParameter (FxParameter::bypass, 0.49);
    auto left = Signals::noise (44100, 1), right = Signals::noise (44100, 2);
    effect.process (left.data(), right.data(), 44100, 120.0);
    effect.setFxParameter (FxParameter::bypass, 0.5);
    effect.process (left.data(), right.data(), 256, 120.0); // longer than the ramp
    const auto before = std::pair { left, right };
    for (int done = 0; done < 44100; done += 100)
        effect.process (left.data() + done, right.data() + done, 100, 120.0);
    EXPECT_EQ (std::pair (left, right), before);

    effect.setFxParameter (FxParameter::bypass, 0.49);
    std::ranges::fill (left, 0.0f);
    std::ranges::fill (right, 0.0f);
    effect.process (left.data(), right.data(), 44100, 120.0);
    EXPECT_LT (std::max (Signals::peak (left), Signals::peak (right)), 1e-12);
}

TYPED_TEST (ForgettingEffect, SameSamplesInWhateverBlocksTheyCome)
{
    for (const auto rate : { 8000.0, 48000.0 })
    {
        TypeParam whole, pieces;
        auto left = Signals::noise (20000, 1), right = Signals::noise (20000, 2);
        auto otherLeft = left, otherRight = right;
        for (auto* effect : { &whole, &pieces })
        {
            effect->setSampleRate (rate);
            effect->setFxParameter (FxParameter::bypass, 0.0);
        }
        whole.process (left.data(), right.data(), 20000, 126.0);
        for (int done = 0, count = 1; done < 20000; done += count, count = count * 7 % 523)
            pieces.process (otherLeft.data() + done, otherRight.data() + done, std::min (count, 20000 - done),
                            126.0);
        EXPECT_EQ (left, otherLeft) << rate;
        EXPECT_EQ (right, otherRight) << rate;
    }
}
