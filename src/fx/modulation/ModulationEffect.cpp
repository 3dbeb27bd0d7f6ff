#include "fx/modulation/ModulationEffect.h"

#include <cmath>

namespace fx_dsp
{
modulation_effect::modulation_effect()
{
    rand_generator_lcg random;
    for (auto& value : noise)
        value = static_cast<float> (1e-14 * random.next());
}

void modulation_effect::setFeedback (double depth, double sign) noexcept
{
    feedback.setTarget (depth * sign);
}

void modulation_effect::takeSampleRate (double hertz) noexcept
{
    limitAndSetRate (hertz);
    gains.setSampleRate (sampleRate());
    intake.setSampleRate (sampleRate());
}

void modulation_effect::takeIn (const float* samples, int count, Piece& in) noexcept
{
    for (size_t i = 0; i < static_cast<size_t> (count); ++i)
        in[i] = noise[i] + (std::fabs (samples[i]) <= loudest ? samples[i] : 0.0f);
    if (intake.isMoving())
        for (size_t i = 0; i < static_cast<size_t> (count); ++i)
            in[i] *= static_cast<float> (intake.next());
}

void modulation_effect::takeFeedback (int count, Piece& factors) noexcept
{
    if (!feedback.isMoving())
        factors.fill (static_cast<float> (feedback.value()));
    else
        for (size_t i = 0; i < static_cast<size_t> (count); ++i)
            factors[i] = static_cast<float> (feedback.next());
}

void modulation_effect::mix (float* samples, const Piece& wetSamples, int count) noexcept
{
    if (gains.isMoving())
    {
        for (size_t i = 0; i < static_cast<size_t> (count); ++i)
        {
            const auto gain = gains.next();
            samples[i] = samples[i] * gain.dry + wetSamples[i] * gain.wet;
        }
        return;
    }
    const auto gain = gains.next();
    for (size_t i = 0; i < static_cast<size_t> (count); ++i)
        samples[i] = samples[i] * gain.dry + wetSamples[i] * gain.wet;
}
}
