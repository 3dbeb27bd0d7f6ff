#include "plugins/formats/PluginState.h"

namespace Vst2
{
#include <pluginterfaces/vst2.x/aeffect.h>
}

namespace
{
/** Looks whether a plug-in is a VST 2 that has no state but the values of its parameters. */
struct ProgramsOnly : juce::ExtensionsVisitor
{
    void visitVSTClient (const VSTClient& client) override
    {
        const auto* const effect = reinterpret_cast<const Vst2::AEffect*> (client.getAEffectPtr());
        isTrue = effect != nullptr && (effect->flags & Vst2::effFlagsProgramChunks) == 0;
    }

    bool isTrue = false;
};

bool hasProgramsOnly (const juce::AudioProcessor& processor)
{
    ProgramsOnly look;
    if (const auto* const plugin = dynamic_cast<const juce::AudioPluginInstance*> (&processor))
        plugin->getExtensions (look);
    return look.isTrue;
}
}

PluginState PluginState::of (juce::AudioProcessor& processor)
{
    PluginState state;
    if (hasProgramsOnly (processor))
    {
        processor.getCurrentProgramStateInformation (state.bytes);
        state.program = processor.getCurrentProgram();
    }
    else
        processor.getStateInformation (state.bytes);
    return state;
}

void PluginState::giveTo (juce::AudioProcessor& processor) const
{
    if (program >= 0 && program < processor.getNumPrograms())
        processor.setCurrentProgram (program);
    if (!bytes.isEmpty())
        processor.setStateInformation (bytes.getData(), static_cast<int> (bytes.getSize()));
}
