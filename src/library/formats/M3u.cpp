#include "library/formats/M3u.h"

#include "library/formats/Location.h"
#include "support/xml/TextReader.h"
#include "support/xml/XmlCharacters.h"

#include <algorithm>
#include <string>

namespace
{
bool isLineEnd (char32_t c)
{
    return c == '\n' || c == '\r' || c == TextReader::end;
}

juce::String existing (const juce::File& file)
{
    return file.existsAsFile() ? file.getFullPathName() : juce::String();
}

juce::String oneLine (const juce::String& text)
{
    return text.replaceCharacters ("\r\n", "  ");
}
}

void M3u::read (juce::InputStream& stream, const EntryFunction& onEntry)
{
    TextReader reader (&stream);
    std::string line;
    while (reader.peek() != TextReader::end)
    {
        line.clear();
        auto length = 0;
        for (; !isLineEnd (reader.peek()); length = std::min (length + 1, maxLineLength + 1))
        {
            const auto character = reader.next();
            if (length < maxLineLength)
                XmlCharacters::append (line, character);
        }
        reader.next();
        const auto text = juce::String::fromUTF8 (line.data(), static_cast<int> (line.size()));
        if (length > maxLineLength || text.startsWithChar ('#') || text.trim().isEmpty())
            continue;
        if (!onEntry (text, reader.position()))
            return;
    }
}

juce::String M3u::findFile (const juce::String& line, const juce::File& folder)
{
    if (line.startsWithIgnoreCase ("file://"))
    {
        const auto path = pathOfFileUrl (line);
        return juce::File::isAbsolutePath (path) ? existing (juce::File (path)) : juce::String();
    }
    if (line.startsWithIgnoreCase ("http://") || line.startsWithIgnoreCase ("rtp://"))
        return {};
    if (juce::File::isAbsolutePath (line))
        if (auto path = existing (juce::File (line)); path.isNotEmpty())
            return path;

    for (const auto& name : { line, line.replaceCharacter ('\\', juce::File::getSeparatorChar()) })
        if (auto path = existing (folder.getChildFile (name)); path.isNotEmpty())
            return path;
    return {};
}

bool M3u::isExtensionOf (const juce::File& file)
{
    return file.hasFileExtension ("m3u;m3u8");
}

juce::String M3u::header()
{
    return "#EXTM3U\n";
}

juce::String M3u::entry (juce::int64 seconds, const juce::String& title, const juce::String& artist,
                         const juce::String& path)
{
    const auto text = artist.isEmpty() ? title : title + " - " + artist;
    return "#EXTINF:" + juce::String (seconds) + "," + oneLine (text) + "\n" + path + "\n";
}
