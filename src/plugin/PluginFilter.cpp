#include "plugin/PluginFilter.h"

#include "ui/CPlatterdexVstEditor.h"

#include <utility>

namespace
{
thread_local CPlatterdex* newestEngine = nullptr;

/** The decoder lies beside the binary, inside a bundle too, so that a bundle is moved as a whole. */
EngineWorld worldOfPlugin()
{
    EngineWorld world;
    world.folders = Folders::ofPlugin();
    world.decoderLibrary =
        juce::File::getSpecialLocation (juce::File::currentExecutableFile).getSiblingFile ("adec.so");
    world.hasMessageLoop = true;
    // A host that is promised an editor must get one: some crash on none.
    world.createEditor = [] (CPlatterdex& engine) { return new CPlatterdexVstEditor (engine); };
    return world;
}
}

CPlatterdex* takeNewestEngine() noexcept
{
    return std::exchange (newestEngine, nullptr);
}

/** Makes the processor for the shell of any format. */
juce::AudioProcessor* JUCE_CALLTYPE createPluginFilter();
juce::AudioProcessor* JUCE_CALLTYPE createPluginFilter()
{
    newestEngine = new CPlatterdex (worldOfPlugin());
    return newestEngine;
}
