#include "instruments/envelope/Envelope.h"
#include "support/language/Translate.h"

#include <bit>
#include <cmath>
#include <cstring>

// A blob, little-endian and without padding: format, version and point count as i32; the points; 20 bytes of tail.
// A point of versions 2 and 3: delta and value as f64, tension as f32, type, flagA, flagB, flagC as bytes.
// Versions 0 and 1: delta as f32 (as f64 in format 6) and value as f32; version 0 ends after the tension.
// The tail: four flags, three reserved bytes, markerZero, markerDecay, markerLoopStart as i32, and of markerSustain the
// lowest byte only: its upper bytes stay as they were before the reading.

namespace
{
static_assert (std::endian::native == std::endian::little);

constexpr std::int32_t currentVersion = 3;
constexpr std::size_t headerBytes = 12, tailBytes = 20;

/** Takes numbers off the front of some bytes; what is not there leaves the number as it is. */
class ByteReader
{
public:
    explicit ByteReader (std::span<const std::uint8_t> bytes) : rest (bytes) {}

    template <class T>
    bool take (T& number)
    {
        if (rest.size() < sizeof (T))
        {
            rest = {};
            return false;
        }
        std::memcpy (&number, rest.data(), sizeof (T));
        rest = rest.subspan (sizeof (T));
        return true;
    }

private:
    std::span<const std::uint8_t> rest;
};

struct Header
{
    std::int32_t format = 0, version = 0, count = 0;
};

Header readHeader (ByteReader& reader)
{
    Header header;
    reader.take (header.format);
    reader.take (header.version);
    reader.take (header.count);
    return header;
}

/** @returns false if the point is not whole */
bool readPoint (ByteReader& reader, const Header& header, EnvelopePoint& point)
{
    const auto takeFloat = [&reader] (auto& number)
    {
        auto single = static_cast<float> (number);
        const auto isThere = reader.take (single);
        number = single;
        return isThere;
    };
    if (header.version >= 2 || header.format == 6)
        reader.take (point.delta);
    else
        takeFloat (point.delta);
    auto level = static_cast<double> (point.value);
    if (header.version >= 2)
        reader.take (level);
    else
        takeFloat (level);
    point.value = static_cast<float> (level);
    auto isWhole = reader.take (point.tension);
    if (header.version >= 1)
        for (auto* byte : { &point.type, &point.flagA, &point.flagB, &point.flagC })
            isWhole = reader.take (*byte);
    return isWhole;
}

bool isUsable (const EnvelopePoint& p)
{
    return p.delta >= 0.0 && p.delta <= 1e6 && p.value >= 0.0f && p.value <= 1.0f
           && std::abs (p.tension) <= 1.0f;
}

class ByteWriter
{
public:
    explicit ByteWriter (std::size_t expected) { bytes.reserve (expected); }

    template <class T>
    void add (const T& number)
    {
        const auto* begin = reinterpret_cast<const std::uint8_t*> (&number);
        bytes.insert (bytes.end(), begin, begin + sizeof (T));
    }

    std::vector<std::uint8_t> bytes;
};

constexpr std::string_view hexDigits = "0123456789abcdef";

std::optional<std::vector<std::uint8_t>> bytesOfText (std::string_view text)
{
    std::vector<std::uint8_t> bytes;
    bytes.reserve (text.size() / 3 + 1);
    auto high = -1;
    for (const auto c : text)
    {
        const auto lower = c >= 'A' && c <= 'F' ? static_cast<char> (c - 'A' + 'a') : c;
        const auto digit = hexDigits.find (lower);
        if (digit != std::string_view::npos && high < 0)
            high = static_cast<int> (digit);
        else if (digit != std::string_view::npos)
            bytes.push_back (
                static_cast<std::uint8_t> (std::exchange (high, -1) * 16 + static_cast<int> (digit)));
        else if (high >= 0 || std::string_view (" \t\r\n").find (c) == std::string_view::npos)
            return {};
    }
    if (high >= 0)
        return {};
    return bytes;
}
}

const char* sentenceFor (EnvelopeFault fault)
{
    switch (fault)
    {
    case EnvelopeFault::none:
        return "";
    case EnvelopeFault::noHexText:
        return N_ ("Its curve is not written in hex digits.");
    case EnvelopeFault::cutOff:
        return N_ ("Its curve is cut off.");
    case EnvelopeFault::otherFormat:
        return N_ ("Its curve is of another kind.");
    case EnvelopeFault::newerVersion:
        return N_ ("Its curve was written by a newer version.");
    case EnvelopeFault::tooManyPoints:
        return N_ ("Its curve has more points than a curve can have.");
    case EnvelopeFault::oddNumber:
        return N_ ("Its curve holds a number that makes no sense.");
    }
    return "";
}

