#include "fx/EffectSlot.h"

#include "fx/DelayEffect.h"
#include "fx/FxKnobs.h"
#include "fx/SweepEffect.h"
#include "fx/effect/BeatSteps.h"
#include "fx/modulation/ModulationFx.h"
#include "fx/reverb/ReverbFx.h"

#include <algorithm>
#include <cmath>

namespace
{
using Effect = std::unique_ptr<FxEffect>;
using Mode = SweepEffect::Mode;

template <Mode mode>
Effect makeSweep()
{
    return std::make_unique<SweepEffect> (mode);
}

template <typename Kind>
Effect make()
{
    return std::make_unique<Kind>();
}

/** A kind of effect, and where its knobs stand at creation. */
struct Row
{
    const char* name;
    Effect (*create)();
    double feedback, step;
};

constexpr auto halfABeat = BeatSteps::valueOf (BeatSteps::delay, 0.5);
constexpr auto eightBeats = BeatSteps::valueOf (BeatSteps::modulation, 8.0);

constexpr std::array<Row, FxType::count> rows {
    Row { "Delay", make<DelayEffect>, 0.75 / 0.9, halfABeat },
    Row { "Flanger", make<FlangerFx>, 0.0, eightBeats },
    Row { "Phaser", make<PhaserFx>, 0.0, eightBeats },
    Row { "LowPass", makeSweep<Mode::lowPass>, 0.0, eightBeats },
    Row { "HighPass", makeSweep<Mode::highPass>, 0.0, eightBeats },
    Row { "Auto Pan", makeSweep<Mode::autoPan>, 0.0, eightBeats },
    Row { "Trans", makeSweep<Mode::trans>, 0.0, eightBeats },
    Row { "BitCrusher", makeSweep<Mode::bitCrusher>, 0.0, eightBeats },
    Row { "Distortion", makeSweep<Mode::distortion>, 0.0, eightBeats },
    Row { "Reverb", make<ReverbFx>, 0.0, 0.5 },
};
}

const char* FxType::name (int index) noexcept
{
    return rows[static_cast<size_t> (std::clamp (index, 0, count - 1))].name;
}

int FxType::indexOf (double selector) noexcept
{
    return std::clamp (static_cast<int> (selector * count), 0, count - 1);
}

double FxType::restStep (int index) noexcept
{
    return rows[static_cast<size_t> (std::clamp (index, 0, count - 1))].step;
}

const char* FxType::stepName (int index) noexcept
{
    return index == delay ? "TIME" : index == reverb ? "ROOM" : "RATE";
}

double FxType::selectorValue (int index) noexcept
{
    return (index + 0.5) / count;
}

EffectSlot::EffectSlot (int initial)
    : selectorValue (FxType::selectorValue (initial)),
      wanted (initial),
      current (initial),
      former (initial)
{
    for (size_t i = 0; i < rows.size(); ++i)
    {
        effects[i] = rows[i].create();
        knobs[i].feedback = rows[i].feedback;
        knobs[i].step = rows[i].step;
    }
}

void EffectSlot::setSampleRate (double rate) noexcept
{
    for (auto& each : effects)
        each->setSampleRate (rate);
    current = wanted;
    for (auto* const ramp : { &arrival, &intake })
    {
        ramp->setSampleRate (rate);
        ramp->reset (1.0);
    }
    // The longest of them has faded out by then: filters by the sample, delays by the second.
    quietAfter = std::max (4096, static_cast<int> (0.1 * rate));
    quietFrames = isOn() ? 0 : quietAfter;
}

Relaxed<double>& EffectSlot::knob (FxParameter parameter) noexcept
{
    auto& own = knobs[static_cast<size_t> (wanted.get())];
    switch (parameter)
    {
    case FxParameter::dryWet:
        return dryWet;
    case FxParameter::frequency:
        return frequency;
    case FxParameter::bypass:
        return bypass;
    case FxParameter::feedback:
        return own.feedback;
    case FxParameter::feedbackSign:
        return own.sign;
    case FxParameter::step:
        break;
    }
    return own.step;
}

double EffectSlot::parameter (FxParameter parameter) const noexcept
{
    return const_cast<EffectSlot*> (this)->knob (parameter);
}

void EffectSlot::setFxParameter (FxParameter parameter, double value) noexcept
{
    if (!std::isfinite (value))
        return;
    const auto limited = std::clamp (value, 0.0, 1.0);
    auto& own = knob (parameter);
    own = limited;
    if (&own != &dryWet && &own != &frequency && &own != &bypass)
        effect (wanted).setFxParameter (parameter, limited);
    else
        for (auto& each : effects)
            each->setFxParameter (parameter, limited);
}

void EffectSlot::setStep (int index, double value) noexcept
{
    auto& own = knobs[static_cast<size_t> (index)].step;
    if (value == own || !std::isfinite (value))
        return;
    own = std::clamp (value, 0.0, 1.0);
    effect (index).setFxParameter (FxParameter::step, own);
}

void EffectSlot::selectFx (double value) noexcept
{
    if (!std::isfinite (value))
        return;
    selectorValue = std::clamp (value, 0.0, 1.0);
    wanted = std::min (static_cast<int> (selectorValue * FxType::count), FxType::count - 1);
}

std::string EffectSlot::parameterText (FxParameter parameter) const
{
    return effects[static_cast<size_t> (wanted.get())]->parameterText (parameter);
}

void EffectSlot::process (float* left, float* right, int frames, double bpm) noexcept
{
    if (arrival.isAt (1.0) && wanted != current)
    {
        former = current;
        current = wanted;
        effect (current).reset();
        intake.reset (0.0);
        intake.setTarget (1.0);
        arrival.reset (0.0);
        // Of two effects that only pass the sound on the new one listens in unheard.
        if (isOn() || quietFrames < quietAfter)
            arrival.setTarget (1.0);
    }
    quietFrames = isOn() ? 0 : std::min (quietFrames + frames, quietAfter);

    auto done = 0;
    while (!arrival.isAt (1.0) && done < frames)
    {
        if (!intake.isMoving() && !arrival.isMoving())
        {
            if (!isOn())
            {
                arrival.reset (1.0);
                break;
            }
            arrival.setTarget (1.0);
        }
        const auto way = std::max (intake.samplesLeft(), arrival.samplesLeft());
        const auto piece = std::min ({ frames - done, way, longestPiece });
        crossfade (left + done, right + done, piece, bpm);
        done += piece;
    }
    if (done < frames)
        effect (current).process (left + done, right + done, frames - done, bpm);
}

void EffectSlot::crossfade (float* left, float* right, int frames, double bpm) noexcept
{
    std::array<float, longestPiece> oldLeft, oldRight;
    std::copy_n (left, frames, oldLeft.begin());
    std::copy_n (right, frames, oldRight.begin());
    effect (former).process (oldLeft.data(), oldRight.data(), frames, bpm);

    // The new effect hears the sound fade in as well: otherwise its first echo would begin with a step.
    for (int i = 0; i < frames; ++i)
    {
        const auto gain = static_cast<float> (intake.next());
        left[i] *= gain;
        right[i] *= gain;
    }
    effect (current).process (left, right, frames, bpm);
    CrossFade::over (oldLeft.data(), oldRight.data(), left, right, frames, arrival);
}
