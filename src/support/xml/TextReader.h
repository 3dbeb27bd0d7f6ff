#pragma once

#include <juce_core/juce_core.h>

#include <vector>

/** The characters of a text file, whatever its encoding: UTF-8, or UTF-16 in either byte order, told by a byte order mark
    or by the zero bytes of the first character. A byte that is not UTF-8 is taken as Latin-1, half a pair of UTF-16 as the
    replacement character. Zeros are left out. Memory is constant. One thread, not the audio thread. */
class TextReader
{
public:
    /** The value that stands for the end of the text. */
    static constexpr char32_t end = 0xffffffff;

    /** @param source   is read from where it stands and must live as long; null is a text that can't be read */
    explicit TextReader (juce::InputStream* source);

    /** The character at hand, without going on. */
    char32_t peek();

    /** The character at hand; goes on to the next. */
    char32_t next();

    /** Bytes of the source that are behind the character at hand, for a progress. */
    juce::int64 position() const { return consumedBytes; }

    /** Zeros were left out. */
    bool hasNulls() const { return sawNulls; }

    /** The text is UTF-16 of the other byte order than this machine's. */
    bool isSwapped() const { return encoding == Encoding::utf16Big; }

    /** The last character is only half there. Known at the end. */
    bool isTruncated() const { return endsHalfway; }

    /** The source could not be read, or not to its end. Known at the end. */
    bool hasFailed() const { return failed; }

private:
    enum class Encoding
    {
        utf8,
        utf16Little,
        utf16Big
    };

    void detect();
    size_t available (size_t wanted);
    unsigned byteAt (size_t offset) const { return buffer[begin + offset]; }
    unsigned unitAt (size_t offset) const;
    void consume (size_t bytes);
    char32_t decode();
    char32_t decodeUtf8();
    char32_t decodeUtf16();

    juce::InputStream* const source;
    std::vector<unsigned char> buffer;
    size_t begin = 0, filled = 0;
    juce::int64 readBytes = 0, consumedBytes = 0;
    juce::int64 expectedBytes = -1;
    Encoding encoding = Encoding::utf8;
    char32_t current = end;
    bool hasCurrent = false, isExhausted = false, sawNulls = false, endsHalfway = false, failed = false;
};
