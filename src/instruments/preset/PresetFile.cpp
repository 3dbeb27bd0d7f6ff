#include "instruments/preset/PresetFile.h"

#include "support/AudioThread.h"
#include "support/files/RegularFile.h"
#include "support/files/ReplaceFile.h"
#include "support/language/Translate.h"

namespace PresetFile
{
bool isReadable (const juce::File& file)
{
    return isRegularFile (file);
}

std::optional<std::string> read (const juce::File& file)
{
    assertMayBlock();
    if (!isReadable (file))
        return {};
    juce::FileInputStream stream (file);
    if (stream.failedToOpen())
        return {};
    std::string bytes (static_cast<size_t> (
                           std::clamp<juce::int64> (stream.getTotalLength(), 0, PresetXml::largestFile + 1)),
                       '\0');
    const auto got = stream.read (bytes.data(), bytes.size());
    if (got < 0 || stream.getStatus().failed())
        return {};
    bytes.resize (static_cast<size_t> (got));
    return bytes;
}

std::string unreadable (const juce::File& file)
{
    return tr ("Nothing was loaded from %1: the file can't be read.", file.getFileName()).toStdString();
}

std::string write (const juce::File& file, std::string_view bytes)
{
    assertMayBlock();
    if (file.getParentDirectory().createDirectory().wasOk() && replaceFile (file, bytes.data(), bytes.size()))
        return {};
    return tr ("%1 can't be written.", file.getFullPathName()).toStdString();
}
}
