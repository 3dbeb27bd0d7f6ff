#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace adec
{
/** The part of a track's decoded audio that was there before encoding, by an MP4 file's own tables.

    The demuxer honours the start of an edit list, but cuts its end only to whole packets and to the ticks of the
    movie's clock, which are often milliseconds. The sample table is exact to the frame. */
struct Mp4Timing
{
    /** The length of a track whose packets stand in fragments behind the tables. */
    static constexpr int64_t unknownLength = int64_t { 1 } << 48;

    int32_t trackId = 0;
    int64_t timescale = 0; /**< ticks of the track's clock per second, above 0 */
    int64_t length = 0;    /**< ticks of all encoded audio, above 0 */
    int64_t start = 0;     /**< first tick to be heard, 0 to end */
    int64_t end = 0;       /**< tick behind the last one to be heard, up to length */
};

/** Reads the timing of every audio track out of the content of a "moov" box. Gives none at all if the tables of one
    are missing, damaged or describe more than one cut. */
std::vector<Mp4Timing> readMp4Timing (std::span<const uint8_t> movie);

/** The content of the "moov" box of an MP4 file; empty if the file is none. */
std::vector<uint8_t> readMp4Movie (const std::string& path);

/** The contents of an "iTunSMPB" tag: the frames at the start that are not to be heard, and those that are. */
struct GaplessTag
{
    int64_t priming = 0;
    int64_t frames = 0;
};

/** Reads the tag's text: hexadecimal numbers, of which the second to fourth are priming, padding and length. */
std::optional<GaplessTag> parseGaplessTag (const char* text);
}
