#include "analysis/loudness/Autogain.h"

#include <algorithm>
#include <cmath>

namespace Autogain
{
namespace
{
template <class Sample>
std::optional<double> measureSamples (const Sample* left, const Sample* right, int frames, double rate,
                                      Pacing& pacing, const Relaxed<int32_t>& cancel)
{
    LoudnessMeter meter (rate);
    if (!meter.canMeasure())
        return std::nullopt;
    for (int done = 0; done < frames; done += pieceFrames)
    {
        if (cancel)
            return std::nullopt;
        meter.add (left + done, right + done, std::min (pieceFrames, frames - done));
        if ((done + pieceFrames) % framesBetweenPauses == 0)
            pacing.pause();
    }
    const auto gain = meter.gainDb();
    return gain ? std::optional (factorFor (*gain)) : std::nullopt;
}
}

double factorFor (double gainDb) noexcept
{
    return std::pow (10.0, (std::min (gainDb, LoudnessMeter::limitDb) + raiseDb) * 0.05);
}

std::optional<double> measure (const int16_t* left, const int16_t* right, int frames, double rate,
                               Pacing& pacing, const Relaxed<int32_t>& cancel)
{
    return measureSamples (left, right, frames, rate, pacing, cancel);
}

std::optional<double> measure (const float* left, const float* right, int frames, double rate, Pacing& pacing,
                               const Relaxed<int32_t>& cancel)
{
    return measureSamples (left, right, frames, rate, pacing, cancel);
}
}
