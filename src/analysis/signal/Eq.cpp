#include "analysis/signal/Eq.h"

#include "analysis/AnalysisError.h"

#include <algorithm>
#include <cfloat>
#include <cmath>
#include <new>

namespace
{
/** The sum of all histories that counts as sound, 400 dB below full scale, and the one that no sound reaches. */
constexpr double silence = 1e-20, runAway = 1e30;

const zParamEQ::CParametricEq fresh;

double magnitude (zParamEQ::History::Pair pair) noexcept
{
    return std::abs (pair[0]) + std::abs (pair[1]);
}

float stored (double result) noexcept
{
    const auto sample = static_cast<float> (result);
    return std::abs (sample) >= FLT_MIN ? sample : 0.0f;
}
}

int CEQ::create (std::unique_ptr<CEqIf>& out, int bands) noexcept
{
    if (bands < 1 || bands > mostBands)
        return AnalysisError::badArgument;
    auto* made = new (std::nothrow) CEQ (bands);
    if (made == nullptr)
        return AnalysisError::noMemory;
    out.reset (made);
    return AnalysisError::none;
}

CEQ::Band* CEQ::find (int band) noexcept
{
    return band >= 0 && band < count ? &bands[static_cast<size_t> (band)] : nullptr;
}

const CEQ::Band& CEQ::look (int band) const noexcept
{
    return band >= 0 && band < count ? bands[static_cast<size_t> (band)] : fresh;
}

int CEQ::setSampleRate (double hz) noexcept
{
    // Each refuses the same rates.
    int error = AnalysisError::none;
    for (auto& band : bands)
        error = band.setSampleRate (hz);
    return error;
}

void CEQ::update() noexcept
{
    for (auto& band : bands)
        band.update();
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

void CEQ::process (const float* in, float* out, int frames) noexcept
{
    constexpr int piece = 64;
    float silent[piece];
    for (int done = 0; done < frames; done += piece)
    {
        const auto some = std::min (piece, frames - done);
        std::fill_n (silent, some, 0.0f);
        std::copy_n (in + done, some, out + done);
        processPair (out + done, silent, some);
    }
}

void CEQ::processPair (float* left, float* right, int frames) noexcept
{
    if (frames > 1 && isFlat())
    {
        histories.fill ({ History::Pair { left[frames - 1], right[frames - 1] },
                          History::Pair { left[frames - 2], right[frames - 2] } });
    }
    else
    {
        runBands (left, right, frames);
    }
    settle();
}

template <int numBands>
void CEQ::run (float* left, float* right, int frames) noexcept
{
    // Copies live in registers.
    std::array<zParamEQ::Biquad, numBands> biquads;
    std::array<History, numBands + 1> states;
    for (size_t band = 0; band < numBands; ++band)
        biquads[band] = bands[band].coefficients();
    std::copy_n (histories.begin(), numBands + 1, states.begin());
    for (int i = 0; i < frames; ++i)
    {
        History::Pair value { left[i], right[i] };
#pragma GCC unroll 4
        for (size_t band = 0; band < numBands; ++band)
            value = Band::filter (biquads[band], value, states[band], states[band + 1]);
        states[numBands] = { value, states[numBands].last };
        left[i] = stored (value[0]);
        right[i] = stored (value[1]);
    }
    std::copy_n (states.begin(), numBands + 1, histories.begin());
}

void CEQ::runBands (float* left, float* right, int frames) noexcept
{
    switch (count)
    {
    case 1:
        return run<1> (left, right, frames);
    case 2:
        return run<2> (left, right, frames);
    case 3:
        return run<3> (left, right, frames);
    default:
        return run<4> (left, right, frames);
    }
}

bool CEQ::takeOverFlat (const CEQ& other) noexcept
{
    if (hasNoGain())
        histories.fill (other.histories[0]);
    return hasNoGain();
}

bool CEQ::hasNoGain() const noexcept
{
    return std::all_of (bands.begin(), bands.begin() + count,
                        [] (const Band& band)
                        {
                            const auto type = band.getType();
                            return band.getGain() == 0.0 && type != BandType::lowPass
                                   && type != BandType::highPass;
                        });
}

bool CEQ::isFlat() const noexcept
{
    // At 0 dB a band's output is its input once what it rang before has died away.
    if (!hasNoGain())
        return false;
    auto difference = 0.0;
    for (size_t i = 1; i <= static_cast<size_t> (count); ++i)
        difference += magnitude (histories[i].last - histories[0].last)
                      + magnitude (histories[i].beforeLast - histories[0].beforeLast);
    return difference < silence;
}

bool CEQ::isAtRest() const noexcept
{
    return std::all_of (histories.begin(), histories.end(),
                        [] (const History& history)
                        { return magnitude (history.last) + magnitude (history.beforeLast) == 0.0; });
}

void CEQ::settle() noexcept
{
    // Left to themselves, histories would go on for ever just above the smallest number: each one that is taken as 0
    // kicks the filter anew. A NaN would never leave them.
    auto sum = 0.0;
    for (size_t i = 0; i <= static_cast<size_t> (count); ++i)
        sum += magnitude (histories[i].last) + magnitude (histories[i].beforeLast);
    if (!(sum > silence && sum < runAway))
        reset();
}
