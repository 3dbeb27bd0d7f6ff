#include "settings/SettingsText.h"

#include <algorithm>
#include <cstring>

namespace
{
/** The largest length up to `limit` that ends no character of `text` half way. Reads text[limit]. */
size_t wholeCharacters (const char* text, size_t limit)
{
    const auto continues = [&] (size_t at) { return (static_cast<unsigned char> (text[at]) & 0xc0) == 0x80; };
    auto length = limit;
    while (length > 0 && continues (length))
        --length;
    return length;
}
}

juce::String SettingsText::get() const
{
    const auto end = std::find (bytes.begin(), bytes.end(), '\0');
    auto length = static_cast<size_t> (end - bytes.begin());
    if (length > maxBytes)
        length = wholeCharacters (bytes.data(), maxBytes);

    if (juce::CharPointer_UTF8::isValidString (bytes.data(), static_cast<int> (length)))
        return juce::String::fromUTF8 (bytes.data(), static_cast<int> (length));

    juce::String text;
    for (size_t i = 0; i < length; ++i)
        text += static_cast<juce::juce_wchar> (static_cast<unsigned char> (bytes[i]));
    return text;
}

void SettingsText::set (const juce::String& text)
{
    const auto* source = text.toRawUTF8();
    auto length = text.getNumBytesAsUTF8();
    if (length > maxBytes)
        length = wholeCharacters (source, maxBytes);
    bytes.fill (0);
    std::memcpy (bytes.data(), source, length);
}
