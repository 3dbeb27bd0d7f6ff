#include "fx/DeckFilter.h"

#include <algorithm>
#include <cmath>

DeckFilter::DeckFilter() noexcept
{
    highPass.lfoDepth = 0.0f;
    highPass.setFxParameter (FxParameter::dryWet, 1.0);
    highPass.reset();
}

void DeckFilter::set (double value) noexcept
{
    const auto offset = value - 0.5;
    const auto isOff = std::abs (offset) < 0.001;
    if (!isOff && offset < 0.0)
        lowPass.setWord (std::clamp (std::pow (-2.0 * offset, 0.22), 0.01, 0.98));
    if (!isOff && offset > 0.0)
        highPass.centre = static_cast<float> (2.0 * offset);
    lowPass.setOn (!isOff && offset < 0.0);
    highPass.setFxParameter (FxParameter::bypass, isOff || offset < 0.0 ? 1.0 : 0.0);
}

void DeckFilter::setSampleRate (double rate) noexcept
{
    lowPass.setSampleRate (rate);
    highPass.setSampleRate (rate);
}

void DeckFilter::process (float* left, float* right, int frames, double bpm) noexcept
{
    lowPass.process (left, right, frames);
    highPass.process (left, right, frames, bpm);
}

void DeckFilter::reset() noexcept
{
    lowPass.reset();
    highPass.reset();
}
