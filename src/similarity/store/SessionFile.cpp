#include "similarity/store/SessionFile.h"

#include <cmath>
#include <cstring>
#include <utility>

namespace SessionFile
{
namespace
{
constexpr uint32_t version = 1;
constexpr std::string_view magic = "PXSIMILR";
constexpr uint32_t trackBlock = 0x4b415254, sampleBlock = 0x504d4153; // "TRAK", "SAMP"

struct Header
{
    char magic[8];
    uint32_t version = 0, trackBytes = 0;
};

struct BlockHeader
{
    uint32_t kind = 0, size = 0; ///< bytes of the content, which is padded to 8
    uint64_t checksum = 0;
};

static_assert (sizeof (Header) == 16 && sizeof (BlockHeader) == 16 && sizeof (StoredTrack) == 248);

/** FNV-1a over words of 8 bytes, on four lanes. */
uint64_t checksumOf (const BlockHeader& block, const std::byte* content)
{
    constexpr uint64_t prime = 0x100000001b3;
    uint64_t lanes[4] { 0xcbf29ce484222325 ^ block.kind, 0x9ae16a3b2f90404f ^ block.size, 0x5851f42d4c957f2d,
                        0x14057b7ef767814f };
    const auto words = (static_cast<size_t> (block.size) + 7) / 8;
    for (size_t i = 0; i < words; ++i)
    {
        uint64_t word = 0;
        std::memcpy (&word, content + 8 * i, 8);
        auto& lane = lanes[i % 4];
        lane = (lane ^ word) * prime;
        lane ^= lane >> 29;
    }
    auto sum = lanes[0];
    for (const auto lane : lanes)
        sum = (sum ^ lane) * prime ^ (sum >> 31);
    return sum;
}

size_t padded (size_t size)
{
    return (size + 7) / 8 * 8;
}

void appendBytes (std::vector<std::byte>& out, const void* bytes, size_t size)
{
    const auto* const first = static_cast<const std::byte*> (bytes);
    out.insert (out.end(), first, first + size);
}

/** Appends a block whose content stands at the end of `out` behind room for its header. */
void close (std::vector<std::byte>& out, size_t begin, uint32_t kind)
{
    BlockHeader header;
    header.kind = kind;
    header.size = static_cast<uint32_t> (out.size() - begin - sizeof header);
    out.resize (begin + sizeof header + padded (header.size));
    header.checksum = checksumOf (header, out.data() + begin + sizeof header);
    std::memcpy (out.data() + begin, &header, sizeof header);
}

size_t open (std::vector<std::byte>& out)
{
    const auto begin = out.size();
    out.resize (begin + sizeof (BlockHeader));
    return begin;
}

bool readTrack (std::span<const std::byte> content, Contents& made)
{
    if (content.size() <= sizeof (StoredTrack) || content.size() > sizeof (StoredTrack) + mostPathBytes)
        return false;
    Track track;
    track.stored = reinterpret_cast<const StoredTrack*> (content.data());
    track.path = { reinterpret_cast<const char*> (content.data()) + sizeof (StoredTrack),
                   content.size() - sizeof (StoredTrack) };
    const auto [mean, spread] = track.stored->scale;
    if (!std::isfinite (mean) || !std::isfinite (spread) || !isUsable (track.stored->description)
        || track.path.find ('\0') != std::string_view::npos)
        return false;
    made.tracks.push_back (track);
    return true;
}

bool readSample (std::span<const std::byte> content, Contents& made)
{
    Sample sample;
    uint32_t numbers[2] {};
    if (content.size() < sizeof numbers)
        return false;
    std::memcpy (numbers, content.data(), sizeof numbers);
    const auto members = content.subspan (sizeof numbers);
    if (numbers[0] == 0 || members.size() % sizeof (SimilarityDescription) != 0
        || members.size() / sizeof (SimilarityDescription) > mostMembers)
        return false;
    sample.draw = numbers[0];
    sample.drawnFrom = numbers[1];
    sample.members.resize (members.size() / sizeof (SimilarityDescription));
    if (!members.empty())
        std::memcpy (sample.members.data(), members.data(), members.size());
    for (const auto& member : sample.members)
        if (!isUsable (member))
            return false;
    made.sample = std::move (sample);
    return true;
}
}

Contents read (std::span<const std::byte> bytes)
{
    Contents made;
    Header header;
    if (bytes.size() < sizeof header || std::memcmp (bytes.data(), magic.data(), magic.size()) != 0)
    {
        made.state = Contents::State::foreign;
        return made;
    }
    std::memcpy (&header, bytes.data(), sizeof header);
    if (header.version != version || header.trackBytes != sizeof (StoredTrack))
    {
        made.state = Contents::State::version;
        return made;
    }
    auto rest = bytes.subspan (sizeof header);
    while (!rest.empty())
    {
        BlockHeader block;
        if (rest.size() < sizeof block)
            break;
        std::memcpy (&block, rest.data(), sizeof block);
        const auto size = padded (block.size);
        if (size > rest.size() - sizeof block)
            break;
        const auto content = rest.subspan (sizeof block, block.size);
        if (checksumOf (block, content.data()) != block.checksum
            || !(block.kind == trackBlock    ? readTrack (content, made)
                 : block.kind == sampleBlock ? readSample (content, made)
                                             : false))
            ++made.lost; // its length may still lead to the next one
        rest = rest.subspan (sizeof block + size);
    }
    if (!rest.empty())
        ++made.lost;
    if (made.lost > 0)
        made.state = Contents::State::torn;
    return made;
}

void appendHeader (std::vector<std::byte>& out)
{
    Header header;
    std::memcpy (header.magic, magic.data(), magic.size());
    header.version = version;
    header.trackBytes = sizeof (StoredTrack);
    appendBytes (out, &header, sizeof header);
}

void append (std::vector<std::byte>& out, const StoredTrack& track, std::string_view path)
{
    const auto begin = open (out);
    appendBytes (out, &track, sizeof track);
    appendBytes (out, path.data(), path.size());
    close (out, begin, trackBlock);
}

void append (std::vector<std::byte>& out, const Sample& sample)
{
    const auto begin = open (out);
    const uint32_t numbers[2] { sample.draw, sample.drawnFrom };
    appendBytes (out, numbers, sizeof numbers);
    appendBytes (out, sample.members.data(), sample.members.size() * sizeof (SimilarityDescription));
    close (out, begin, sampleBlock);
}
}
