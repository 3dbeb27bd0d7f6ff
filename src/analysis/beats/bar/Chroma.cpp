#include "analysis/beats/bar/Chroma.h"

#include "analysis/AnalysisError.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace
{
/** Frequency in Hz of a pitch in cents above C0, where A4, 57 semitones up, is 440 Hz. */
double frequency (double cents)
{
    return 440.0 * std::exp2 ((cents - 5700.0) / 1200.0);
}
}

int CChroma::init (double rateOfInput)
{
    std::vector<float> window (length);
    for (size_t i = 0; i < length; ++i)
        window[i] = static_cast<float> (
            0.5 - 0.5 * std::cos (2.0 * std::numbers::pi * static_cast<double> (i) / length));
    if (const auto error = CFFT::create (transform, length, window.data()); error != AnalysisError::none)
        return error;
    spectrum.assign (length, 0.0f);
    for (int p = 0; p <= numPitches; ++p)
    {
        const auto edge = frequency (lowestCents + 100.0 * p - 50.0);
        firstBin[static_cast<size_t> (p)] =
            std::min (length / 2, static_cast<int> (std::ceil (edge * length / rateOfInput)));
    }
    return AnalysisError::none;
}

void CChroma::process (std::span<const float> in)
{
    pending.insert (pending.end(), in.begin(), in.end());
    size_t start = 0;
    for (; pending.size() - start >= length; start += hop)
        takeFrame (pending.data() + start);
    pending.erase (pending.begin(), pending.begin() + static_cast<std::ptrdiff_t> (start));
}

void CChroma::takeFrame (const float* in)
{
    std::copy_n (in, length, spectrum.begin());
    transform->forward (spectrum.data());
    transform->power (spectrum.data());
    auto& profile = made.emplace_back();
    for (size_t p = 0; p < numPitches; ++p)
    {
        auto power = 0.0f;
        for (int k = std::max (1, firstBin[p]); k < firstBin[p + 1]; ++k)
            power += spectrum[static_cast<size_t> (k)];
        profile[p] = std::sqrt (power);
    }
}
