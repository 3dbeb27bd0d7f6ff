#pragma once

#include "similarity/extract/Rhythm.h"
#include "similarity/extract/Timbre.h"
#include "similarity/extract/Tonality.h"

#include <array>
#include <optional>
#include <vector>

/** The measured properties of a track's sound, before they are weighed. */
struct RawSound
{
    static constexpr size_t partDims = 16, mostParts = 8;
    using Part = std::array<float, partDims>;

    std::vector<float> whole; ///< Description::wholeDims values
    std::vector<Part> parts;  ///< 1 to 8, in their order: equal shares of what sounds
    std::vector<float> plain; ///< the mean cepstrum, which comparisons are measured against
    Tonality::Result tonality;
    double seconds = 0.0;
};

/** Listens to one track in one pass and describes how it sounds. The level does not matter. One thread. */
class SoundExtractor
{
public:
    /** @param rate   Hz, 8000 to 400000 */
    explicit SoundExtractor (double rate);

    /** The next samples; full scale is 1, NaN and infinity count as silence. */
    void add (const float* left, const float* right, int frames);

    /** @returns nothing if nothing sounded for 3 seconds */
    std::optional<RawSound> finish();

private:
    void takeMono();

    const double rate;
    double lowRate;
    int64_t frames = 0;
    std::vector<HalfBand> halvings;
    std::vector<float> mono, next, pending;
    MelSpectrum mel;
    Timbre timbre;
    Rhythm rhythm;
    Tonality tonality;
};
