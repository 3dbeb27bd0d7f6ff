#include "midi/script/ShippedScripts.h"

#include "support/files/ReplaceFile.h"

#include <algorithm>

namespace ShippedScripts
{
const File* find (std::string_view name)
{
    const auto files = all();
    const auto found =
        std::find_if (files.begin(), files.end(), [&] (const File& f) { return f.name == name; });
    return found != files.end() ? &*found : nullptr;
}

bool install (const juce::File& folder)
{
    if (folder.createDirectory().failed())
        return false;
    auto isDone = true;
    for (const auto& shipped : all())
    {
        const auto file = folder.getChildFile (juce::String (shipped.name.data(), shipped.name.size()));
        const auto isStale =
            shipped.name.ends_with (headerEnding) && file.loadFileAsString().toStdString() != shipped.text;
        if (isStale || !file.exists())
            isDone = replaceFile (file, shipped.text.data(), shipped.text.size()) && isDone;
    }
    return isDone;
}
}
