#pragma once

#include "similarity/sound/Description.h"

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

/** The session file: a header and blocks that are only appended, each with its length and a checksum. So a process that is
    killed leaves at most a torn block at the end. Functions between bytes and values. */
namespace SessionFile
{
/** Mean and spread of the distances from a track to the sample of its session. */
struct Scale
{
    float mean = 0.0f, spread = 0.0f;
};

/** A track as it stands in a block, its path behind it. */
struct StoredTrack
{
    SimilarityDescription description;
    Scale scale;
    uint32_t draw = 0; ///< of the sample that the scale belongs to
};

/** A view of a track in a file's bytes. */
struct Track
{
    const StoredTrack* stored = nullptr;
    std::string_view path;
};

/** The tracks that stand for all when distances are judged. */
struct Sample
{
    uint32_t draw = 0;      ///< 0: none
    uint32_t drawnFrom = 0; ///< tracks that there were
    std::vector<SimilarityDescription> members;
};

inline constexpr size_t mostMembers = 256, mostPathBytes = 16384;

struct Contents
{
    enum class State
    {
        whole,
        torn,    ///< some blocks can't be read
        foreign, ///< no session file at all
        version  ///< one of another version
    };

    State state = State::whole;
    std::vector<Track> tracks; ///< a later one replaces an earlier one of the same path
    Sample sample;
    size_t lost = 0; ///< blocks that can't be read
};

/** Reads a whole file. @param bytes   aligned to 8; the tracks point into them */
Contents read (std::span<const std::byte> bytes);

void appendHeader (std::vector<std::byte>&);
void append (std::vector<std::byte>&, const StoredTrack&, std::string_view path);
void append (std::vector<std::byte>&, const Sample&);
}
