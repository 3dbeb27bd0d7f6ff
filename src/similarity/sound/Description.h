#pragma once

#include "similarity/similarity.h"

#include <array>
#include <cstdint>
#include <type_traits>

struct RawSound;

/** The sound of a track in 236 bytes, as it stands in the session file. */
struct SimilarityDescription
{
    static constexpr size_t wholeDims = 96, partDims = 16, mostParts = 8;

    using Part = std::array<uint8_t, partDims>;

    std::array<uint8_t, wholeDims>
        whole {}; ///< statistics of the whole track, in quarters of their usual spread and finer
    std::array<Part, mostParts> parts {}; ///< timbre of equal shares of the track, in their order
    float tempoBpm = 0.0f;
    float seconds = 0.0f;
    int8_t key = -1;
    uint8_t keyConfidence = 0; ///< 255 is sure
    uint8_t partCount = 0;     ///< 1 to mostParts
    int8_t tuningCents = 0;

    SimilarityFacts facts() const;
};

static_assert (sizeof (SimilarityDescription) == 236 && std::is_trivially_copyable_v<SimilarityDescription>,
               "stored as it lies in memory");

/** Weighs the measured properties by their usual spread, and rounds them. */
SimilarityDescription describe (const RawSound&, double tempoBpm);

/** True if all fields are in range: bytes of a file may be anything. */
bool isUsable (const SimilarityDescription&);

/** Difference in sound of two tracks, from 0 on; the same in both directions. */
float distance (const SimilarityDescription&, const SimilarityDescription&);

/** The least and the greatest byte of each property among a track's parts. */
struct PartRange
{
    SimilarityDescription::Part least {}, most {};
};

PartRange partRange (const SimilarityDescription&);

/** A description with the range of its parts, which has to be its own. */
struct RangedSound
{
    const SimilarityDescription& description;
    const PartRange& range;
};

/** A bound that distance() never falls below, for a tenth of its cost: the whole tracks, and of the parts the gaps between
    their ranges. */
float leastDistance (const RangedSound&, const RangedSound&);

/** True if two tracks are in all likelihood copies of one recording: part for part the same sound and about as long. */
bool isCopy (const SimilarityDescription&, const SimilarityDescription&);
