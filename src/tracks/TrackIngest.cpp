#include "tracks/TrackIngest.h"

#include "support/OnePole.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstring>

namespace
{
constexpr int levelSpan = 511;
constexpr double levelScale = 0.001953125; // 1 / 512
constexpr int overviewShift = 10;

// Bins of the 512-point transform: 0 to 3 low, 4 to 24 mid, 25 to 255 high.
constexpr int firstMidBin = 4, firstHighBin = 25, binCount = framesPerOverviewEntry / 2;

double smoothStep (double x)
{
    return x * x * (3.0 - 2.0 * x);
}

uint8_t toByte (double value)
{
    return static_cast<uint8_t> (std::clamp (static_cast<int> (value), 0, 255));
}

/** One step of the smoothing. It keeps the byte that is shown, so that a band that towers above the range, as a lone
    tone in the middle does, is gone from the picture as soon as from the sound. */
uint8_t smoothed (uint8_t old, double target)
{
    return toByte (OnePole::approached (old, target, 0.5));
}
}

TrackIngest::TrackIngest (const TrackTarget& t) : target (t), written (t.frames)
{
    CFFT::create (fft, framesPerOverviewEntry);
}

int TrackIngest::append (const int16_t* left, const int16_t* right, int frames)
{
    frames = std::min (frames, PXAudioSampleBuffer::maxFrames - written);
    if (frames <= 0)
        return 0;

    std::memcpy (target.samples.left() + written, left, static_cast<size_t> (frames) * sizeof (int16_t));
    std::memcpy (target.samples.right() + written, right, static_cast<size_t> (frames) * sizeof (int16_t));

    for (int done = 0; done < frames;)
    {
        const auto run =
            std::min ({ frames - done, framesPerOverviewEntry - entryFrames, levelSpan - levelFrames });
        accumulate (left + done, right + done, run);
        done += run;
        written += run;
        if (levelFrames == levelSpan)
            closeLevel();
        if (entryFrames == framesPerOverviewEntry)
            closeEntry();
    }

    target.frames = written;
    return frames;
}

void TrackIngest::accumulate (const int16_t* left, const int16_t* right, int frames)
{
    // Separate plain loops: each of them vectorises.
    int16_t high = INT16_MIN, low = INT16_MAX;
    for (int i = 0; i < frames; ++i)
    {
        high = std::max (high, std::max (left[i], right[i]));
        low = std::min (low, std::min (left[i], right[i]));
    }

    int32_t sum = 0; // at most 511 * 32 * 32
    for (int i = 0; i < frames; ++i)
    {
        const auto larger = std::max (left[i], right[i]) >> overviewShift;
        sum += larger * larger;
    }

    auto* window = mono.data() + entryFrames;
    for (int i = 0; i < frames; ++i)
        window[i] = static_cast<float> (left[i] + right[i]) * (0.5f * 3.0517578125e-5f);

    const auto loudest = static_cast<float> (std::max<int> (high, -low)) / 32768.0f;
    target.overview.peak = std::max (target.overview.peak.get(), loudest);
    const auto entry = static_cast<size_t> (written / framesPerOverviewEntry);
    greatest = std::max (greatest, high >> overviewShift);
    smallest = std::min (smallest, low >> overviewShift);
    target.overview.overviewMax[entry] = static_cast<int8_t> (greatest);
    target.overview.overviewMin[entry] = static_cast<int8_t> (smallest);
    levelSum += sum;
    levelFrames += frames;
    entryFrames += frames;
}

void TrackIngest::closeLevel()
{
    const auto entry = static_cast<size_t> ((written - 1) / framesPerOverviewEntry);
    target.overview.overviewLevel[entry] = toByte (std::sqrt (static_cast<double> (levelSum) * levelScale));
    levelFrames = 0;
    levelSum = 0;
}

void TrackIngest::closeEntry()
{
    const auto entry = static_cast<size_t> ((written - 1) / framesPerOverviewEntry);
    entryFrames = 0;
    greatest = smallest = 0;
    if (fft == nullptr)
        return;

    // The greatest and smallest magnitudes are those of the squares.
    spectrum = mono;
    fft->forward (spectrum.data());
    fft->power (spectrum.data());
    // Squares are never below 0, so their bits compare as they do; of integers the loops become vector instructions.
    const auto squareBits = [this] (int k)
    { return std::bit_cast<int32_t> (spectrum[static_cast<size_t> (k)]); };
    const auto rootOf = [] (int32_t bits)
    { return std::sqrt (static_cast<double> (std::bit_cast<float> (bits))); };
    const auto greatestOf = [&] (int first, int last)
    {
        int32_t most = 0;
        for (int k = first; k < last; ++k)
            most = std::max (most, squareBits (k));
        return rootOf (most);
    };
    const auto low = greatestOf (0, firstMidBin);
    const auto mid = greatestOf (firstMidBin, firstHighBin);
    const auto high = greatestOf (firstHighBin, binCount);
    auto leastSquare = std::bit_cast<int32_t> (255.0f * 255.0f);
    for (int k = 0; k < binCount; ++k)
        leastSquare = std::min (leastSquare, squareBits (k));
    const auto least = rootOf (leastSquare);

    auto range = std::max (low, high) - least;
    if (range == 0.0)
        range = 1.0;
    colours.low = smoothed (colours.low, smoothStep ((low - least) / range) * 150.0);
    colours.mid = smoothed (colours.mid, (mid - least) / range * 160.0);
    colours.high = smoothed (colours.high, smoothStep ((high - least) / range) * 170.0);
    target.overview.overviewLow[entry] = colours.low;
    target.overview.overviewMid[entry] = colours.mid;
    target.overview.overviewHigh[entry] = colours.high;
}
