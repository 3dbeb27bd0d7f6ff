#include "plugin/PluginFilter.h"

#include <utility>

namespace
{
thread_local CPlatterdex* newestEngine = nullptr;

/** The plug-in as its user sees it: the file, or the bundle that the file lies in. */
juce::File pluginFile()
{
    const auto binary = juce::File::getSpecialLocation (juce::File::currentExecutableFile);
    for (auto folder = binary.getParentDirectory(); !folder.isRoot(); folder = folder.getParentDirectory())
        if (folder.hasFileExtension ("vst3;lv2"))
            return folder;
    return binary;
}

/** The system's own folders lie beside the plug-in, so that all formats in one folder share them; the decoder lies
    beside the binary, because a bundle is moved as a whole. */
EngineWorld worldOfPlugin()
{
    EngineWorld world;
    world.root = pluginFile().getParentDirectory();
    world.decoder =
        juce::File::getSpecialLocation (juce::File::currentExecutableFile).getSiblingFile ("adec.so");
    return world;
}
}

CPlatterdex* takeNewestEngine() noexcept
{
    return std::exchange (newestEngine, nullptr);
}

/** What every format's shell calls to get its processor. */
juce::AudioProcessor* JUCE_CALLTYPE createPluginFilter();
juce::AudioProcessor* JUCE_CALLTYPE createPluginFilter()
{
    newestEngine = new CPlatterdex (worldOfPlugin());
    return newestEngine;
}
