#include "fx/DelayEffect.h"

#include "fx/BeatSteps.h"

namespace
{
constexpr double feedbackRange = 0.9, defaultFeedback = 0.75;
}

DelayEffect::DelayEffect()
    : feedback (defaultFeedback / feedbackRange),
      stepValue (BeatSteps::valueOf (BeatSteps::delay, beats))
{
}

void DelayEffect::setSampleRate (double rate) noexcept
{
    mix.settle();
    for (auto& line : lines)
        line.setSampleRate (rate);
}

void DelayEffect::setFxParameter (FxParameter parameter, double value) noexcept
{
    switch (parameter)
    {
    case FxParameter::dryWet:
        dryWet = value;
        mix.setDryWet (value);
        break;
    case FxParameter::frequency:
        centred = value;
        break;
    case FxParameter::feedback:
        feedback = value;
        for (auto& line : lines)
            line.setFeedback (value * feedbackRange);
        break;
    case FxParameter::step:
        stepValue = value;
        beats = BeatSteps::at (BeatSteps::delay, value).beats;
        break;
    case FxParameter::bypass:
        mix.setBypass (value >= 0.5);
        break;
    case FxParameter::feedbackSign:
        break;
    }
}

std::string DelayEffect::parameterText (FxParameter parameter) const
{
    switch (parameter)
    {
    case FxParameter::dryWet:
        return FxText::percent (dryWet);
    case FxParameter::frequency:
        return FxText::percent (centred * 2.0 - 1.0);
    case FxParameter::feedback:
        return FxText::percent (feedback);
    case FxParameter::step:
        return BeatSteps::at (BeatSteps::delay, stepValue).text;
    default:
        return {};
    }
}

void DelayEffect::process (float* left, float* right, int frames, double bpm) noexcept
{
    for (auto& line : lines)
        line.setMilliseconds (beats * 1000.0 * 60.0 / bpm);

    constexpr int piece = 64;
    std::array<float, piece> echoLeft, echoRight;
    for (int done = 0; done < frames; done += piece)
    {
        const auto count = std::min (piece, frames - done);
        auto *l = left + done, *r = right + done;
        lines[0].process (l, echoLeft.data(), count);
        lines[1].process (r, echoRight.data(), count);
        auto gains = mix.isMoving() ? EffectMix::Gains {} : mix.next();
        const auto moving = mix.isMoving();
        for (int i = 0; i < count; ++i)
        {
            if (moving)
                gains = mix.next();
            const auto at = static_cast<size_t> (i);
            l[i] = l[i] * gains.dry + echoLeft[at] * gains.wet;
            r[i] = r[i] * gains.dry + echoRight[at] * gains.wet;
        }
    }
}

void DelayEffect::reset() noexcept
{
    mix.settle();
    for (auto& line : lines)
        line.reset();
}