bool Envelope::read (std::span<const std::uint8_t> bytes)
{
    ByteReader reader (bytes);
    const auto header = readHeader (reader);
    if (header.format != format || header.version > currentVersion || header.count > maxPoints)
        return false;

    points.assign (static_cast<std::size_t> (std::max (header.count, 0)), EnvelopePoint());
    for (auto& p : points)
        if (EnvelopePoint stored; readPoint (reader, header, stored))
        {
            p = stored;
            p.value = std::isfinite (p.value) ? p.value : 0.0f;
            p.tension = std::isfinite (p.tension) ? p.tension : 0.0f;
        }

    for (auto& flag : tailFlags)
        reader.take (flag);
    for (auto& reserved : tailReserved)
        reader.take (reserved);
    reader.take (markerZero);
    reader.take (markerDecay);
    reader.take (markerLoopStart);
    auto lowest = static_cast<std::uint8_t> (markerSustain);
    reader.take (lowest);
    markerSustain =
        static_cast<std::int32_t> ((static_cast<std::uint32_t> (markerSustain) & ~0xffu) | lowest);
    recalculate();
    return true;
}

bool Envelope::read (juce::InputStream& stream)
{
    std::vector<std::uint8_t> bytes (headerBytes + 24 * static_cast<std::size_t> (maxPoints) + tailBytes);
    const auto length = stream.read (bytes.data(), bytes.size());
    return read (std::span (bytes).first (static_cast<std::size_t> (std::max<ssize_t> (length, 0))));
}

EnvelopeFault Envelope::faultIn (std::span<const std::uint8_t> bytes) const
{
    if (bytes.size() < headerBytes)
        return EnvelopeFault::cutOff;
    ByteReader reader (bytes);
    const auto header = readHeader (reader);
    if (header.format != format)
        return EnvelopeFault::otherFormat;
    if (header.version > currentVersion)
        return EnvelopeFault::newerVersion;
    if (header.version < 0)
        return EnvelopeFault::oddNumber;
    if (header.count < 0 || header.count > maxPoints)
        return EnvelopeFault::tooManyPoints;
    for (int i = 0; i < header.count; ++i)
    {
        EnvelopePoint p;
        if (!readPoint (reader, header, p))
            return EnvelopeFault::cutOff;
        if (!isUsable (p))
            return EnvelopeFault::oddNumber;
    }
    std::array<std::uint8_t, tailBytes> tail;
    return reader.take (tail) ? EnvelopeFault::none : EnvelopeFault::cutOff;
}

std::vector<std::uint8_t> Envelope::blob() const
{
    ByteWriter writer (headerBytes + 24 * points.size() + tailBytes);
    writer.add (format);
    writer.add (currentVersion);
    writer.add (static_cast<std::int32_t> (points.size()));
    for (const auto& p : points)
    {
        writer.add (p.delta);
        writer.add (static_cast<double> (p.value));
        writer.add (p.tension);
        for (const auto byte : { p.type, p.flagA, p.flagB, p.flagC })
            writer.add (byte);
    }
    writer.add (tailFlags);
    writer.add (tailReserved);
    writer.add (markerZero);
    writer.add (markerDecay);
    writer.add (markerLoopStart);
    writer.add (static_cast<std::uint8_t> (markerSustain));
    return std::move (writer.bytes);
}

void Envelope::write (juce::OutputStream& stream) const
{
    const auto bytes = blob();
    stream.write (bytes.data(), bytes.size());
}

std::string Envelope::toText() const
{
    std::string text;
    for (const auto byte : blob())
    {
        if (!text.empty())
            text += ' ';
        text += hexDigits[byte >> 4];
        text += hexDigits[byte & 15];
    }
    return text;
}

EnvelopeFault Envelope::fromText (std::string_view text)
{
    const auto bytes = bytesOfText (text);
    if (!bytes)
        return EnvelopeFault::noHexText;
    const auto fault = faultIn (*bytes);
    if (fault == EnvelopeFault::none)
        read (*bytes);
    return fault;
}

std::unique_ptr<juce::XmlElement> Envelope::toXml() const
{
    auto element = std::make_unique<juce::XmlElement> ("Env");
    element->setAttribute ("data", juce::String (toText()));
    return element;
}

bool Envelope::fromXml (const juce::XmlElement& element)
{
    const auto bytes = bytesOfText (element.getStringAttribute ("data").toStdString());
    return bytes && read (*bytes);
}
