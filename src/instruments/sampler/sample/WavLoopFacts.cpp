#include "instruments/sampler/sample/WavLoopFacts.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstring>
#include <string_view>

namespace
{
/** The bytes of a chunk, little-endian, as far as they are of interest. What lies past their end reads as 0. */
struct Chunk
{
    std::array<uint8_t, 1024> data {};
    size_t size = 0;

    uint32_t word (size_t at) const noexcept
    {
        uint32_t value = 0;
        for (size_t i = 0; i < 4 && at + i < size; ++i)
            value |= static_cast<uint32_t> (data[at + i]) << (8 * i);
        return value;
    }

    bool isNamed (size_t at, std::string_view name) const noexcept
    {
        return at + name.size() <= size && std::memcmp (data.data() + at, name.data(), name.size()) == 0;
    }

    static Chunk of (juce::InputStream& stream, size_t bytes)
    {
        Chunk chunk;
        const auto wanted = static_cast<int> (std::min (bytes, chunk.data.size()));
        chunk.size = static_cast<size_t> (std::max (0, stream.read (chunk.data.data(), wanted)));
        return chunk;
    }
};

constexpr size_t acidBytes = 24, smplHeader = 36, smplLoop = 24;

void readAcid (WavLoopFacts& facts, const Chunk& chunk) noexcept
{
    if (chunk.size < acidBytes)
        return;
    facts.hasAcid = true;
    facts.isOneShot = (chunk.word (0) & 1u) != 0;
    facts.beats = chunk.word (12);
    if (const auto tempo = std::bit_cast<float> (chunk.word (20)); std::isfinite (tempo) && tempo > 0.0f)
        facts.tempo = tempo;
}

void readSmpl (WavLoopFacts& facts, const Chunk& chunk) noexcept
{
    const auto count = chunk.word (28);
    for (uint32_t i = 0; i < count && smplHeader + (i + 1) * smplLoop <= chunk.size; ++i)
    {
        const auto at = smplHeader + i * smplLoop;
        const auto first = chunk.word (at + 8), last = chunk.word (at + 12);
        if (chunk.word (at + 4) != 0 || last <= first || last == UINT32_MAX)
            continue;
        facts.loopBegin = first;
        facts.loopEnd = last + 1;
        return;
    }
}
}

std::optional<WavLoopFacts> WavLoopFacts::read (juce::InputStream& stream)
{
    if (const auto head = Chunk::of (stream, 12); !head.isNamed (0, "RIFF") || !head.isNamed (8, "WAVE"))
        return {};
    WavLoopFacts facts;
    for (juce::int64 at = 12; stream.setPosition (at);)
    {
        const auto head = Chunk::of (stream, 8);
        if (head.size < 8)
            break;
        const auto size = head.word (4);
        if (head.isNamed (0, "acid"))
            readAcid (facts, Chunk::of (stream, size));
        else if (head.isNamed (0, "smpl"))
            readSmpl (facts, Chunk::of (stream, size));
        at += 8 + static_cast<juce::int64> (size) + (size & 1u);
    }
    return facts;
}
