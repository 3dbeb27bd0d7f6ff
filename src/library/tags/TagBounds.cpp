#include "library/tags/TagBounds.h"

#include <juce_core/juce_core.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include <zlib.h>

namespace
{
/** A file through a window that stays where it is while what is asked for lies in it. */
class FileWindow
{
public:
    explicit FileWindow (TagLib::IOStream& s) : stream (s), length (s.length()) {}

    long size() const { return length; }

    /** @returns fewer bytes at the end of the file; valid until the next call */
    std::string_view at (long place, size_t count)
    {
        if (place < 0 || place >= length)
            return {};
        if (place < first || place + static_cast<long> (count) > first + static_cast<long> (held.size()))
        {
            stream.seek (place);
            held = stream.readBlock (std::max<size_t> (count, windowBytes));
            first = place;
        }
        const std::string_view all (held.data(), held.size());
        return all.substr (static_cast<size_t> (place - first), count);
    }

private:
    static constexpr size_t windowBytes = 4096;

    TagLib::IOStream& stream;
    const long length;
    TagLib::ByteVector held;
    long first = 0;
};

std::uint64_t bigEndian (std::string_view bytes)
{
    std::uint64_t value = 0;
    for (const auto byte : bytes)
        value = value << 8u | static_cast<unsigned char> (byte);
    return value;
}

/** Seven bits a byte, as sizes in ID3v2 are; TagLib takes those with an eighth as plain numbers. */
long tagNumber (std::string_view bytes)
{
    std::uint64_t value = 0;
    for (const auto byte : bytes)
        if ((static_cast<unsigned char> (byte) & 0x80u) != 0)
            return static_cast<long> (bigEndian (bytes));
        else
            value = value << 7u | static_cast<unsigned char> (byte);
    return static_cast<long> (value);
}

/** Boxes of MP4: a size and a name, and in some of them boxes again. */
class Boxes
{
public:
    explicit Boxes (FileWindow& f) : file (f) {}

    bool holdWithin (long from, long to, int depth)
    {
        if (depth > TagBounds::deepestBox)
            return false;
        while (from < to)
        {
            if (++count > TagBounds::mostParts)
                return false;
            const std::string header (file.at (from, 2 * headerBytes));
            if (header.size() < headerBytes)
                return true;
            auto size = static_cast<long> (bigEndian (std::string_view (header).substr (0, 4)));
            auto inside = from + headerBytes;
            if (size == 0)
                size = file.size() - from;
            else if (size == 1 && header.size() == 2 * headerBytes)
            {
                size = static_cast<long> (bigEndian (std::string_view (header).substr (8)));
                inside += headerBytes;
            }
            // A box may say to be larger than the one it lies in, and TagLib follows it; not beyond the file.
            if (size < headerBytes || size > file.size() - from)
                return true;
            if (const auto name = std::string_view (header).substr (4, 4);
                std::find (containers.begin(), containers.end(), name) != containers.end())
            {
                // Some "meta" boxes have a version before what they hold; the descriptions of samples have it always.
                if (!holdWithin (inside + (name == "stsd" ? 8 : 0), from + size, depth + 1)
                    || (name == "meta" && !holdWithin (inside + 4, from + size, depth + 1)))
                    return false;
            }
            from += size;
        }
        return true;
    }

private:
    static constexpr long headerBytes = 8;
    static constexpr std::array<std::string_view, 11> containers { "moov", "udta", "mdia", "meta",
                                                                   "ilst", "stbl", "minf", "moof",
                                                                   "traf", "trak", "stsd" };

    FileWindow& file;
    int count = 0;
};

/** A tag of ID3v2, of which packed frames and frames within frames are looked into. */
class Id3
{
public:
    explicit Id3 (FileWindow& f) : file (f) {}

