#pragma once

#include <tiostream.h>

/** Limits of what a small file can make a reader of tags do: TagLib reads boxes within boxes by calls within calls, and unpacks
    whatever is packed. */
namespace TagBounds
{
constexpr int deepestBox = 32, deepestFrame = 8; ///< within each other; real files have 8 and 2
constexpr int mostParts = 100'000;               ///< boxes, chunks or frames of one file
constexpr long mostUnpackedBytes = 16L << 20u;   ///< of all frames that are packed
constexpr long mostTagBytes = 64L << 20u;        ///< of an ID3v2 tag, pictures and all

/** Looks through a file as TagLib will, without what lies in its parts, and leaves it at its beginning. A file that it finds
    beyond these bounds is neither read for tags nor written to. Any thread but the audio thread.
    @throws what the stream throws */
bool hold (TagLib::IOStream&);
}
