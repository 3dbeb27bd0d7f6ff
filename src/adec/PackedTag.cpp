#include "adec/PackedTag.h"

#include <array>
#include <fstream>

namespace adec
{
namespace
{
constexpr int64_t headerBytes = 10;
using Header = std::array<unsigned char, headerBytes>;

bool readAt (std::ifstream& file, int64_t place, Header& to)
{
    file.clear();
    file.seekg (place);
    return static_cast<bool> (file.read (reinterpret_cast<char*> (to.data()), headerBytes));
}

/** The four bytes from the fourth on, of seven or eight bits each. */
int64_t sizeIn (const Header& header, size_t first, unsigned bits)
{
    int64_t size = 0;
    for (auto i = first; i < first + 4; ++i)
        size = (size << bits) + (header[i] & ((1u << bits) - 1));
    return size;
}

/** Looks at the frames of a tag up to what is none. */
bool hasPackedFrames (std::ifstream& file, int64_t place, int64_t end, int version)
{
    const auto packed = version == 3 ? 0x80u : 0x08u, between = version == 3 ? 0u : 0x02u;
    for (Header frame; place + headerBytes < end && readAt (file, place, frame) && frame[0] != 0;)
    {
        if ((frame[9] & (packed | between)) != 0)
            return true;
        place += headerBytes + sizeIn (frame, 4, version == 3 ? 8 : 7);
    }
    return false;
}
}

int64_t packedTagEnd (const char* utf8Path)
{
    std::ifstream file (utf8Path, std::ios::binary);
    int64_t end = 0;
    auto isPacked = false;
    for (Header tag; readAt (file, end, tag) && tag[0] == 'I' && tag[1] == 'D' && tag[2] == '3';)
    {
        constexpr unsigned bytesBetween = 0x80, extended = 0x40, footer = 0x10;
        const auto first = end + headerBytes;
        end = first + sizeIn (tag, 6, 7) + ((tag[5] & footer) != 0 ? headerBytes : 0);
        isPacked = isPacked || (tag[5] & (bytesBetween | extended)) != 0
                   || (tag[3] > 2 && hasPackedFrames (file, first, end, tag[3]));
    }
    return isPacked ? end : 0;
}
}
