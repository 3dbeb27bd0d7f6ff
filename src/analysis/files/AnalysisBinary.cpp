#include "analysis/files/AnalysisBinary.h"

#include <bit>
#include <cstring>

// Fields are copied as they lie in memory.
static_assert (std::endian::native == std::endian::little);

namespace
{
constexpr size_t headBytes = 33, tailBytes = 50, cuesInFile = 4;

/** Takes fields one behind the other; whoever makes it has looked whether there are enough bytes. */
class Fields
{
public:
    explicit Fields (std::span<const std::byte> all) : bytes (all) {}

    template <typename Field>
    void take (Field& field)
    {
        std::memcpy (&field, bytes.data(), sizeof field);
        bytes = bytes.subspan (sizeof field);
    }

    template <typename Field>
    Field next()
    {
        Field field {};
        take (field);
        return field;
    }

private:
    std::span<const std::byte> bytes;
};
}

std::optional<TrackAnalysis> AnalysisBinary::read (std::span<const std::byte> bytes)
{
    if (bytes.size() < headBytes + tailBytes)
        return std::nullopt;
    Fields fields (bytes);
    if (fields.next<int32_t>() != magic)
        return std::nullopt;

    TrackAnalysis value;
    fields.take (value.tempoTracker);
    fields.take (value.tempoAverage);
    const auto markCount = fields.next<int32_t>();
    fields.take (value.downbeatId);
    fields.take (value.downbeatPos);
    value.gridMode = fields.next<int8_t>();
    const auto room = (bytes.size() - headBytes - tailBytes) / sizeof (BeatMark);
    if (markCount < 0 || static_cast<size_t> (markCount) > room)
        return std::nullopt;

    auto& marks = value.beatMarks.emplace (static_cast<size_t> (markCount));
    for (auto& mark : marks)
    {
        fields.take (mark.pos);
        fields.next<int32_t>(); // padding
        fields.take (mark.bpm);
    }

    auto& cues = value.cues.emplace();
    for (size_t i = 0; i < cuesInFile; ++i)
        fields.take (cues.cuePos[i]);
    fields.take (cues.phaseStart);
    cues.transportCueSel = fields.next<int8_t>();
    cues.transportStart = fields.next<int8_t>();
    value.autogain = fields.next<double>();
    repair (value);
    return value;
}
