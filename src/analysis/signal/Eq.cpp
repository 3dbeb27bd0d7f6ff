#include "analysis/signal/Eq.h"

#include "analysis/AnalysisError.h"

#include <new>

int CEQ::create (std::unique_ptr<CEqIf>& out, int count)
try
{
    if (count < 1 || count > 64)
        return AnalysisError::badArgument;
    out.reset (new CEQ (count));
    return AnalysisError::none;
}
catch (const std::bad_alloc&)
{
    return AnalysisError::noMemory;
}

CEQ::Band* CEQ::find (int band) noexcept
{
    return band >= 0 && band < static_cast<int> (bands.size()) ? &bands[static_cast<size_t> (band)] : nullptr;
}

const CEQ::Band& CEQ::look (int band) const noexcept
{
    return band >= 0 && band < static_cast<int> (bands.size()) ? bands[static_cast<size_t> (band)] : fresh;
}

int CEQ::setSampleRate (double hz) noexcept
{
    // What one refuses, all refuse.
    int error = AnalysisError::none;
    for (auto& band : bands)
        error = band.setSampleRate (hz);
    return error;
}

void CEQ::reset() noexcept
{
    for (auto& band : bands)
        band.reset();
}

void CEQ::update() noexcept
{
    for (auto& band : bands)
        band.update();
}

void CEQ::process (const float* in, float* out, int frames) noexcept
{
    for (auto& band : bands)
    {
        band.process (in, out, frames);
        in = out;
    }
}

int CEQ::setFrequency (int band, double hz) noexcept
{
    auto* found = find (band);
    return found != nullptr ? found->setFrequency (hz) : AnalysisError::badArgument;
}

int CEQ::setGain (int band, double db) noexcept
{
    auto* found = find (band);
    return found != nullptr ? found->setGain (db) : AnalysisError::badArgument;
}

int CEQ::setQuality (int band, double q) noexcept
{
    auto* found = find (band);
    return found != nullptr ? found->setQuality (q) : AnalysisError::badArgument;
}

int CEQ::setType (int band, BandType type) noexcept
{
    auto* found = find (band);
    return found != nullptr ? found->setType (type) : AnalysisError::badArgument;
}

double CEQ::getFrequency (int band) const noexcept
{
    return look (band).getFrequency();
}

double CEQ::getGain (int band) const noexcept
{
    return look (band).getGain();
}

double CEQ::getQuality (int band) const noexcept
{
    return look (band).getQuality();
}

CEQ::BandType CEQ::getType (int band) const noexcept
{
    return look (band).getType();
}
