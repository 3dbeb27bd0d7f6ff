#include "analysis/beats/DaLoopa.h"

#include "analysis/beats/onset/OnsetFunction.h"
#include "analysis/beats/onset/OnsetTracking.h"

#include <algorithm>
#include <numbers>

Periodicity::Tempo CDaLoopa::tempoOf (const COnsetTrackingIntern& stage, double firstFrame, double endFrame)
{
    if (endFrame - firstFrame < leastFrames)
        return {};
    const auto frameOf = [&] (double frame)
    { return std::clamp (static_cast<int> (frame / COnsetTrackingIntern::hop), 0, stage.numFrames()); };
    const auto onsets = OnsetFunction::make (stage, frameOf (firstFrame), stage.numFrames());
    std::vector<float> sum (onsets.sum.size());
    for (size_t i = 0; i < sum.size(); ++i)
    {
        const auto& b = onsets.bands[i];
        // Three values of one spread, divided so that their sum has it too.
        sum[i] = b[0] + (b[1] + b[2] + b[3]) / std::numbers::sqrt3_v<float> + b[4];
    }
    auto tempo = Periodicity (sum, onsets.frameRate,
                              (endFrame - firstFrame) / (onsets.frameRate * COnsetTrackingIntern::hop))
                     .tempo();
    while (tempo.bpm > 180.0)
        tempo.bpm /= 2.0;
    if (tempo.bpm < 55.0)
        tempo.bpm *= 2.0;
    return tempo;
}
