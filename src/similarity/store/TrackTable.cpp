#include "similarity/store/TrackTable.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <random>

namespace
{
/** Of distances between tracks of all styles; also the least spread that is taken for one. */
constexpr SessionFile::Scale usualScale { 1.55f, 0.28f };
constexpr float leastSpread = 0.05f;

/** Seeds the draw, so that the same tracks give the same answers. */
constexpr uint32_t seed = 20011;

/** The share of a normal distribution below a value. */
double shareBelow (float value, SessionFile::Scale scale)
{
    const auto z = static_cast<double> ((value - scale.mean) / std::max (scale.spread, leastSpread));
    return 0.5 * std::erfc (-z * (std::numbers::sqrt2 / 2.0));
}
}

double TrackTable::farness (float distance, SessionFile::Scale a, SessionFile::Scale b) noexcept
{
    const auto fromA = shareBelow (distance, a), fromB = shareBelow (distance, b);
    return fromA + fromB - fromA * fromB;
}

float TrackTable::distanceAt (double share, SessionFile::Scale scale) noexcept
{
    // By halving: from both tails of the distribution to a millionth of them.
    constexpr auto tail = 9.0f;
    constexpr auto halvings = 24;
    const auto spread = std::max (scale.spread, leastSpread);
    auto low = scale.mean - tail * spread, high = scale.mean + tail * spread;
    for (int i = 0; i < halvings; ++i)
    {
        const auto middle = 0.5f * (low + high);
        (shareBelow (middle, scale) < share ? low : high) = middle;
    }
    return high;
}

void TrackTable::put (const Track& track)
{
    const auto [entry, isNew] = places.try_emplace (track.path, all.size());
    if (isNew)
        all.push_back (track);
    else
    {
        // The new path text stays as long as the new description.
        const auto place = entry->second;
        places.erase (entry);
        places.emplace (track.path, place);
        all[place] = track;
    }
}

void TrackTable::take (const SessionFile::Contents& contents)
{
    if (contents.sample.draw > drawn.draw)
        drawn = contents.sample;
    all.reserve (all.size() + contents.tracks.size());
    places.reserve (all.size() + contents.tracks.size());
    for (const auto& [stored, path] : contents.tracks)
        put ({ &stored->description, path,
               stored->draw == drawn.draw ? stored->scale : scaleOf (stored->description),
               partRange (stored->description) });
    if (all.size() >= leastForSample && drawn.draw == 0)
        drawSample();
}

bool TrackTable::store (std::string_view path, const SimilarityDescription& description)
{
    const auto& [name, copy] = own.emplace_back (std::string (path), description);
    put ({ &copy, name, scaleOf (copy), partRange (copy) });
    if (all.size() < leastForSample || all.size() < 2 * static_cast<size_t> (drawn.drawnFrom))
        return false;
    drawSample();
    return true;
}

void TrackTable::clear()
{
    all.clear();
    places.clear();
    own.clear();
    drawn = {};
}

const TrackTable::Track* TrackTable::find (std::string_view path) const
{
    const auto found = places.find (path);
    return found != places.end() ? &all[found->second] : nullptr;
}

void TrackTable::drawSample()
{
    // The first of a shuffle, by Fisher and Yates.
    std::vector<uint32_t> order (all.size());
    for (size_t i = 0; i < order.size(); ++i)
        order[i] = static_cast<uint32_t> (i);
    std::minstd_rand random (seed + static_cast<uint32_t> (all.size()));
    const auto count = std::min (order.size(), SessionFile::mostMembers);
    drawn.members.clear();
    for (size_t i = 0; i < count; ++i)
    {
        std::swap (order[i], order[i + random() % (order.size() - i)]);
        drawn.members.push_back (*all[order[i]].description);
    }
    ++drawn.draw;
    drawn.drawnFrom = static_cast<uint32_t> (all.size());
    for (auto& track : all)
        track.scale = scaleOf (*track.description);
}

SessionFile::Scale TrackTable::scaleOf (const SimilarityDescription& description) const
{
    auto sum = 0.0, squares = 0.0;
    auto count = 0;
    for (const auto& member : drawn.members)
    {
        const auto apart = static_cast<double> (distance (description, member));
        if (apart <= 0.0)
            continue; // the track itself, or its like
        sum += apart;
        squares += apart * apart;
        ++count;
    }
    if (count < static_cast<int> (leastForSample) / 2)
        return usualScale;
    const auto mean = sum / count;
    return { static_cast<float> (mean),
             static_cast<float> (std::sqrt (std::max (0.0, squares / count - mean * mean))) };
}
