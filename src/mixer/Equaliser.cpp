#include "mixer/Equaliser.h"

#include <algorithm>
#include <cmath>

namespace
{
constexpr double frequencies[Equaliser::bandCount] { 100.0, 1000.0, 10000.0 };
constexpr double quality = 1.5, gainStepDb = 0.02;

constexpr int glideFrames = 32; ///< between two steps of a glide
constexpr double glideDbPerSecond = 7800.0, atOnce = 1e9;

bool isSilent (const float* samples, int frames) noexcept
{
    return std::all_of (samples, samples + frames, [] (float sample) { return sample == 0.0f; });
}
}

Equaliser::Equaliser() noexcept
{
    bands.setType (low, zParamEQ::BandType::lowShelf);
    bands.setType (high, zParamEQ::BandType::highShelf);
    for (const auto band : { low, mid, high })
        bands.setQuality (band, quality);
}

void Equaliser::setGains (const Gains& gainsDb, double sampleRate) noexcept
{
    targets = gainsDb;
    if (sampleRate == rate)
        return;
    rate = sampleRate;
    bands.setSampleRate (rate);
    for (const auto band : { low, mid, high })
    {
        bands.setFrequency (band, std::min (frequencies[band], 0.45 * rate));
        bands.setGain (band, targets[band]);
    }
    bands.update();
}

bool Equaliser::mustGlide() const noexcept
{
    const auto hasMoved = [this] (Band band)
    { return std::abs (targets[band] - bands.getGain (band)) >= gainStepDb; };
    return hasMoved (low) || hasMoved (mid) || hasMoved (high);
}

void Equaliser::glide (double furthestDb) noexcept
{
    for (const auto band : { low, mid, high })
        if (const auto way = targets[band] - bands.getGain (band); std::abs (way) >= gainStepDb)
            bands.setGain (band, std::abs (way) <= furthestDb
                                     ? targets[band]
                                     : bands.getGain (band) + std::copysign (furthestDb, way));
    bands.update();
}

void Equaliser::process (float* left, float* right, int frames) noexcept
{
    if (bands.isAtRest())
    {
        if (isSilent (left, frames) && isSilent (right, frames))
            return;
        glide (atOnce); // there is no history to throw off
    }
    for (int done = 0; done < frames;)
    {
        auto piece = frames - done;
        if (untilGlide == 0 && mustGlide())
        {
            glide (glideDbPerSecond * glideFrames / rate);
            untilGlide = glideFrames;
        }
        if (untilGlide > 0)
        {
            piece = std::min (piece, untilGlide);
            untilGlide -= piece;
        }
        bands.processPair (left + done, right + done, piece);
        done += piece;
    }
}

void Equaliser::reset() noexcept
{
    bands.reset();
    untilGlide = 0;
}
