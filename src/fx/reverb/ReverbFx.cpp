#include "fx/reverb/ReverbFx.h"

#include "fx/effect/BeatSteps.h"

void ReverbFx::setSampleRate (double rate) noexcept
{
    reverb.setSampleRate (rate);
}

void ReverbFx::setFxParameter (FxParameter parameter, double value) noexcept
{
    auto settings = reverb.settings();
    if (parameter == FxParameter::dryWet)
        settings.wet = wet = static_cast<float> (value);
    else if (parameter == FxParameter::step)
        settings.roomSize = roomSize = static_cast<float> (value);
    else if (parameter == FxParameter::bypass)
        reverb.setBypass (value >= 0.5);
    reverb.setSettings (settings);
}

std::string ReverbFx::parameterText (FxParameter parameter) const
{
    if (parameter == FxParameter::dryWet)
        return FxText::percent (wet);
    if (parameter == FxParameter::step)
        return FxText::percent (roomSize);
    return {};
}

void ReverbFx::process (float* left, float* right, int frames, double) noexcept
{
    reverb.process (left, right, frames);
}

void ReverbFx::reset() noexcept
{
    reverb.reset();
}
