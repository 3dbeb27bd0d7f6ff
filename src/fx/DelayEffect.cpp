#include "fx/DelayEffect.h"

#include "fx/effect/BeatSteps.h"

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
    mix.setSampleRate (rate);
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
        if (!mix.isBypassed())
            mixIn (echoLeft.data(), echoRight.data(), l, r, count);
    }
}

void DelayEffect::mixIn (const float* echoLeft, const float* echoRight, float* left, float* right,
                         int frames) noexcept
{
    const auto isMoving = mix.isMoving();
    for (auto [i, gains] = std::pair (0, mix.next()); i < frames; ++i)
    {
        if (isMoving && i > 0)
            gains = mix.next();
        left[i] = left[i] * gains.dry + echoLeft[i] * gains.wet;
        right[i] = right[i] * gains.dry + echoRight[i] * gains.wet;
    }
}

void DelayEffect::reset() noexcept
{
    mix.settle();
    for (auto& line : lines)
        line.reset();
}
