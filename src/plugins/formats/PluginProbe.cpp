#include "plugins/formats/PluginProbe.h"

#include "mixer/insert/HostedPlugin.h"
#include "mixer/insert/SignalGuard.h"
#include "plugins/catalogue/PluginFileFilter.h"
#include "support/language/Translate.h"

namespace
{
constexpr double probeRate = 44100.0;
constexpr int probeBlock = 512;

const char* formatOf (const juce::File& file)
{
    return file.hasFileExtension ("vst3")  ? PluginFileFilter::vst3
           : file.hasFileExtension ("lv2") ? PluginFileFilter::lv2
                                           : PluginFileFilter::vst2;
}

juce::int64 timeOf (const juce::File& file)
{
    return file.getLastModificationTime().toMilliseconds();
}

/** Prepares a plug-in once and reads what it only knows then. */
void verify (PluginFormats& formats, KnownPluginEntry& entry)
{
    auto made = formats.create (entry, probeRate, probeBlock);
    if (made.instance == nullptr)
    {
        entry.state = VerifiedState::failed;
        entry.reason = made.fault;
        return;
    }
    made.instance->prepareToPlay (probeRate, probeBlock);
    entry.latency = juce::jmax (0, made.instance->getLatencySamples());
    entry.description.numInputChannels = made.instance->getTotalNumInputChannels();
    entry.description.numOutputChannels = made.instance->getTotalNumOutputChannels();
    made.instance->releaseResources();
}
}

std::vector<KnownPluginEntry> PluginProbe::examine (PluginFormats& formats, const juce::File& file)
{
    std::vector<KnownPluginEntry> entries;
    for (const auto& description : formats.describe (file, formatOf (file)))
    {
        KnownPluginEntry entry;
        entry.description = description;
        entry.file = file.getFullPathName();
        entry.fileTime = timeOf (file);
        verify (formats, entry);
        entries.push_back (std::move (entry));
    }
    if (entries.empty())
        entries.push_back (
            unusable (file, VerifiedState::failed, N_ ("It holds no plug-in that could be loaded.")));
    return entries;
}

juce::String PluginProbe::tryOut (PluginFormats& formats, const KnownPluginEntry& entry, double rate,
                                  int block, const juce::MemoryBlock& state)
{
    constexpr int blocks = 10;
    auto made = formats.create (entry, rate, block);
    if (made.instance == nullptr)
        return made.fault;
    HostedPlugin plugin (std::move (made.instance), rate, block);
    if (const auto reason = plugin.unfitness(); reason.isNotEmpty())
        return reason;
    if (!state.isEmpty())
        plugin.processor->setStateInformation (state.getData(), static_cast<int> (state.getSize()));
    juce::AudioBuffer<float> in (2, block), out (2, block);
    juce::Random random (1);
    SignalGuard guard;
    for (int i = 0; i < blocks; ++i)
    {
        for (int side = 0; side < 2; ++side)
            for (int frame = 0; frame < block; ++frame)
                in.setSample (side, frame, random.nextFloat() - 0.5f);
        if (plugin.process (in.getArrayOfReadPointers(), out.getArrayOfWritePointers(), block)
            == HostedPlugin::Outcome::threw)
            return N_ ("It failed in the middle of a block.");
        if (const auto fault = guard.run (out.getArrayOfWritePointers(), block); fault != PluginFault::none)
            return fault == PluginFault::tooLoud ? N_ ("It returned more than +60 dB.")
                                                 : N_ ("It returned no numbers.");
    }
    return {};
}

KnownPluginEntry PluginProbe::unusable (const juce::File& file, VerifiedState state,
                                        const juce::String& reason)
{
    KnownPluginEntry entry;
    entry.description.name = file.getFileNameWithoutExtension();
    entry.description.pluginFormatName = formatOf (file);
    entry.description.fileOrIdentifier = entry.file = file.getFullPathName();
    entry.fileTime = timeOf (file);
    entry.state = state;
    entry.reason = reason;
    return entry;
}
