#include "plugins/formats/PluginFormats.h"

#include "plugins/catalogue/PluginFileFilter.h"
#include "support/language/Translate.h"

#include <algorithm>
#include <string>

#include <dlfcn.h>
#include <link.h>

namespace
{
/** Keeps the libraries of a file or bundle in memory until the process ends, when their last plug-in goes too: some can't be
    loaded a second time, such as those that register types of GLib. */
void keepLibrariesOf (const juce::String& path)
{
    std::vector<std::string> libraries;
    const auto look = [] (dl_phdr_info* library, size_t, void* found)
    {
        static_cast<std::vector<std::string>*> (found)->emplace_back (library->dlpi_name);
        return 0;
    };
    ::dl_iterate_phdr (look, &libraries);
    const auto beginning = path.toStdString();
    for (const auto& library : libraries)
        if (library.starts_with (beginning))
            ::dlopen (library.c_str(), RTLD_LAZY | RTLD_NOLOAD | RTLD_NODELETE);
}
}

PluginFormats::PluginFormats() = default;
PluginFormats::~PluginFormats() = default;

juce::AudioPluginFormat* PluginFormats::find (const juce::String& name)
{
    for (const auto& format : formats)
        if (format->getName() == name)
            return format.get();
    // Each is made when it is needed: LV2's reads the descriptions of all bundles of the system.
    if (name == PluginFileFilter::vst2)
        formats.push_back (std::make_unique<juce::VSTPluginFormat>());
    else if (name == PluginFileFilter::vst3)
        formats.push_back (std::make_unique<juce::VST3PluginFormat>());
    else if (name == PluginFileFilter::lv2)
        formats.push_back (std::make_unique<juce::LV2PluginFormat>());
    else
        return nullptr;
    return formats.back().get();
}

void PluginFormats::showFolderOf (const juce::File& bundle, juce::AudioPluginFormat& format)
{
    const juce::FileSearchPath folder (bundle.getParentDirectory().getFullPathName());
    if (!format.getDefaultLocationsToSearch().toString().contains (folder.toString())
        && shownFolders.insert (folder.toString()).second)
        format.searchPathsForPlugins (folder, false, false);
}

std::vector<juce::PluginDescription> PluginFormats::describe (const juce::File& file,
                                                              const juce::String& formatName)
{
    auto* const format = find (formatName);
    if (format == nullptr)
        return {};
    juce::StringArray names (file.getFullPathName());
    if (formatName == PluginFileFilter::lv2)
    {
        // LV2 knows plug-ins by their identifiers; those of this bundle are the ones that its manifest names.
        showFolderOf (file, *format);
        names.clear();
        for (const auto& uri : format->searchPathsForPlugins ({}, false, false))
            if (PluginFileFilter::manifestNames (file, uri))
                names.add (uri);
    }
    juce::OwnedArray<juce::PluginDescription> found;
    for (const auto& name : names)
        format->findAllTypesForFile (found, name);
    std::vector<juce::PluginDescription> all;
    for (const auto* each : found)
        all.push_back (*each);
    return all;
}

PluginFormats::Made PluginFormats::create (const KnownPluginEntry& entry, double rate, int block)
{
    auto* const format = find (entry.description.pluginFormatName);
    if (format == nullptr)
        return { nullptr, tr ("The format %1 is unknown.", entry.description.pluginFormatName) };
    if (entry.description.pluginFormatName == PluginFileFilter::lv2)
        showFolderOf (juce::File (entry.file), *format);
    Made made;
    made.instance = format->createInstanceFromDescription (entry.description, rate, block, made.fault);
    if (made.instance == nullptr && made.fault.isEmpty())
        made.fault = tr ("It could not be loaded.");
    if (made.instance != nullptr)
        keepLibrariesOf (entry.file);
    return made;
}
