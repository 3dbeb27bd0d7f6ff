#include "analysis/beats/DaLoopa.h"

#include "analysis/AnalysisError.h"
#include "analysis/beats/onset/OnsetFunction.h"
#include "analysis/beats/onset/OnsetTracking.h"
#include "analysis/beats/onset/Periodicity.h"

#include <array>

double CDaLoopa::tempoOf (std::span<const float> mono, int sampleRate)
{
    COnsetTrackingIntern stage;
    if (mono.size() < leastFrames || stage.init (sampleRate, 1) != AnalysisError::none)
        return 0.0;
    stage.process (mono);
    stage.flush();
    const auto onsets = OnsetFunction::make (stage, 0, stage.numFrames());
    // Bass, voice and cymbals: narrower bands of a short clip hold too few onsets each.
    std::vector<float> sum (onsets.sum.size());
    for (size_t i = 0; i < sum.size(); ++i)
    {
        const auto& b = onsets.bands[i];
        sum[i] = (b[0] + b[1]) + (b[2] + b[3]) + b[4];
    }
    auto bpm =
        Periodicity (sum, onsets.frameRate, static_cast<double> (mono.size()) / sampleRate).tempo().bpm;
    while (bpm > 180.0)
        bpm /= 2.0;
    return bpm < 55.0 ? 2.0 * bpm : bpm;
}
