#include "fx/SweepEffect.h"

#include "fx/effect/BeatSteps.h"
#include "support/OnePole.h"

#include <algorithm>
#include <cmath>

namespace
{
constexpr double glide = 0.995, gateGlide = 0.99, fadedOut = 0.0001;
constexpr double panSeconds = 0.002, panReach = 0.99;
constexpr double distortionQ = 3.0;
constexpr double gateAttack = 0.01; ///< of a turn

/** The distance at which a glide has arrived: it never would by itself, and the rest ends as a subnormal number. */
constexpr double arrived = 1e-7;

struct Defaults
{
    SweepEffect::Mode mode;
    float centre, amount, lfoDepth;
};

using Mode = SweepEffect::Mode;
constexpr std::array defaults {
    Defaults { Mode::lowPass, 0.5f, 0.8f, 0.36f },    Defaults { Mode::highPass, 0.6f, 0.8f, 0.36f },
    Defaults { Mode::autoPan, 0.5f, 0.5f, 1.0f },     Defaults { Mode::trans, 0.5f, 0.0f, 1.0f },
    Defaults { Mode::bitCrusher, 0.5f, 0.5f, 0.36f }, Defaults { Mode::distortion, 0.2f, 0.5f, 0.16f },
};

void approach (double& value, double target, double speed = glide) noexcept
{
    value = OnePole::approached (value, target, speed);
}

void arrive (double& value, double target) noexcept
{
    if (std::abs (target - value) < arrived)
        value = target;
}
}

SweepEffect::SweepEffect (Mode m)
    : mode (m),
      stepValue (BeatSteps::valueOf (BeatSteps::modulation, lfoBeats)),
      line (m == Mode::autoPan ? lineSize : 0)
{
    const auto* own =
        std::find_if (defaults.begin(), defaults.end(), [m] (const auto& d) { return d.mode == m; });
    centre = own->centre;
    amount = own->amount;
    lfoDepth = own->lfoDepth;
}

void SweepEffect::setSampleRate (double rate) noexcept
{
    sampleRate = static_cast<float> (rate);
    reset();
}

void SweepEffect::setFxParameter (FxParameter parameter, double value) noexcept
{
    switch (parameter)
    {
    case FxParameter::dryWet:
        wetTarget = value;
        break;
    case FxParameter::bypass:
        bypass = value >= 0.5;
        break;
    case FxParameter::step:
        stepValue = value;
        lfoBeats = static_cast<float> (BeatSteps::at (BeatSteps::modulation, value).beats);
        break;
    case FxParameter::frequency:
    case FxParameter::feedback:
    case FxParameter::feedbackSign:
        break;
    }
}

std::string SweepEffect::parameterText (FxParameter parameter) const
{
    switch (parameter)
    {
    case FxParameter::dryWet:
        return FxText::percent (wetTarget);
    case FxParameter::step:
        return BeatSteps::at (BeatSteps::modulation, stepValue).text;
    default:
        return {};
    }
}

void SweepEffect::reset() noexcept
{
    wet = wetTarget;
    fade = bypass ? 0.0 : 1.0;
    lfoPhase = gateLevel = hold = 0.0;
    held = Stereo {};
    for (auto& section : sections)
        section.reset();
    std::fill (line.begin(), line.end(), Stereo {});
    isSilent = true;
}

void SweepEffect::process (float* left, float* right, int frames, double bpm) noexcept
{
    if (bypass && fade <= fadedOut)
    {
        if (!isSilent)
            reset();
        return;
    }
    isSilent = false;
    phaseStep = 1.0 / (lfoBeats * 60.0 / bpm * sampleRate);
    switch (mode)
    {
    case Mode::lowPass:
    case Mode::highPass:
        filter (left, right, frames);
        break;
    case Mode::distortion:
        distort (left, right, frames);
        break;
    case Mode::bitCrusher:
        crush (left, right, frames);
        break;
    case Mode::autoPan:
        pan (left, right, frames);
        break;
    case Mode::trans:
        gate (left, right, frames);
        break;
    }
    for (auto& section : sections)
        section.flush();
    arrive (wet, wetTarget);
    arrive (fade, bypass ? 0.0 : 1.0);
    arrive (gateLevel, 0.0);
}

