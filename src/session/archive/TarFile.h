#pragma once

#include <juce_core/juce_core.h>

struct archive;

/** The CRC-32 of the names and bytes of all entries so far, as zlib counts it: readers of gzip look at none by themselves. */
class TarSum
{
public:
    void add (const void* bytes, size_t size);
    void add (const juce::String& name) { add (name.toRawUTF8(), name.getNumBytesAsUTF8()); }
    juce::uint32 value() const { return sum; }

private:
    juce::uint32 sum = 0;
};

/** Writes a tar file, compressed by gzip. Not thread-safe; may block. */
class TarWriter
{
public:
    explicit TarWriter (const juce::File&);
    ~TarWriter();
    TarWriter (const TarWriter&) = delete;
    TarWriter& operator= (const TarWriter&) = delete;

    bool add (const juce::String& name, const juce::String& text);

    /** Adds a file as it stands when it is opened: those who replace it as a whole don't disturb.
        @returns false if it can't be read to that end, or the archive not be written */
    bool add (const juce::String& name, const juce::File&);

    juce::uint32 sum() const { return bytesSum.value(); }

    /** Puts all of it on the disk. @returns false if anything failed since the beginning */
    bool close();

private:
    bool addHeader (const juce::String& name, juce::int64 size, const juce::Time& modified);
    bool addBytes (const void*, size_t);

    const juce::File file;
    archive* const tar;
    bool isGood;
    TarSum bytesSum;
};

/** Reads a tar file, plain or compressed by gzip, entry by entry. Not thread-safe; may block. */
class TarReader
{
public:
    explicit TarReader (const juce::File&);
    ~TarReader();
    TarReader (const TarReader&) = delete;
    TarReader& operator= (const TarReader&) = delete;

    enum class Step
    {
        entry,
        end,
        damage
    };

    /** Goes on to the next file; folders are passed over. A link, a device or anything else that is no plain file is damage. */
    Step next();

    /** Of the entry at hand. It may be anything: whoever unpacks has to look at it. */
    juce::String name() const { return entryName; }

    /** Its bytes, as its header has them. */
    juce::int64 size() const { return entrySize; }

    /** Of all entries before the one at hand. */
    juce::uint32 sumBefore() const { return sumSoFar; }

    /** The entry's bytes as text. @param most   bytes; what is larger is damage, and nothing is returned */
    juce::String text (size_t most);

    /** Makes the entry's file, and its folder. @returns false if the entry is damaged, the file there or not to be written */
    bool unpack (const juce::File&);

private:
    bool readInto (int target);

    archive* const tar;
    bool isGood;
    juce::String entryName;
    juce::int64 entrySize = 0;
    TarSum bytesSum;
    juce::uint32 sumSoFar = 0;
};
