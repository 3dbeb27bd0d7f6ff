#include "adec/Mp4Timing.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <memory>
#include <sstream>

namespace adec
{
namespace
{
using Bytes = std::span<const uint8_t>;

/** A movie of hours with a sample table of its own per packet stays far below this. */
constexpr uint64_t largestMovie = 256u << 20;

/** The big-endian number of `bytes` bytes at `at`, or 0 beyond the end. */
uint64_t number (Bytes from, size_t at, size_t bytes)
{
    if (at > from.size() || bytes > from.size() - at)
        return 0;
    uint64_t value = 0;
    for (size_t i = 0; i < bytes; ++i)
        value = value << 8 | from[at + i];
    return value;
}

bool isType (const uint8_t* at, const char* type)
{
    return std::memcmp (at, type, 4) == 0;
}

/** Calls `visit` with the type and content of each box in `boxes`, up to the first damaged one. */
template <typename Visit>
void forEachBox (Bytes boxes, Visit&& visit)
{
    while (boxes.size() >= 8)
    {
        const auto size = number (boxes, 0, 4);
        if (size < 8 || size > boxes.size())
            return;
        visit (boxes.data() + 4, boxes.subspan (8, static_cast<size_t> (size) - 8));
        boxes = boxes.subspan (static_cast<size_t> (size));
    }
}

/** The content of the first box of that type; empty if there is none. */
Bytes findBox (Bytes boxes, const char* type)
{
    Bytes found;
    forEachBox (boxes,
                [&] (const uint8_t* name, Bytes content)
                {
                    if (found.empty() && isType (name, type))
                        found = content;
                });
    return found;
}

/** The clock of a "mvhd" or "mdhd" box, whose second version has longer dates. */
int64_t timescale (Bytes header)
{
    return static_cast<int64_t> (number (header, number (header, 0, 1) == 1 ? 20 : 12, 4));
}

/** The ticks of all samples of a "stts" box; 0 if it doesn't say. */
int64_t totalDuration (Bytes table)
{
    const auto entries = number (table, 4, 4);
    if (table.size() < 8 || entries > (table.size() - 8) / 8)
        return 0;

    uint64_t total = 0;
    for (size_t i = 0; i < entries; ++i)
    {
        total += number (table, 8 + 8 * i, 4) * number (table, 12 + 8 * i, 4);
        if (total > static_cast<uint64_t> (Mp4Timing::unknownLength))
            return 0;
    }
    return static_cast<int64_t> (total);
}

/** Applies an edit list to the uncut `timing`. @returns false if it is more than one cut. */
bool applyEdits (Bytes list, int64_t movieTimescale, Mp4Timing& timing)
{
    const bool isLong = number (list, 0, 1) == 1;
    const size_t fieldBytes = isLong ? 8 : 4, entryBytes = 2 * fieldBytes + 4;
    const auto entries = number (list, 4, 4);
    if (list.size() < 8 || entries > (list.size() - 8) / entryBytes)
        return false;

    bool isCut = false;
    for (size_t i = 0; i < entries; ++i)
    {
        const auto at = 8 + i * entryBytes;
        const auto mediaTime = isLong ? static_cast<int64_t> (number (list, at + 8, 8))
                                      : static_cast<int32_t> (number (list, at + 4, 4));
        if (mediaTime == -1)
            continue; // a pause before the track, which a deck doesn't play
        if (isCut || mediaTime < 0 || mediaTime >= timing.length)
            return false;
        isCut = true;
        timing.start = mediaTime;

        if (timing.length == Mp4Timing::unknownLength)
            continue; // the list was written before its end was known
        const auto ticks = static_cast<double> (number (list, at, fieldBytes));
        const auto ticksToEnd = static_cast<double> (timing.length - mediaTime)
                                * static_cast<double> (movieTimescale)
                                / static_cast<double> (timing.timescale);
        // An end within a tick of the movie's clock is the end of the samples: the clock can't say it better.
        if (ticks > 0 && ticks <= ticksToEnd - 1)
            timing.end = mediaTime
                         + std::llround (ticks * static_cast<double> (timing.timescale)
                                         / static_cast<double> (movieTimescale));
    }
    timing.end = std::min (timing.end, timing.length);
    return timing.start < timing.end;
}

bool isSound (Bytes track)
{
    const auto handler = findBox (findBox (track, "mdia"), "hdlr");
    return handler.size() >= 12 && isType (handler.data() + 8, "soun");
}

std::optional<Mp4Timing> readTrack (Bytes track, int64_t movieTimescale, bool isFragmented)
{
    const auto header = findBox (track, "tkhd");
    const auto media = findBox (track, "mdia");
    const auto table = findBox (findBox (findBox (media, "minf"), "stbl"), "stts");

    Mp4Timing timing;
    timing.trackId = static_cast<int32_t> (number (header, number (header, 0, 1) == 1 ? 20 : 12, 4));
    timing.timescale = timescale (findBox (media, "mdhd"));
    timing.length = timing.end = isFragmented ? Mp4Timing::unknownLength : totalDuration (table);
    if (timing.timescale <= 0 || timing.length <= 0)
        return std::nullopt;

    const auto edits = findBox (findBox (track, "edts"), "elst");
    if (!edits.empty() && !applyEdits (edits, movieTimescale, timing))
        return std::nullopt;
    return timing;
}
}

std::vector<Mp4Timing> readMp4Timing (std::span<const uint8_t> movie)
{
    std::vector<Mp4Timing> tracks;
    const auto movieTimescale = timescale (findBox (movie, "mvhd"));
    const bool isFragmented = !findBox (movie, "mvex").empty();
    if (movieTimescale <= 0)
        return tracks;

    bool isWhole = true;
    forEachBox (movie,
                [&] (const uint8_t* name, Bytes content)
                {
                    if (!isType (name, "trak") || !isSound (content))
                        return;
                    const auto timing = readTrack (content, movieTimescale, isFragmented);
                    isWhole = isWhole && timing.has_value();
                    tracks.push_back (timing.value_or (Mp4Timing {}));
                });
    if (!isWhole)
        tracks.clear();
    return tracks;
}

std::vector<uint8_t> readMp4Movie (const std::string& path)
{
    const std::unique_ptr<std::FILE, int (*) (std::FILE*)> file (std::fopen (path.c_str(), "rb"),
                                                                 std::fclose);
    if (file == nullptr)
        return {};

    // Bounded, so that a file full of tiny boxes is given up; MP4 files have a handful at the top.
    constexpr int mostBoxes = 1000;
    for (int i = 0; i < mostBoxes; ++i)
    {
        std::array<uint8_t, 16> header {};
        if (std::fread (header.data(), 1, 8, file.get()) != 8)
            return {};
        if (i == 0 && !isType (header.data() + 4, "ftyp"))
            return {};

        auto size = number (header, 0, 4);
        uint64_t headerBytes = 8;
        if (size == 1)
        {
            if (std::fread (header.data() + 8, 1, 8, file.get()) != 8)
                return {};
            size = number (header, 8, 8);
            headerBytes = 16;
        }
        if (size < headerBytes || size > INT64_MAX)
            return {};

        const auto contentBytes = size - headerBytes;
        if (!isType (header.data() + 4, "moov"))
        {
            if (fseeko (file.get(), static_cast<off_t> (contentBytes), SEEK_CUR) != 0)
                return {};
            continue;
        }

        if (contentBytes > largestMovie)
            return {};
        std::vector<uint8_t> movie;
        std::array<uint8_t, 65536> piece;
        while (movie.size() < contentBytes)
        {
            const auto wanted =
                std::min<size_t> (piece.size(), static_cast<size_t> (contentBytes) - movie.size());
            const auto got = std::fread (piece.data(), 1, wanted, file.get());
            movie.insert (movie.end(), piece.begin(), piece.begin() + static_cast<std::ptrdiff_t> (got));
            if (got != wanted)
                return {};
        }
        return movie;
    }
    return {};
}

std::optional<GaplessTag> parseGaplessTag (const char* text)
{
    constexpr uint64_t longestPriming = 1 << 20, longestTrack = uint64_t { 1 } << 40;
    std::istringstream fields (text != nullptr ? text : "");
    uint64_t first = 0, priming = 0, padding = 0, frames = 0;
    fields >> std::hex >> first >> priming >> padding >> frames;
    if (fields.fail() || priming > longestPriming || frames == 0 || frames > longestTrack)
        return std::nullopt;
    return GaplessTag { static_cast<int64_t> (priming), static_cast<int64_t> (frames) };
}
}
