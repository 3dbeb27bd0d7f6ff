#include "similarity/extract/Timbre.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <utility>

namespace
{
/** Level in dB per unit of the zeroth coefficient, which is the sum of the bands over the root of their number. */
const float levelOfZeroth = 1.0f / std::sqrt (static_cast<float> (MelSpectrum::bandCount));
constexpr float quietDb = 30.0f;

/** Frames of digital silence and below: nothing sounds. */
constexpr float silentDb = MelSpectrum::floorDb + 6.0f;
}

Timbre::Timbre()
{
    // The orthonormal DCT-II.
    const auto count = static_cast<double> (MelSpectrum::bandCount);
    for (size_t b = 0; b < MelSpectrum::bandCount; ++b)
        for (size_t c = 0; c < coefficients; ++c)
            cosines[b][c] = static_cast<float> (std::sqrt ((c == 0 ? 1.0 : 2.0) / count)
                                                * std::cos (std::numbers::pi * static_cast<double> (c)
                                                            * (static_cast<double> (b) + 0.5) / count));
}

void Timbre::add (const MelSpectrum::Levels& levels)
{
    Cepstrum now {};
    for (size_t b = 0; b < MelSpectrum::bandCount; ++b)
        for (size_t c = 0; c < coefficients; ++c)
            now[c] += levels[b] * cosines[b][c];
    if (now[0] * levelOfZeroth < silentDb)
    {
        hasLast = false;
        return;
    }
    for (size_t c = 0; c < coefficients; ++c)
    {
        current.sum[c] += now[c];
        current.squares[c] += now[c] * now[c];
        current.changes[c] += hasLast ? std::abs (now[c] - last[c]) : 0.0f;
    }
    last = now;
    hasLast = true;
    if (++current.frames == framesPerPiece)
        pieces.push_back (std::exchange (current, {}));
}

void Timbre::Piece::add (const Piece& other)
{
    frames += other.frames;
    for (size_t c = 0; c < coefficients; ++c)
    {
        sum[c] += other.sum[c];
        squares[c] += other.squares[c];
        changes[c] += other.changes[c];
    }
}

float Timbre::Piece::deviation (size_t c) const
{
    const auto average = mean (c);
    return std::sqrt (std::max (0.0f, squares[c] / static_cast<float> (frames) - average * average));
}

std::vector<Timbre::Piece> Timbre::soundingPieces()
{
    if (current.frames >= framesPerPiece / 2 || (pieces.empty() && current.frames > 0))
        pieces.push_back (std::exchange (current, {}));
    if (pieces.empty())
        return {};
    std::vector<float> levels;
    for (const auto& piece : pieces)
        levels.push_back (piece.mean (0) * levelOfZeroth);
    const auto loud = levels.begin() + static_cast<std::ptrdiff_t> (levels.size() * 3 / 4);
    std::nth_element (levels.begin(), loud, levels.end());
    std::vector<Piece> sounding;
    for (const auto& piece : pieces)
        if (piece.mean (0) * levelOfZeroth > *loud - quietDb)
            sounding.push_back (piece);
    return sounding;
}
