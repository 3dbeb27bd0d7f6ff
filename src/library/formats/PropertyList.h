#pragma once

#include <juce_core/juce_core.h>

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <vector>

/** The music library that is an XML property list: in its outer dictionary "Tracks", a dictionary of tracks, and
    "Playlists", an array of playlists, in either order. What is unknown, or of another type than it must be, is skipped
    with all that is in it. */
namespace PropertyList
{
/** The values of a track that the library takes over, by the key's place in this list. */
enum class TrackKey
{
    trackId,
    name,
    artist,
    album,
    grouping,
    genre,
    kind,
    size,
    totalTime,
    trackNumber,
    year,
    bitRate,
    sampleRate,
    playCount,
    comments,
    rating,
    location
};

/** Each value as it stands in the file; nothing for what is missing. */
using Track = std::map<TrackKey, juce::String>;

struct Playlist
{
    juce::String name;
    std::vector<int32_t> trackIds; ///< in the list's order
    bool isSpecial = false;        ///< one of the foreign program's own, by its "Distinguished Kind"
};

/** Bytes that are kept of a value. */
inline constexpr size_t maxValueBytes = 1 << 16;

/** The functions that are called while reading; each returns false to end it. @param part   of the file that is read, 0 to 1 */
struct Visitor
{
    std::function<bool (const Track&, double part)> onTrack = [] (const Track&, double) { return true; };
    std::function<bool (const Playlist&, double part)> onPlaylist = [] (const Playlist&, double)
    { return true; };
};

/** Reads a file. Takes the memory of its longest playlist's numbers, not of the file.
    @returns false if it is no such list, or breaks off or is malformed anywhere; what was good before was handed over */
bool read (std::unique_ptr<juce::InputStream>, const Visitor&);

/** A whole number that fits 32 bits, or -1. */
int32_t idOf (const juce::String&);
}
