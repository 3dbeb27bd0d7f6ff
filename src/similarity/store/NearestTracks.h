#pragma once

#include "similarity/store/TrackTable.h"

/** The answer to a question: a look at every track. */
namespace NearestTracks
{
struct Found
{
    SimilarityItem item {};
    std::string path;
};

/** @returns the tracks, best first, without the one that is asked for */
std::vector<Found> find (const TrackTable&, const TrackTable::Track& asked, const SimilarityQuery&);
}
