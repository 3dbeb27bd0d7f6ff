#pragma once

#include <cstdint>

namespace adec
{
/** The end of the ID3v2 tags at a file's beginning in bytes, if one of them has packed frames or bytes put between, whose
    size nobody knows before they are unpacked: FFmpeg would keep all of them. 0 if there are none. */
int64_t packedTagEnd (const char* utf8Path);
}
