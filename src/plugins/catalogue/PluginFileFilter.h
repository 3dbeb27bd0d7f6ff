#pragma once

#include <juce_core/juce_core.h>

#include <functional>
#include <optional>

/** Tells plug-ins from other files without running any of their code. Any thread that may block. */
namespace PluginFileFilter
{
/** The three formats by their names in lists, which are JUCE's. */
inline constexpr const char *vst2 = "VST", *vst3 = "VST3", *lv2 = "LV2";

struct PluginFile
{
    const char* format = vst2;
    int width = 64; ///< 32 or 64 bits
};

/** Looks at a file or bundle: a library "*.so" that exports "VSTPluginMain" or "main"; a folder "*.vst3" with a library that
    exports "GetPluginFactory"; a folder "*.lv2" whose manifest names a plug-in with a library that is there.
    @returns nothing for anything else, and for what can't be read */
std::optional<PluginFile> isPluginFile (const juce::File&);

/** True for a folder that is one plug-in, whatever lies in it. */
bool isBundle (const juce::File&);

/** Calls `visit` for every file and bundle below a folder that might be a plug-in by its name, until it returns false. */
void forEachCandidate (const juce::File& folder, const std::function<bool (const juce::File&)>& visit);

/** True if the bundle's manifest names this plug-in. @param uri   an LV2 plug-in's identifier */
bool manifestNames (const juce::File& bundle, const juce::String& uri);
}
