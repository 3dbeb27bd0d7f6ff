#include "similarity/store/NearestTracks.h"

#include "support/music/HarmonicFit.h"

#include <algorithm>
#include <limits>

namespace NearestTracks
{
namespace
{
struct Candidate
{
    double score = 0.0, farness = 0.0;
    uint32_t place = 0;

    /** By place among equals, so that the order is always the same. */
    bool operator<(const Candidate& other) const
    {
        return score != other.score ? score < other.score : place < other.place;
    }
};

struct Weights
{
    explicit Weights (const SimilarityQuery& query)
        : tempo (share (query.tempoWeight)),
          key (std::min (share (query.keyWeight), 1.0 - tempo))
    {
    }

    /** NaN counts as 0. */
    static double share (float weight)
    {
        return weight > 0.0f ? std::min (1.0, static_cast<double> (weight)) : 0.0;
    }

    double tempo, key;
};
}

std::vector<Found> find (const TrackTable& table, const TrackTable::Track& asked,
                         const SimilarityQuery& query)
{
    const Weights weights (query);
    const auto& mine = *asked.description;
    const auto limit = static_cast<size_t> (std::max (0, query.count));
    std::vector<Candidate> best; // a heap, the worst on top
    best.reserve (std::min (limit, table.tracks().size()) + 1);
    const auto soundWeight = 1.0 - weights.tempo - weights.key;
    auto farthest = std::numeric_limits<float>::max(); // beyond it nothing beats the worst
    for (size_t i = 0; limit > 0 && i < table.tracks().size(); ++i)
    {
        const auto& track = table.tracks()[i];
        const auto& other = *track.description;
        if (&track == &asked)
            continue;
        const auto fit = weights.tempo
                             * Fit::tempoDistance (static_cast<double> (mine.tempoBpm),
                                                   static_cast<double> (other.tempoBpm))
                         + weights.key * Fit::keyDistance (mine.key, other.key);
        if (best.size() == limit
            && (fit > best.front().score || leastDistance (asked.sound(), track.sound()) > farthest))
            continue;
        const auto apart = distance (mine, other);
        if (apart > farthest)
            continue;
        Candidate candidate;
        candidate.farness = TrackTable::farness (apart, asked.scale, track.scale);
        candidate.score = fit + soundWeight * candidate.farness;
        candidate.place = static_cast<uint32_t> (i);
        if (best.size() == limit && !(candidate < best.front()))
            continue;
        if (query.withCopies == 0 && isCopy (mine, other))
            continue;
        best.push_back (candidate);
        std::push_heap (best.begin(), best.end());
        if (best.size() > limit)
        {
            std::pop_heap (best.begin(), best.end());
            best.pop_back();
        }
        if (best.size() == limit && best.front().score < soundWeight)
            farthest = TrackTable::distanceAt (best.front().score / soundWeight, asked.scale);
    }
    std::sort_heap (best.begin(), best.end());

    std::vector<Found> found;
    found.reserve (best.size());
    for (const auto& candidate : best)
    {
        const auto& track = table.tracks()[candidate.place];
        auto& made = found.emplace_back();
        made.path = track.path;
        made.item.facts = track.description->facts();
        made.item.closeness = static_cast<float> (1.0 - candidate.farness);
        made.item.score = static_cast<float> (candidate.score);
        made.item.isCopy = isCopy (mine, *track.description) ? 1 : 0;
    }
    return found;
}
}
