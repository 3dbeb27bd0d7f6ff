#include "analysis/beats/bar/Downbeat.h"

#include "analysis/AnalysisError.h"
#include "analysis/beats/bar/BarPhase.h"
#include "analysis/beats/onset/OnsetFunction.h"
#include "analysis/beats/onset/Periodicity.h"
#include "analysis/beats/tempo/TempoComb.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace
{
/** Eight beats of the slowest tempo twice over. */
constexpr double longestLagSeconds = 16.0;

/** Below this the function is like itself by chance only. */
constexpr double leastConfidence = 0.02;
}

int CDownbeat::init (int sampleRate, int channels)
{
    if (sampleRate < COnsetTrackingIntern::lowestRate)
        return AnalysisError::badSampleRate;
    if (channels < 1)
        return AnalysisError::badChannelCount;
    rate = sampleRate;
    decimator.prepare (sampleRate);
    const auto lowRate = static_cast<double> (sampleRate) / decimator.factor();
    bass.prepare (lowRate);
    return chroma.init (lowRate);
}

void CDownbeat::process (std::span<const float> mono)
{
    const auto low = decimator.process (mono);
    chroma.process (low);
    bass.process (low);
}

void CDownbeat::flush()
{
    const std::vector<float> silence (static_cast<size_t> (CChroma::length * decimator.factor()), 0.0f);
    process (silence);
}

HarmonicChange CDownbeat::harmony() const
{
    const auto step = static_cast<double> (CChroma::hop * decimator.factor());
    const auto centre = 0.5 * CChroma::length * decimator.factor();
    return HarmonicChange (chroma.profiles(), centre, step);
}

BarPhase CDownbeat::barPhase (const OnsetFunction& onsets, const Pulse& pulse) const
{
    return BarPhase::find (onsets, harmony(), { bass, decimator.factor() }, pulse);
}

CDownbeat::Result CDownbeat::evaluate (const COnsetTrackingIntern& stage, double firstFrame,
                                       double endFrame) const
{
    constexpr auto hop = COnsetTrackingIntern::hop;
    const auto first = std::clamp (static_cast<int> (firstFrame / hop), 0, stage.numFrames());
    const auto end = std::clamp (static_cast<int> (endFrame / hop), first, stage.numFrames());
    const auto onsets = OnsetFunction::make (stage, first, end);
    const auto tempo = Periodicity (onsets.sum, onsets.frameRate, longestLagSeconds).tempo();
    Result result;
    if (tempo.bpm <= 0.0 || tempo.confidence < leastConfidence)
        return result;
    const auto bpm = TempoComb (onsets.positive, onsets.frameRate, tempo.bpm).best();
    result.beatPeriod = 60.0 * rate / bpm * result.beatsPerPeriod;
    result.confidence = tempo.confidence;
    result.margin = tempo.margin;
    result.startPosition = onsets.origin;
    return result;
}