/** @param kernel   makes the processed frame out of the dry one and the oscillator's phase */
template <typename Kernel>
void SweepEffect::run (float* left, float* right, int frames, Kernel&& kernel) noexcept
{
    using namespace StereoMath;
    const auto wetNow = wetTarget.get(), fadeNow = bypass ? 0.0 : 1.0;
    auto w = wet, f = fade, phase = lfoPhase;
    for (int i = 0; i < frames; ++i)
    {
        approach (w, wetNow);
        approach (f, fadeNow);
        const auto dry = load (left, right, i);
        const Stereo processed = kernel (dry, phase);
        const auto mix = w * f;
        store (processed * mix + dry * (1.0 - mix), left, right, i);
        phase += phaseStep;
        phase = phase < 1.0 ? phase : phase - std::floor (phase);
    }
    wet = w;
    fade = f;
    lfoPhase = phase;
}

double SweepEffect::limitedSweep (double phase) const noexcept
{
    return std::clamp (centre + sweep (phase), 0.0, 1.0);
}

void SweepEffect::filter (float* left, float* right, int frames) noexcept
{
    using Side = SweepBiquad::Side;
    const auto c = limitedSweep (lfoPhase);
    const auto q = 2.0 * amount * amount + 1.0;
    const auto through = [&]<Side side> (double hz)
    {
        const auto coefficients = SweepBiquad::coefficients (hz, q, sampleRate);
        auto cascade = sections; // a copy lives in registers
        run (left, right, frames,
             [&cascade, coefficients] (Stereo in, double)
             { return cascade[1].next<side> (coefficients, cascade[0].next<side> (coefficients, in)); });
        sections = cascade;
    };
    if (mode == Mode::lowPass)
        through.operator()<Side::lowPass> (std::exp2 (c * 8.28 + 6.0));
    else
        through.operator()<Side::highPass> (std::exp2 (c * 9.28 * 0.8 + 5.0));
}

void SweepEffect::distort (float* left, float* right, int frames) noexcept
{
    using Side = SweepBiquad::Side;
    const auto c = limitedSweep (lfoPhase);
    const auto drive = c * c * c * c * 1024.0, level = 0.5 * drive + 0.5;
    const auto coefficients =
        SweepBiquad::coefficients (std::exp2 ((1.0 - amount) * 4.28 + 10.0), distortionQ, sampleRate);
    auto section = sections[0]; // a copy lives in registers
    run (left, right, frames,
         [&section, coefficients, drive, level] (Stereo in, double)
         {
             const auto y = section.next<Side::lowPass> (coefficients, in);
             const auto magnitude = y < 0.0 ? -y : y;
             return y / (magnitude * drive + 1.0) * level;
         });
    sections[0] = section;
}

void SweepEffect::crush (float* left, float* right, int frames) noexcept
{
    const auto step = 65536.0 / (amount * amount * 2048.0 + 1.0);
    run (left, right, frames,
         [this, step] (Stereo in, double phase)
         {
             if (hold <= 0.0)
             {
                 held = Stereo { std::round (in[0] * step), std::round (in[1] * step) } / step;
                 const auto c = limitedSweep (phase);
                 hold += c * c * 64.0 + 1.0;
             }
             hold -= 1.0;
             return held;
         });
}

void SweepEffect::pan (float* left, float* right, int frames) noexcept
{
    const auto longest = std::min (panSeconds * sampleRate, lineSize - 2.0);
    run (left, right, frames,
         [this, longest] (Stereo in, double phase)
         {
             const auto p = 2.0 * (sweep (phase) + centre) - 1.0;
             line[static_cast<size_t> (lineIndex)] = in;
             const auto delayed = [&] (double part, int side)
             {
                 const auto delay = std::min (std::clamp (part, 0.0, 1.0), panReach) * longest;
                 const auto whole = static_cast<int> (delay);
                 const auto at = [&] (int back)
                 { return line[static_cast<size_t> ((lineIndex - back) & lineMask)][side]; };
                 return at (whole) + (at (whole + 1) - at (whole)) * (delay - whole);
             };
             const auto a = amount * p;
             const Stereo out { delayed (p, 0) * std::clamp (2.0 * (1.0 - a), 0.0, 1.0),
                                delayed (-p, 1) * std::clamp (2.0 * (1.0 + a), 0.0, 1.0) };
             lineIndex = (lineIndex + 1) & lineMask;
             return out;
         });
}

void SweepEffect::gate (float* left, float* right, int frames) noexcept
{
    const auto k = (1.0 - centre) * (1.0 - centre);
    const auto depth = 1.0 - amount * amount, steepness = k * 50.0 + 1.0;
    run (left, right, frames,
         [this, depth, steepness] (Stereo in, double phase)
         {
             const auto late = (phase - gateAttack) / (1.0 - gateAttack);
             const auto target = phase < gateAttack
                                     ? phase / gateAttack
                                     : 1.0 - std::min (late * late * late * late * steepness, 1.0);
             approach (gateLevel, target, gateGlide);
             return in * (1.0 - gateLevel * depth);
         });
}
