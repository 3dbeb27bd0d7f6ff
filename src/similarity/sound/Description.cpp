#include "similarity/sound/Description.h"

#include "similarity/extract/SoundExtractor.h"
#include "similarity/sound/Reference.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <limits>

namespace
{
static_assert (RawSound::partDims == SimilarityDescription::partDims
               && RawSound::mostParts == SimilarityDescription::mostParts);

/** Steps of a byte for the usual spread of a property: it holds 5 spreads either way. */
constexpr float stepsPerSpread = 25.0f;

/** The share of the parts in the distance beside the whole's 1. */
constexpr float partWeight = 0.75f;

/** Copies are this much nearer than tracks that only sound alike, and their lengths this near. */
constexpr float copyDistance = 0.4f;
constexpr float copyLength = 0.08f;

uint8_t toByte (float value, Reference::Usual usual)
{
    const auto steps = std::lround (stepsPerSpread * (value - usual.mean) / usual.spread);
    return static_cast<uint8_t> (std::clamp (steps + 128, 0l, 255l));
}

/** The sum of differences; of bytes in an array of fixed size it becomes one vector instruction for each 16. */
template <size_t size>
int differences (const std::array<uint8_t, size>& a, const std::array<uint8_t, size>& b)
{
    auto sum = 0;
    for (size_t i = 0; i < size; ++i)
        sum += std::abs (static_cast<int> (a[i]) - static_cast<int> (b[i]));
    return sum;
}

/** The mean over the parts of the track that has fewer of the difference to the most similar part of the other one; of
    as many parts the mean of both directions, so that it is the same from either side. */
float partDifference (const SimilarityDescription& a, const SimilarityDescription& b)
{
    const auto& few = a.partCount <= b.partCount ? a : b;
    const auto& many = a.partCount <= b.partCount ? b : a;
    std::array<int, SimilarityDescription::mostParts> least;
    least.fill (std::numeric_limits<int>::max());
    auto sum = 0;
    for (size_t i = 0; i < few.partCount; ++i)
    {
        auto nearest = std::numeric_limits<int>::max();
        for (size_t k = 0; k < many.partCount; ++k)
        {
            const auto apart = differences (few.parts[i], many.parts[k]);
            nearest = std::min (nearest, apart);
            least[k] = std::min (least[k], apart);
        }
        sum += nearest;
    }
    if (few.partCount < many.partCount)
        return static_cast<float> (sum) / static_cast<float> (few.partCount);
    for (size_t k = 0; k < many.partCount; ++k)
        sum += least[k];
    return 0.5f * static_cast<float> (sum) / static_cast<float> (many.partCount);
}

float spreads (float steps, size_t dims)
{
    return steps / (stepsPerSpread * static_cast<float> (dims));
}

/** The difference of the whole tracks in distance(). */
float wholeDistance (const SimilarityDescription& a, const SimilarityDescription& b)
{
    return spreads (static_cast<float> (differences (a.whole, b.whole)), SimilarityDescription::wholeDims);
}

/** The sum of the steps by which one track's range lies above another's. */
int stepsAbove (const SimilarityDescription::Part& least, const SimilarityDescription::Part& otherMost)
{
    SimilarityDescription::Part reached;
    for (size_t i = 0; i < reached.size(); ++i)
        reached[i] = std::max (least[i], otherMost[i]);
    return differences (reached, otherMost);
}
}

SimilarityFacts SimilarityDescription::facts() const
{
    return { tempoBpm, seconds, key, static_cast<float> (keyConfidence) / 255.0f };
}

SimilarityDescription describe (const RawSound& raw, double tempoBpm)
{
    SimilarityDescription made;
    for (size_t i = 0; i < made.whole.size(); ++i)
        made.whole[i] = toByte (raw.whole[i], Reference::whole[i]);
    made.partCount = static_cast<uint8_t> (raw.parts.size());
    for (size_t p = 0; p < raw.parts.size(); ++p)
        for (size_t i = 0; i < made.parts[p].size(); ++i)
            made.parts[p][i] = toByte (raw.parts[p][i], Reference::part[i]);
    made.tempoBpm = static_cast<float> (tempoBpm);
    made.seconds = static_cast<float> (raw.seconds);
    made.key = static_cast<int8_t> (raw.tonality.key);
    made.keyConfidence = static_cast<uint8_t> (std::lround (255.0f * raw.tonality.confidence));
    made.tuningCents = static_cast<int8_t> (std::lround (raw.tonality.tuningCents));
    return made;
}

bool isUsable (const SimilarityDescription& description)
{
    return description.partCount >= 1 && description.partCount <= SimilarityDescription::mostParts
           && description.key >= -1 && description.key < 24 && description.tempoBpm >= 0.0f
           && description.tempoBpm < 10000.0f && description.seconds > 0.0f && description.seconds < 1e7f;
}

PartRange partRange (const SimilarityDescription& description)
{
    PartRange range { description.parts[0], description.parts[0] };
    for (size_t p = 1; p < description.partCount; ++p)
        for (size_t i = 0; i < range.least.size(); ++i)
        {
            range.least[i] = std::min (range.least[i], description.parts[p][i]);
            range.most[i] = std::max (range.most[i], description.parts[p][i]);
        }
    return range;
}

float leastDistance (const RangedSound& a, const RangedSound& b)
{
    const auto gaps = stepsAbove (a.range.least, b.range.most) + stepsAbove (b.range.least, a.range.most);
    return wholeDistance (a.description, b.description)
           + partWeight * spreads (static_cast<float> (gaps), SimilarityDescription::partDims);
}

float distance (const SimilarityDescription& a, const SimilarityDescription& b)
{
    return wholeDistance (a, b)
           + partWeight * spreads (partDifference (a, b), SimilarityDescription::partDims);
}

bool isCopy (const SimilarityDescription& a, const SimilarityDescription& b)
{
    if (a.partCount != b.partCount
        || std::abs (a.seconds - b.seconds) > copyLength * std::max (a.seconds, b.seconds))
        return false;
    auto inOrder = 0;
    for (size_t p = 0; p < a.partCount; ++p)
        inOrder += differences (a.parts[p], b.parts[p]);
    return wholeDistance (a, b)
               + partWeight
                     * spreads (static_cast<float> (inOrder) / static_cast<float> (a.partCount),
                                SimilarityDescription::partDims)
           < copyDistance;
}
