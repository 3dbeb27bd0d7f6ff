#pragma once

#include "similarity/store/SessionFile.h"

#include <deque>
#include <string>
#include <unordered_map>
#include <vector>

/** The tracks of a session by their path, and the scale of distances by which they are compared.

    A track in the middle of a crowd is near to everybody, and would stand in every answer. So a distance counts by the
    share of tracks that it beats, seen from both of its ends: mutual proximity (Schnitzer et al., 2012), with normal
    distributions whose means and spreads are those of a sample. The sample is drawn anew whenever the number of tracks
    has doubled. One thread at a time. */
class TrackTable
{
public:
    struct Track
    {
        const SimilarityDescription* description = nullptr;
        std::string_view path;
        SessionFile::Scale scale;
        PartRange range; ///< of the description

        RangedSound sound() const noexcept { return { *description, range }; }
    };

    /** Tracks from which on there is a sample; below, a usual scale stands for it. */
    static constexpr size_t leastForSample = 16;

    /** Takes over tracks that stay where they are, and the sample, as a file has them. Scales of another sample are
        measured anew. */
    void take (const SessionFile::Contents&);

    /** Stores a copy. @returns true if the sample was drawn anew, so that all scales have changed */
    bool store (std::string_view path, const SimilarityDescription&);

    /** Forgets all. */
    void clear();

    const Track* find (std::string_view path) const;
    const std::vector<Track>& tracks() const noexcept { return all; }
    const SessionFile::Sample& sample() const noexcept { return drawn; }
    SessionFile::StoredTrack stored (const Track& track) const
    {
        return { *track.description, track.scale, drawn.draw };
    }

    /** The share of tracks that are nearer than a distance, seen from both ends: 0 is next to each other. */
    static double farness (float distance, SessionFile::Scale, SessionFile::Scale) noexcept;

    /** The distance at which a share of tracks is nearer, by one scale: farness() of a larger one is more. */
    static float distanceAt (double share, SessionFile::Scale) noexcept;

private:
    void put (const Track&);
    void drawSample();
    SessionFile::Scale scaleOf (const SimilarityDescription&) const;

    std::vector<Track> all;
    std::unordered_map<std::string_view, size_t> places;
    std::deque<std::pair<std::string, SimilarityDescription>> own; ///< what store() copied
    SessionFile::Sample drawn;
};
