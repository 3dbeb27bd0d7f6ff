#include "fx/BandSplit.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace
{
/** The damping of a Butterworth section: two of them in a row are one side of the crossover. */
constexpr double damping = std::numbers::sqrt2;

/** Far below anything audible and far above subnormal numbers, of which a tail must not consist. */
constexpr double silence = 1e-15;

/** Four time constants of the lower crossover: what its filters missed of the sound before has died away. */
constexpr double warmUpSeconds = 0.003;
}

BandSplit::Section BandSplit::sectionAt (double hz, double rate) noexcept
{
    return StateVariable::coefficients (std::tan (std::numbers::pi * std::min (hz / rate, 0.45)), damping);
}

void BandSplit::setSampleRate (double rate) noexcept
{
    lower = sectionAt (lowerHz, rate);
    upper = sectionAt (upperHz, rate);
    warmUpFrames = static_cast<int> (warmUpSeconds * rate);
    for (auto& gain : gains)
        gain.setSampleRate (rate);
    engaged.setSampleRate (rate);
    reset();
}

void BandSplit::reset() noexcept
{
    for (auto& state : states)
        state.reset();
    for (auto& gain : gains)
        gain.settle();
    engaged.reset (allOn() ? 0.0 : 1.0);
    warmUp = 0;
}

bool BandSplit::allOn() const noexcept
{
    return std::all_of (gains.begin(), gains.end(), [] (const auto& gain) { return gain.isAt (1.0); });
}

inline BandSplit::Sides BandSplit::crossover (const Section& section, StateVariable& both,
                                              StateVariable& second, Stereo in) noexcept
{
    // Both sides of such a crossover add up to its first section's all-pass, so the high side is what remains of that.
    const auto once = both.next (section, in);
    const auto twice = second.next (section, once.low).low;
    return { twice, in - 2.0 * damping * once.band - twice };
}

inline Stereo BandSplit::bandsOf (Stereo in, std::array<Stereo, bandCount>& bands) noexcept
{
    const auto [bass, above] = crossover (lower, states[0], states[1], in);
    const auto [middle, treble] = crossover (upper, states[2], states[3], above);
    bands = { bass - 2.0 * damping * states[4].next (upper, bass).band, middle, treble };
    return bands[low] + bands[mid] + bands[high];
}

bool BandSplit::isAtRest() const noexcept
{
    return (allOn() && engaged.isAt (0.0))
           || (std::all_of (states.begin(), states.end(), [] (const auto& state) { return state.isAtRest(); })
               && std::none_of (gains.begin(), gains.end(), [] (const auto& gain) { return gain.isMoving(); })
               && !engaged.isMoving() && warmUp == 0);
}

/** Begins to split when a band goes off, and to end it when all are on. */
void BandSplit::engage() noexcept
{
    const auto isNeeded = !allOn();
    if (isNeeded && engaged.isAt (0.0))
    {
        warmUp = warmUpFrames;
        for (auto& state : states)
            state.reset();
    }
    else
    {
        engaged.setTarget (isNeeded ? 1.0 : 0.0);
    }
}

bool BandSplit::process (float* left, float* right, float* sideLeft, float* sideRight, int frames) noexcept
{
    using namespace StereoMath;
    if (warmUp == 0)
        engage();
    if (engaged.isAt (0.0) && warmUp == 0)
        return false;

    std::array<Stereo, bandCount> bands;
    for (int i = 0; i < frames; ++i)
    {
        const auto in = load (left, right, i);
        const auto sum = bandsOf (in, bands);
        const auto working = bands[low] * gains[low].next() + bands[mid] * gains[mid].next()
                             + bands[high] * gains[high].next();
        if (warmUp > 0 && --warmUp == 0)
            engaged.setTarget (1.0);
        const auto part = engaged.next();
        store (in + (working - in) * part, left, right, i);
        store ((sum - working) * part, sideLeft, sideRight, i);
    }
    for (auto& state : states)
        state.flush (silence);
    return true;
}
