#include "plugins/catalogue/PluginFileFilter.h"

#include "plugins/catalogue/SharedObject.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <span>
#include <string_view>

namespace
{
using PluginFileFilter::PluginFile;

constexpr std::array<std::string_view, 2> vst2Entries { "VSTPluginMain", "main" };
constexpr std::array<std::string_view, 1> vst3Entries { "GetPluginFactory" };

/** A manifest that is longer than this is none. */
constexpr juce::int64 longestManifest = 4'000'000;

/** The width of a library that exports one of some names. @returns nothing for anything else */
std::optional<int> widthOfLibrary (const juce::File& file, std::span<const std::string_view> entries)
{
    if (!file.existsAsFile())
        return {};
    const juce::MemoryMappedFile mapped (file, juce::MemoryMappedFile::readOnly);
    if (mapped.getData() == nullptr)
        return {};
    const auto object =
        readSharedObject ({ static_cast<const std::byte*> (mapped.getData()), mapped.getSize() });
    if (!object)
        return {};
    const auto isEntry = [&] (std::string_view name)
    { return std::find (entries.begin(), entries.end(), name) != entries.end(); };
    return std::any_of (object->exports.begin(), object->exports.end(), isEntry)
               ? std::optional (object->width)
               : std::nullopt;
}

std::optional<PluginFile> vst3In (const juce::File& bundle)
{
    for (const auto& architecture :
         bundle.getChildFile ("Contents").findChildFiles (juce::File::findDirectories, false, "*-linux"))
        for (const auto& library : architecture.findChildFiles (juce::File::findFiles, false, "*.so"))
            if (const auto width = widthOfLibrary (library, vst3Entries))
                return PluginFile { PluginFileFilter::vst3, *width };
    return {};
}

juce::String manifestOf (const juce::File& bundle)
{
    const auto manifest = bundle.getChildFile ("manifest.ttl");
    return manifest.getSize() <= longestManifest ? manifest.loadFileAsString() : juce::String();
}

/** True if a word stands in a text with no other character of a name behind it. */
bool namesWord (const juce::String& text, const juce::String& word)
{
    for (int at = text.indexOf (word); at >= 0; at = text.indexOf (at + 1, word))
    {
        const auto behind = text[at + word.length()];
        if (!juce::CharacterFunctions::isLetterOrDigit (behind) && behind != '_' && behind != '-')
            return true;
    }
    return false;
}

std::optional<PluginFile> lv2In (const juce::File& bundle)
{
    const auto manifest = manifestOf (bundle);
    if (!manifest.contains ("lv2:Plugin") && !manifest.contains ("lv2core#Plugin>"))
        return {};
    // The libraries that it names as <name.so>.
    for (int at = manifest.indexOf (".so>"); at >= 0; at = manifest.indexOf (at + 1, ".so>"))
    {
        const auto name = manifest.substring (0, at + 3).fromLastOccurrenceOf ("<", false, false);
        if (!juce::File::isAbsolutePath (name) && !name.containsChar ('/'))
            if (const auto width = widthOfLibrary (
                    bundle.getChildFile (juce::URL::removeEscapeChars (name)),
                    std::array<std::string_view, 2> { "lv2_descriptor", "lv2_lib_descriptor" }))
                return PluginFile { PluginFileFilter::lv2, *width };
    }
    return {};
}
}

bool PluginFileFilter::isBundle (const juce::File& file)
{
    return file.hasFileExtension ("vst3;lv2") && file.isDirectory();
}

std::optional<PluginFile> PluginFileFilter::isPluginFile (const juce::File& file)
{
    if (file.hasFileExtension ("vst3"))
        return vst3In (file);
    if (file.hasFileExtension ("lv2"))
        return lv2In (file);
    if (!file.hasFileExtension ("so"))
        return {};
    const auto width = widthOfLibrary (file, vst2Entries);
    return width ? std::optional (PluginFile { vst2, *width }) : std::nullopt;
}

void PluginFileFilter::forEachCandidate (const juce::File& folder,
                                         const std::function<bool (const juce::File&)>& visit)
{
    namespace fs = std::filesystem;
    std::error_code fault;
    fs::recursive_directory_iterator at (folder.getFullPathName().toStdString(),
                                         fs::directory_options::skip_permission_denied, fault);
    for (const fs::recursive_directory_iterator end; !fault && at != end; at.increment (fault))
    {
        const juce::File file (juce::String::fromUTF8 (at->path().c_str()));
        const auto bundle = isBundle (file);
        if (bundle)
            at.disable_recursion_pending();
        if ((bundle || file.hasFileExtension ("so")) && !visit (file))
            return;
    }
}

bool PluginFileFilter::manifestNames (const juce::File& bundle, const juce::String& uri)
{
    const auto manifest = manifestOf (bundle);
    if (manifest.contains ("<" + uri + ">"))
        return true;
    // Or shortened: "@prefix short: <beginning> ." and "short:rest".
    constexpr const char* word = "@prefix";
    for (int at = manifest.indexOf (word); at >= 0; at = manifest.indexOf (at + 1, word))
    {
        const auto line = manifest.substring (at + static_cast<int> (std::string_view (word).size()));
        const auto shortName = line.upToFirstOccurrenceOf (":", true, false).trim();
        const auto beginning =
            line.fromFirstOccurrenceOf ("<", false, false).upToFirstOccurrenceOf (">", false, false);
        if (beginning.isNotEmpty() && uri.startsWith (beginning)
            && namesWord (manifest, shortName + uri.substring (beginning.length())))
            return true;
    }
    return false;
}
