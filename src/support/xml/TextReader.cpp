#include "support/xml/TextReader.h"

#include "support/xml/Utf8.h"

#include <cstring>

namespace
{
constexpr size_t bufferBytes = 1 << 16;
constexpr char32_t byteOrderMark = 0xfeff;
constexpr char32_t replacement = 0xfffd;

constexpr bool isHighSurrogate (char32_t unit)
{
    return unit >= 0xd800 && unit < 0xdc00;
}

constexpr bool isLowSurrogate (char32_t unit)
{
    return unit >= 0xdc00 && unit < 0xe000;
}
}

TextReader::TextReader (juce::InputStream* s) : source (s), buffer (bufferBytes), failed (s == nullptr)
{
    if (source != nullptr && source->getTotalLength() >= 0)
        expectedBytes = source->getTotalLength() - source->getPosition();
    detect();
}

void TextReader::detect()
{
    if (available (2) < 2)
        return;
    const auto first = byteAt (0), second = byteAt (1);
    if ((first == 0xff && second == 0xfe) || (first != 0 && second == 0))
        encoding = Encoding::utf16Little;
    else if ((first == 0xfe && second == 0xff) || (first == 0 && second != 0))
        encoding = Encoding::utf16Big;
    if (peek() == byteOrderMark)
        hasCurrent = false;
}

size_t TextReader::available (size_t wanted)
{
    while (filled - begin < wanted && !isExhausted && source != nullptr)
    {
        std::memmove (buffer.data(), buffer.data() + begin, filled - begin);
        filled -= begin;
        begin = 0;
        const auto got = source->read (buffer.data() + filled, static_cast<int> (buffer.size() - filled));
        isExhausted = got <= 0;
        if (got > 0)
        {
            filled += static_cast<size_t> (got);
            readBytes += got;
        }
        else
        {
            failed = got < 0 || readBytes < expectedBytes;
        }
    }
    return filled - begin;
}

unsigned TextReader::unitAt (size_t offset) const
{
    return encoding == Encoding::utf16Big ? byteAt (offset) << 8 | byteAt (offset + 1)
                                          : byteAt (offset) | byteAt (offset + 1) << 8;
}

void TextReader::consume (size_t bytes)
{
    begin += bytes;
    consumedBytes += static_cast<juce::int64> (bytes);
}

char32_t TextReader::decodeUtf8()
{
    const auto bytes = byteAt (0) < 0x80 ? 1 : available (maxUtf8Bytes);
    const auto [character, length] = utf8At (buffer.data() + begin, bytes);
    consume (length);
    return character;
}

char32_t TextReader::decodeUtf16()
{
    if (available (2) < 2)
    {
        endsHalfway = true;
        consume (1);
        return replacement;
    }
    const auto unit = unitAt (0);
    if (isHighSurrogate (unit) && available (4) >= 4 && isLowSurrogate (unitAt (2)))
    {
        const auto low = unitAt (2);
        consume (4);
        return 0x10000 + ((unit - 0xd800) << 10) + (low - 0xdc00);
    }
    consume (2);
    return isHighSurrogate (unit) || isLowSurrogate (unit) ? replacement : unit;
}

char32_t TextReader::decode()
{
    while (available (1) > 0)
    {
        const auto character = encoding == Encoding::utf8 ? decodeUtf8() : decodeUtf16();
        if (character != 0)
            return character;
        sawNulls = true;
    }
    return end;
}

char32_t TextReader::peek()
{
    if (!hasCurrent)
    {
        current = decode();
        hasCurrent = true;
    }
    return current;
}

char32_t TextReader::next()
{
    const auto character = peek();
    hasCurrent = false;
    return character;
}
