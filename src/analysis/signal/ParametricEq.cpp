#include "analysis/signal/ParametricEq.h"

#include "analysis/AnalysisError.h"

#include <new>

namespace zParamEQ
{
int CParametricEq::create (std::unique_ptr<CParametricEqIf>& out) noexcept
{
    auto* made = new (std::nothrow) CParametricEq;
    if (made == nullptr)
        return AnalysisError::noMemory;
    out.reset (made);
    return AnalysisError::none;
}

int CParametricEq::take (double& setting, double value, double least, double most) noexcept
{
    if (!(value >= least && value <= most))
        return AnalysisError::badArgument;
    isChanged = isChanged || setting != value;
    setting = value;
    return AnalysisError::none;
}

int CParametricEq::setSampleRate (double hz) noexcept
{
    return take (sampleRate, hz, 1.0, 1e7);
}

int CParametricEq::setFrequency (double hz) noexcept
{
    return take (frequency, hz, 1e-3, 1e7);
}

int CParametricEq::setGain (double db) noexcept
{
    return take (gainDb, db, -120.0, 60.0);
}

int CParametricEq::setQuality (double q) noexcept
{
    return take (quality, q, 1e-3, 1e3);
}

int CParametricEq::setType (BandType next) noexcept
{
    if (next < BandType::peak || next > BandType::highPass)
        return AnalysisError::badArgument;
    type = next;
    isChanged = true;
    return AnalysisError::none;
}

void CParametricEq::update() noexcept
{
    if (isChanged)
        biquad = design (type, frequency, gainDb, quality, sampleRate);
    isChanged = false;
}

void CParametricEq::process (const float* in, float* out, int frames) noexcept
{
    const auto b = biquad;
    auto ofInput = input, ofOutput = output;
    for (int i = 0; i < frames; ++i)
    {
        const auto next = filter (b, History::Pair { in[i], 0.0 }, ofInput, ofOutput);
        ofOutput = { next, ofOutput.last };
        out[i] = static_cast<float> (next[0]);
    }
    input = ofInput;
    output = ofOutput;
}
}