    /** @param at   of "ID3" */
    bool holdsAt (long at)
    {
        const std::string header (file.at (at, headerBytes));
        if (header.size() < headerBytes)
            return true;
        version = static_cast<unsigned char> (header[3]);
        const auto flags = static_cast<unsigned char> (header[5]);
        const auto size =
            std::min (tagNumber (std::string_view (header).substr (6)), file.size() - at - headerBytes);
        if (size > TagBounds::mostTagBytes)
            return false;
        if (version < 3) // nothing is packed, nothing lies in another
            return true;
        at += headerBytes;
        if (version == 3 && (flags & unsynchronised) != 0)
        {
            const auto tag = synchronised (file.at (at, static_cast<size_t> (size)));
            return holdWithin (
                std::string_view (tag).substr (std::min (tag.size(), extensionOf (flags, tag))), 0);
        }
        auto place = at + static_cast<long> (extensionOf (flags, file.at (at, 4)));
        while (place + headerBytes < at + size)
        {
            const std::string frame (file.at (place, headerBytes));
            if (!isFrame (frame))
                return true;
            const auto body = bodySize (frame, [&] (long further) { return file.at (place + further, 4); });
            if (body < 0 || body > at + size - place - headerBytes || ++count > TagBounds::mostParts)
                return count <= TagBounds::mostParts;
            if (isLookedInto (frame)
                && !holdsFrame (frame,
                                std::string (file.at (place + headerBytes, static_cast<size_t> (body))), 0))
                return false;
            place += headerBytes + body;
        }
        return true;
    }

private:
    static constexpr long headerBytes = 10;
    static constexpr unsigned unsynchronised = 0x80, extended = 0x40;

    static bool isFrame (std::string_view header)
    {
        return header.size() >= 4
               && std::all_of (header.begin(), header.begin() + 4,
                               [] (char letter) {
                                   return (letter >= 'A' && letter <= 'Z')
                                          || (letter >= '0' && letter <= '9');
                               });
    }

    static std::string synchronised (std::string_view bytes)
    {
        std::string plain;
        for (size_t i = 0; i < bytes.size(); ++i)
        {
            plain += bytes[i];
            if (bytes[i] == '\xff' && i + 1 < bytes.size() && bytes[i + 1] == '\0')
                ++i;
        }
        return plain;
    }

    static size_t extensionOf (unsigned flags, std::string_view bytes)
    {
        return (flags & extended) != 0 && bytes.size() >= 4
                   ? static_cast<size_t> (tagNumber (bytes.substr (0, 4)))
                   : 0;
    }

    /** @param idAt   gives the four bytes so far behind the frame's beginning */
    template <typename IdAt>
    long bodySize (std::string_view header, IdAt&& idAt) const
    {
        const auto plain = static_cast<long> (bigEndian (header.substr (4, 4)));
        if (version == 3)
            return plain;
        const auto size = tagNumber (header.substr (4, 4));
        // Some programs write plain numbers here: the one that leads to a frame is the right one.
        return size > 127 && !isFrame (std::string (idAt (size + headerBytes)))
                       && isFrame (std::string (idAt (plain + headerBytes)))
                   ? plain
                   : size;
    }

    bool isPacked (std::string_view header) const
    {
        return (static_cast<unsigned char> (header[9]) & (version == 3 ? 0x80u : 0x08u)) != 0;
    }

    bool isLookedInto (std::string_view header) const
    {
        return isPacked (header) || header.starts_with ("CHAP") || header.starts_with ("CTOC");
    }

    bool holdsFrame (std::string_view header, std::string body, int depth)
    {
        if (version > 3 && (static_cast<unsigned char> (header[9]) & 0x02u) != 0)
            body = synchronised (body);
        if (isPacked (header))
            return holdsPacked (std::string_view (body).substr (std::min<size_t> (body.size(), 4)));
        // An identifier that ends with 0; then four numbers, or flags and identifiers; then frames.
        auto inside = body.find ('\0');
        if (inside == std::string::npos)
            return true;
        if (header.starts_with ("CHAP"))
            inside += 1 + 16;
        else
        {
            const auto children =
                inside + 2 < body.size() ? static_cast<unsigned char> (body[inside + 2]) : 0u;
            inside += 3;
            for (unsigned i = 0; i < children && inside < body.size(); ++i)
                inside = std::min (body.size(), body.find ('\0', inside)) + 1;
        }
        return inside >= body.size() || holdWithin (std::string_view (body).substr (inside), depth + 1);
    }

