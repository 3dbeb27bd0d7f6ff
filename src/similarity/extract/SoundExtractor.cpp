#include "similarity/extract/SoundExtractor.h"

#include <algorithm>
#include <cmath>

namespace
{
constexpr double highestRate = 26000.0, leastSeconds = 3.0;
constexpr size_t blockFrames = 4096;

double lowRateOf (double rate)
{
    while (rate > highestRate)
        rate *= 0.5;
    return rate;
}

float finite (float sample)
{
    return std::abs (sample) < 64.0f ? sample : 0.0f; // false for NaN too
}

/** The first `count` coefficients of the orthonormal DCT-II of values. */
template <size_t size>
void appendCosines (const std::array<float, size>& values, size_t count, std::vector<float>& out)
{
    for (size_t c = 0; c < count; ++c)
    {
        auto sum = 0.0;
        for (size_t i = 0; i < size; ++i)
            sum += static_cast<double> (values[i])
                   * std::cos (M_PI * static_cast<double> (c) * (static_cast<double> (i) + 0.5) / size);
        out.push_back (static_cast<float> (sum * std::sqrt ((c == 0 ? 1.0 : 2.0) / size)));
    }
}
}

SoundExtractor::SoundExtractor (double r)
    : rate (r),
      lowRate (lowRateOf (r)),
      mel (lowRate),
      rhythm (lowRate / MelSpectrum::hop),
      tonality (lowRate)
{
    for (auto at = rate; at > lowRate; at *= 0.5)
        halvings.emplace_back();
}

void SoundExtractor::add (const float* left, const float* right, int count)
{
    frames += count;
    while (count > 0)
    {
        const auto piece = std::min (static_cast<size_t> (count), blockFrames);
        mono.resize (piece);
        for (size_t i = 0; i < piece; ++i)
            mono[i] = finite (0.5f * (left[i] + right[i]));
        takeMono();
        left += piece;
        right += piece;
        count -= static_cast<int> (piece);
    }
}

void SoundExtractor::takeMono()
{
    for (auto& halving : halvings)
    {
        next.clear();
        halving.process (mono, next);
        mono.swap (next);
    }
    tonality.add (mono);
    pending.insert (pending.end(), mono.begin(), mono.end());
    size_t start = 0;
    for (; pending.size() - start >= static_cast<size_t> (MelSpectrum::frameLength);
         start += MelSpectrum::hop)
    {
        const auto levels = mel.levels (pending.data() + start);
        timbre.add (levels);
        rhythm.add (levels);
    }
    pending.erase (pending.begin(), pending.begin() + static_cast<std::ptrdiff_t> (start));
}

std::optional<RawSound> SoundExtractor::finish()
{
    const auto pieces = timbre.soundingPieces();
    Timbre::Piece all;
    for (const auto& piece : pieces)
        all.add (piece);
    if (all.frames * MelSpectrum::hop < leastSeconds * lowRate)
        return {};

    RawSound made;
    made.seconds = static_cast<double> (frames) / rate;
    made.tonality = tonality.result();
    auto& whole = made.whole;
    for (size_t c = 1; c < Timbre::coefficients; ++c)
        whole.push_back (all.mean (c));
    made.plain = whole;
    for (size_t c = 0; c < Timbre::coefficients; ++c)
        whole.push_back (all.deviation (c));
    for (size_t c = 0; c < Timbre::coefficients; ++c)
        whole.push_back (all.change (c));
    const auto pattern = rhythm.pattern();
    for (const auto& range : pattern)
        appendCosines (range, 10, whole);
    // Pitches: how uneven they are, whatever the key.
    auto sorted = made.tonality.chroma;
    std::sort (sorted.begin(), sorted.end(), std::greater<>());
    for (size_t i = 0; i < 6; ++i)
        whole.push_back (sorted[i]);
    // Changes of the level from piece to piece.
    auto sum = 0.0f, squares = 0.0f;
    for (const auto& piece : pieces)
    {
        sum += piece.mean (0);
        squares += piece.mean (0) * piece.mean (0);
    }
    const auto count = static_cast<float> (pieces.size());
    whole.push_back (std::sqrt (std::max (0.0f, squares / count - sum * sum / count / count)));

    const auto parts = std::clamp (pieces.size() / 8, size_t { 1 }, RawSound::mostParts);
    for (size_t p = 0; p < parts; ++p)
    {
        Timbre::Piece part;
        for (auto i = p * pieces.size() / parts; i < (p + 1) * pieces.size() / parts; ++i)
            part.add (pieces[i]);
        auto& made16 = made.parts.emplace_back();
        for (size_t c = 0; c < 12; ++c)
            made16[c] = part.mean (c + 1);
        made16[12] = part.deviation (0);
        made16[13] = part.deviation (1);
        made16[14] = part.change (0);
        made16[15] = part.change (1);
    }
    return made;
}
