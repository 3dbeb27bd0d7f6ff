#include "library/formats/Location.h"

#include "support/xml/Utf8.h"
#include "support/xml/XmlCharacters.h"

#include <string>

namespace
{
constexpr int startLength = 17;

bool hasDrive (const juce::String& path)
{
    return path.length() >= 2 && juce::CharacterFunctions::isLetter (path[0]) && path[1] == ':';
}

/** The bytes as text; what is not UTF-8 is Latin-1. */
juce::String textOf (const std::string& bytes)
{
    std::string text;
    for (size_t i = 0; i < bytes.size();)
    {
        const auto* rest = reinterpret_cast<const unsigned char*> (bytes.data()) + i;
        const auto [character, length] = utf8At (rest, bytes.size() - i);
        XmlCharacters::append (text, character);
        i += length;
    }
    return juce::String::fromUTF8 (text.data(), static_cast<int> (text.size()));
}
}

juce::String decodePercents (const juce::String& text)
{
    const auto source = text.toStdString();
    std::string bytes;
    for (size_t i = 0; i < source.size(); ++i)
    {
        auto byte = source[i];
        if (byte == '%')
        {
            if (i + 2 >= source.size())
                break;
            const auto digit = [&] (size_t at)
            {
                return juce::CharacterFunctions::getHexDigitValue (
                    static_cast<juce::juce_wchar> (static_cast<unsigned char> (source[at])));
            };
            const auto high = digit (i + 1), low = digit (i + 2);
            if (high >= 0 && low >= 0)
            {
                byte = static_cast<char> (static_cast<unsigned char> (high << 4 | low));
                i += 2;
            }
        }
        if (byte != 0)
            bytes += byte;
    }
    return textOf (bytes);
}

juce::String pathOfFileUrl (const juce::String& url)
{
    const auto path = decodePercents (url.fromFirstOccurrenceOf (":", false, false));
    if (!path.startsWith ("//"))
        return path;
    const auto root = path.indexOfChar (2, '/');
    return root >= 0 ? path.substring (root) : path.substring (2);
}

juce::String decodeLocation (const juce::String& location)
{
    const auto separator = juce::File::getSeparatorChar();
    auto path = decodePercents (location.substring (startLength).replaceCharacter ('/', separator));
    // The separator that begins an absolute path is the last character of the start.
    if (separator == '/' && path.isNotEmpty() && !path.startsWithChar (separator) && !hasDrive (path))
        path = juce::String::charToString (separator) + path;

    if (!location.startsWithIgnoreCase ("file:") || location.startsWithIgnoreCase ("file://localhost/")
        || (juce::File::isAbsolutePath (path) && juce::File (path).existsAsFile()))
        return path;
    const auto ofOtherForm = pathOfFileUrl (location);
    return ofOtherForm.startsWithChar ('/') ? ofOtherForm : path;
}
