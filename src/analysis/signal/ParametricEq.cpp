#include "analysis/signal/ParametricEq.h"

#include "analysis/AnalysisError.h"

#include <algorithm>
#include <cmath>
#include <new>
#include <numbers>

namespace
{
PX_AUDIO_THREAD int take (double& field, double value, double least, double most) noexcept
{
    if (!(value >= least && value <= most))
        return AnalysisError::badArgument;
    field = value;
    return AnalysisError::none;
}
}

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
    return AnalysisError::none;
}

void CParametricEq::reset() noexcept
{
    x1 = x2 = y1 = y2 = 0.0;
}

void CParametricEq::update() noexcept
{
    const auto w = 2.0 * std::numbers::pi * std::min (frequency / sampleRate, 0.4999);
    const auto c = std::cos (w), alpha = std::sin (w) / (2.0 * quality);
    const auto a = std::pow (10.0, gainDb / 40.0);
    auto a0 = 1.0 + alpha;
    a1 = -2.0 * c;
    a2 = 1.0 - alpha;
    switch (type)
    {
    case BandType::peak:
        a0 = 1.0 + alpha / a;
        a2 = 1.0 - alpha / a;
        b0 = 1.0 + alpha * a;
        b1 = -2.0 * c;
        b2 = 1.0 - alpha * a;
        break;
    case BandType::lowShelf:
    case BandType::highShelf:
    {
        // The two are each other's mirror image at a quarter of the rate: c and every odd coefficient change sign.
        const auto mirror = type == BandType::lowShelf ? 1.0 : -1.0, d = mirror * c;
        const auto bow = 2.0 * std::sqrt (a) * alpha;
        a0 = (a + 1.0) + (a - 1.0) * d + bow;
        a1 = mirror * -2.0 * ((a - 1.0) + (a + 1.0) * d);
        a2 = (a + 1.0) + (a - 1.0) * d - bow;
        b0 = a * ((a + 1.0) - (a - 1.0) * d + bow);
        b1 = mirror * 2.0 * a * ((a - 1.0) - (a + 1.0) * d);
        b2 = a * ((a + 1.0) - (a - 1.0) * d - bow);
        break;
    }
    case BandType::lowPass:
        b0 = b2 = (1.0 - c) / 2.0;
        b1 = 1.0 - c;
        break;
    case BandType::highPass:
        b0 = b2 = (1.0 + c) / 2.0;
        b1 = -(1.0 + c);
        break;
    }
    for (auto* coefficient : { &b0, &b1, &b2, &a1, &a2 })
        *coefficient /= a0;
}

void CParametricEq::process (const float* in, float* out, int frames) noexcept
{
    for (int i = 0; i < frames; ++i)
    {
        const double x = in[i];
        auto y = b0 * x + b1 * x1 + b2 * x2 - a1 * y1 - a2 * y2;
        // A tail that only the processor's slow path could go on with is over.
        if (std::abs (y) < 1e-30)
            y = 0.0;
        x2 = x1;
        x1 = x;
        y2 = y1;
        y1 = y;
        out[i] = static_cast<float> (y);
    }
}
}
