#include "mixer/Equaliser.h"

#include <algorithm>
#include <cmath>

namespace
{
constexpr double frequencies[Equaliser::bandCount] { 100.0, 1000.0, 10000.0 };
constexpr double quality = 1.5, gainStepDb = 0.02;
constexpr int longestPiece = 64; ///< of a cross-fade
constexpr double warmUpSeconds = 0.01;

bool isSilent (const float* samples, int frames) noexcept
{
    return std::all_of (samples, samples + frames, [] (float sample) { return sample == 0.0f; });
}
}

Equaliser::Equaliser() noexcept
{
    for (auto& set : sets)
    {
        set.bands.setType (low, zParamEQ::BandType::lowShelf);
        set.bands.setType (high, zParamEQ::BandType::highShelf);
        for (const auto band : { low, mid, high })
            set.bands.setQuality (band, quality);
    }
}

void Equaliser::setGains (const Gains& gainsDb, double sampleRate) noexcept
{
    targets = gainsDb;
    wantsSilence = false;
    if (sampleRate == rate)
        return;
    rate = sampleRate;
    arrival.setSampleRate (rate);
    for (auto& set : sets)
    {
        set.bands.setSampleRate (rate);
        for (const auto band : { low, mid, high })
            set.bands.setFrequency (band, std::min (frequencies[band], 0.45 * rate));
    }
    reset();
}

void Equaliser::configure (Set& set) const noexcept
{
    set.isSilent = wantsSilence;
    for (const auto band : { low, mid, high })
        set.bands.setGain (band, targets[band]);
    set.bands.update();
}

bool Equaliser::isUpToDate (const Set& set) const noexcept
{
    if (wantsSilence || set.isSilent)
        return wantsSilence == set.isSilent;
    const auto holds = [&] (Band band)
    { return std::abs (targets[band] - set.bands.getGain (band)) < gainStepDb; };
    return holds (low) && holds (mid) && holds (high);
}

void Equaliser::startFade() noexcept
{
    const auto& former = sets[current];
    current = 1 - current;
    configure (sets[current]);
    if (!sets[current].bands.takeOverFlat (former.bands))
        warmUp (sets[current].bands);
    arrival.reset (0.0);
    arrival.setTarget (1.0);
}

void Equaliser::warmUp (CEQ& bands) const noexcept
{
    bands.reset();
    const auto frames = std::min (Recent::size, static_cast<int> (warmUpSeconds * rate));
    std::array<float, longestPiece> left, right;
    for (int done = 0; done < frames;)
    {
        const auto piece = std::min (longestPiece, frames - done);
        for (int i = 0; i < piece; ++i, ++done)
        {
            const auto from = static_cast<size_t> ((recent.place - frames + done) & (Recent::size - 1));
            const auto gain = std::min (1.0f, static_cast<float> (2 * done) / static_cast<float> (frames));
            left[static_cast<size_t> (i)] = gain * recent.left[from];
            right[static_cast<size_t> (i)] = gain * recent.right[from];
        }
        bands.processPair (left.data(), right.data(), piece);
    }
}

void Equaliser::remember (const float* left, const float* right, int frames) noexcept
{
    for (int done = 0; done < frames;)
    {
        const auto piece = std::min (frames - done, Recent::size - recent.place);
        std::copy_n (left + done, piece, recent.left.begin() + recent.place);
        std::copy_n (right + done, piece, recent.right.begin() + recent.place);
        recent.place = (recent.place + piece) & (Recent::size - 1);
        done += piece;
    }
}

void Equaliser::Set::process (float* left, float* right, int frames) noexcept
{
    // Filters that are not heard listen on, so that they know the signal when they are.
    bands.processPair (left, right, frames);
    if (!isSilent)
        return;
    std::fill_n (left, frames, 0.0f);
    std::fill_n (right, frames, 0.0f);
}

void Equaliser::fade (float* left, float* right, int frames) noexcept
{
    std::array<float, longestPiece> otherLeft, otherRight;
    std::copy_n (left, frames, otherLeft.begin());
    std::copy_n (right, frames, otherRight.begin());
    sets[1 - current].process (otherLeft.data(), otherRight.data(), frames);
    sets[current].process (left, right, frames);
    CrossFade::over (otherLeft.data(), otherRight.data(), left, right, frames, arrival);
}

void Equaliser::process (float* left, float* right, int frames) noexcept
{
    if (sets[current].bands.isAtRest() && !arrival.isMoving())
    {
        if (isSilent (left, frames) && isSilent (right, frames))
            return;
        reset();
    }
    for (int done = 0; done < frames;)
    {
        if (!arrival.isMoving() && !isUpToDate (sets[current]))
            startFade();
        const auto isFading = arrival.isMoving();
        const auto piece =
            isFading ? std::min ({ frames - done, arrival.samplesLeft(), longestPiece }) : frames - done;
        remember (left + done, right + done, piece);
        if (isFading)
            fade (left + done, right + done, piece);
        else
            sets[current].process (left + done, right + done, piece);
        done += piece;
    }
}

void Equaliser::reset() noexcept
{
    std::fill (recent.left.begin(), recent.left.end(), 0.0f);
    std::fill (recent.right.begin(), recent.right.end(), 0.0f);
    arrival.reset (1.0);
    configure (sets[current]);
    for (auto& set : sets)
        set.bands.reset();
}
