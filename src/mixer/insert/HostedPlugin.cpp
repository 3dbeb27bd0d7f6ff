#include "mixer/insert/HostedPlugin.h"

#include "support/language/Translate.h"

#include <algorithm>

namespace
{
/** Stereo on the main buses and nothing on the others, if the plug-in takes it; else its own layout stays. */
void askForStereo (juce::AudioProcessor& processor)
{
    using Set = juce::AudioChannelSet;
    auto layout = processor.getBusesLayout();
    const auto reduce = [] (juce::Array<Set>& buses)
    {
        for (int i = 0; i < buses.size(); ++i)
            if (i > 0 || !buses[i].isDisabled())
                buses.set (i, i == 0 ? Set::stereo() : Set::disabled());
    };
    reduce (layout.inputBuses);
    reduce (layout.outputBuses);
    // One that refuses keeps the layout that it has, which process() adapts to.
    if (layout != processor.getBusesLayout())
        juce::ignoreUnused (processor.setBusesLayout (layout));
}
}

HostedPlugin::HostedPlugin (std::unique_ptr<juce::AudioProcessor> p, double sampleRate, int blockSize)
    : processor (std::move (p)),
      rate (sampleRate),
      block (juce::jmax (1, blockSize))
{
    // One with more channels than a slot has keeps them all, which tells that it does not fit.
    if (juce::jmax (processor->getTotalNumInputChannels(), processor->getTotalNumOutputChannels())
        <= maxChannels)
        askForStereo (*processor);
    processor->setNonRealtime (false);
    processor->setRateAndBufferSizeDetails (rate, block);
    processor->prepareToPlay (rate, block);
    inputs = processor->getTotalNumInputChannels();
    outputs = processor->getTotalNumOutputChannels();
    if (unfitness().isEmpty())
        buffer.setSize (juce::jmax (2, inputs, outputs), block);
    buffer.clear();
    noMidi.ensureSize (4096); // room for what it may answer
    updateLatency();
}

HostedPlugin::~HostedPlugin()
{
    processor->setPlayHead (nullptr);
    processor->releaseResources();
}

juce::String HostedPlugin::unfitness() const
{
    if (outputs < 1)
        return tr ("It has no audio output.");
    if (inputs > maxChannels || outputs > maxChannels)
        return tr ("It has more than %1 channels.", maxChannels);
    return {};
}

HostedPlugin::Outcome HostedPlugin::process (const float* const* in, float* const* out, int frames) noexcept
{
    auto outcome = Outcome::played;
    for (int begin = 0; begin < frames && outcome != Outcome::threw; begin += block)
    {
        const auto count = std::min (block, frames - begin);
        const float* const partIn[] { in[0] + begin, in[1] + begin };
        float* const partOut[] { out[0] + begin, out[1] + begin };
        if (const auto part = processPart (partIn, partOut, count); part != Outcome::played)
        {
            outcome = part;
            const auto silent = part == Outcome::threw ? frames - begin : count;
            juce::FloatVectorOperations::clear (partOut[0], silent);
            juce::FloatVectorOperations::clear (partOut[1], silent);
        }
    }
    return outcome;
}

HostedPlugin::Outcome HostedPlugin::processPart (const float* const* in, float* const* out,
                                                 int frames) noexcept
{
    // JUCE's wrappers take locks, and plug-ins do what they like: what is theirs is not ours to check.
    const AllowedLockScope theirs;
    // A plug-in that loads a preset holds its lock meanwhile: the block goes on without it.
    const juce::ScopedTryLock lock (processor->getCallbackLock());
    if (!lock.isLocked() || processor->isSuspended())
        return Outcome::idle;

    buffer.setSize (buffer.getNumChannels(), frames, false, false, true);
    buffer.clear();
    if (inputs == 1)
    {
        buffer.copyFrom (0, 0, in[0], frames, 0.5f);
        buffer.addFrom (0, 0, in[1], frames, 0.5f);
    }
    else if (inputs > 1)
    {
        buffer.copyFrom (0, 0, in[0], frames);
        buffer.copyFrom (1, 0, in[1], frames);
    }
    noMidi.clear();
    try
    {
        processor->processBlock (buffer, noMidi);
    }
    catch (...)
    {
        return Outcome::threw;
    }
    // It may have changed how this thread treats subnormal numbers.
    juce::FloatVectorOperations::disableDenormalisedNumberSupport (true);
    for (int side = 0; side < 2; ++side)
        juce::FloatVectorOperations::copy (out[side], buffer.getReadPointer (outputs > 1 ? side : 0), frames);
    return Outcome::played;
}