    bool holdWithin (std::string_view frames, int depth)
    {
        if (depth > TagBounds::deepestFrame)
            return false;
        while (frames.size() > headerBytes && isFrame (frames))
        {
            const auto header = frames.substr (0, headerBytes);
            const auto body = bodySize (
                header, [&] (long further)
                { return frames.substr (std::min (frames.size(), static_cast<size_t> (further)), 4); });
            frames.remove_prefix (headerBytes);
            if (body < 0 || static_cast<size_t> (body) > frames.size())
                return true;
            if (++count > TagBounds::mostParts)
                return false;
            if (isLookedInto (header)
                && !holdsFrame (header, std::string (frames.substr (0, static_cast<size_t> (body))), depth))
                return false;
            frames.remove_prefix (static_cast<size_t> (body));
        }
        return true;
    }

    /** Unpacks into nothing, to count. */
    bool holdsPacked (std::string_view packed)
    {
        z_stream inflating {};
        if (inflateInit (&inflating) != Z_OK)
            return false;
        inflating.next_in = reinterpret_cast<Bytef*> (const_cast<char*> (packed.data()));
        inflating.avail_in = static_cast<uInt> (packed.size());
        std::array<Bytef, 16384> dropped;
        auto answer = Z_OK;
        while (answer == Z_OK && unpacked <= TagBounds::mostUnpackedBytes)
        {
            inflating.next_out = dropped.data();
            inflating.avail_out = static_cast<uInt> (dropped.size());
            answer = inflate (&inflating, Z_NO_FLUSH);
            unpacked += static_cast<long> (dropped.size() - inflating.avail_out);
        }
        inflateEnd (&inflating);
        return unpacked <= TagBounds::mostUnpackedBytes;
    }

    FileWindow& file;
    int version = 0, count = 0;
    long unpacked = 0;
};

/** Chunks of RIFF and AIFF, one behind the other; those that hold an ID3v2 tag are looked into. */
bool chunksHold (FileWindow& file, bool isLittleEndian)
{
    Id3 tag (file);
    long place = 12;
    for (int count = 0; place + 8 <= file.size(); ++count)
    {
        if (count == TagBounds::mostParts)
            return false;
        std::string header (file.at (place, 8));
        if (isLittleEndian)
            std::reverse (header.begin() + 4, header.end());
        const auto size = static_cast<long> (bigEndian (std::string_view (header).substr (4)));
        if ((header.starts_with ("ID3 ") || header.starts_with ("id3 ")) && !tag.holdsAt (place + 8))
            return false;
        place += 8 + size + (size & 1);
    }
    return true;
}

/** The beginning of a tag of ID3v2, or -1. @param mayBeLate   it is looked for behind what is neither tag nor sound, too */
long findId3 (FileWindow& file, bool mayBeLate)
{
    for (long place = 0; place + 3 <= file.size() && (place == 0 || mayBeLate); ++place)
    {
        const auto bytes = file.at (place, 3);
        if (bytes == "ID3")
            return place;
        if (bytes[0] == '\xff' && (static_cast<unsigned char> (bytes[1]) & 0xe0u) == 0xe0u
            && bytes[1] != '\xff')
            return -1;
    }
    return -1;
}

/** True if TagLib takes a file for MPEG's by its name. */
bool isNamedMpeg (TagLib::IOStream& stream)
{
    const juce::String name (juce::CharPointer_UTF8 (static_cast<const char*> (stream.name())));
    const auto ending = name.fromLastOccurrenceOf (".", false, false).toLowerCase();
    return ending == "mp3" || ending == "mp2" || ending == "aac";
}
}

bool TagBounds::hold (TagLib::IOStream& stream)
{
    FileWindow file (stream);
    const std::string start (file.at (0, 4));
    auto isWithin = Boxes (file).holdWithin (0, file.size(), 0);
    if (start == "RIFF" || start == "FORM")
        isWithin = isWithin && chunksHold (file, start == "RIFF");
    if (const auto tag = findId3 (file, isNamedMpeg (stream)); isWithin && tag >= 0)
        isWithin = Id3 (file).holdsAt (tag);
    stream.seek (0);
    return isWithin;
}
