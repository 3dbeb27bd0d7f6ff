#include "mixer/insert/VstSlot.h"

#include "support/CrossFade.h"

#include <algorithm>
#include <utility>

namespace
{
/** No value of a parameter: the next one is given to it whatever it is. */
constexpr double nothingApplied = -1.0;

/** The time in which a plug-in's input comes up: an echo would repeat an abrupt beginning when the slot is long open. */
constexpr double hearingSeconds = 0.005;

/** Writes a block whose beginning comes up. @param place   of its first frame since the plug-in was put in */
PX_AUDIO_THREAD void fadeIn (const float* in, float* out, int frames, int64_t place, double rate) noexcept
{
    const auto perFrame = 1.0 / (hearingSeconds * rate);
    for (int i = 0; i < frames; ++i)
        out[i] = in[i] * static_cast<float> (std::min (1.0, static_cast<double> (place + i) * perFrame));
}
}

VstSlot::VstSlot() : wet (2, maxFrames), dry (2, maxFrames), line (2, maxCompensated)
{
    line.clear();
}

void VstSlot::setOn (bool on) noexcept
{
    if (on)
        lastFault = PluginFault::none;
    enabled = on ? 1 : 0;
}

void VstSlot::put (HostedPlugin* plugin, const juce::CriticalSection& callbackLock)
{
    if (plugin != nullptr)
        plugin->processor->setPlayHead (&playHead);
    const CallbackLock lock (callbackLock, "plug-in slot");
    next = plugin;
    parameters = {};
    if (lastFault != PluginFault::none)
        setOn (true); // it was switched off for a fault of the former one
}

void VstSlot::clear (const juce::CriticalSection& callbackLock)
{
    const CallbackLock lock (callbackLock, "plug-in slot");
    current = next = nullptr;
    parameters = {};
    enabledGain.reset (0.0);
}

void VstSlot::showValue (int which, double value) noexcept
{
    const auto index = static_cast<size_t> (which);
    if (paramValues[index] == applied[index])
        paramValues[index] = value;
}

bool VstSlot::uses (const HostedPlugin& plugin, const juce::CriticalSection& callbackLock) const
{
    const CallbackLock lock (callbackLock, "plug-in slot");
    return current == &plugin || next == &plugin;
}

void VstSlot::assign (int which, juce::AudioProcessorParameter* parameter,
                      const juce::CriticalSection& callbackLock)
{
    const auto index = static_cast<size_t> (which);
    if (parameter != nullptr)
        paramValues[index] = static_cast<double> (parameter->getValue());
    const CallbackLock lock (callbackLock, "plug-in parameter");
    parameters[index] = parameter;
    applied[index] = nothingApplied;
}

void VstSlot::setSampleRate (double rate) noexcept
{
    sampleRate = rate;
    for (auto* ramp : { &enabledGain, &wetGain, &dryGain })
        ramp->setSampleRate (rate);
}

int VstSlot::wantedDelay() const noexcept
{
    const auto latency = current != nullptr ? current->latency() : 0;
    return latency <= maxCompensated ? latency : 0;
}

void VstSlot::takeNext() noexcept
{
    if (next == current && delay == wantedDelay())
        return;
    if (next != current)
    {
        guard.reset();
        for (auto& each : applied)
            each = nothingApplied;
        wetGain.settle();
        dryGain.settle();
    }
    current = next;
    delay = wantedDelay();
    linePlace = 0;
    line.clear();
    playHead.frames = 0;
}

void VstSlot::follow (bool onMaster) noexcept
{
    wantsMaster = onMaster;
    if (current != nullptr && current->sampleRate() != sampleRate)
        enabledGain.reset (0.0); // it has not been prepared for what is played now
    if (!enabledGain.isAt (0.0))
        return;
    if (standsOnMaster != onMaster)
        playHead.frames = 0;
    standsOnMaster = onMaster;
    takeNext();
}

bool VstSlot::mayBeHeard() const noexcept
{
    // A plug-in with latency gives silence first, or what it heard in its former place: that stays unheard.
    return next == current && standsOnMaster == wantsMaster && delay == wantedDelay()
           && playHead.frames >= current->latency() && lastFault == PluginFault::none;
}

PluginFault VstSlot::processVstSlot (float* left, float* right, int frames, const DeckTime& time,
                                     const VstSlotDrive& drive) noexcept
{
    if (current == nullptr || frames < 1 || frames >= maxFrames || current->sampleRate() != sampleRate)
        return PluginFault::none;

    const auto isWanted = drive.off ? *drive.off < 0.5 : enabled != 0;
    const auto wetness = std::clamp (drive.dryWet.value_or (dryWet), 0.0, 1.0);
    enabledGain.setTarget (isWanted && mayBeHeard() ? 1.0 : 0.0);
    wetGain.setTarget (wetness);
    dryGain.setTarget (isInsert != 0 ? 1.0 - wetness : 1.0);
    if (lastFault != PluginFault::none && enabledGain.isAt (0.0))
        return PluginFault::none;

    playHead.time = time;
    driveParameters (drive);
    float* const pair[] { left, right };
    const auto fault = playPlugin (pair, frames);
    playHead.frames += frames;
    delayDry (pair, frames);
    mix (pair, frames);
    return fault;
}

void VstSlot::driveParameters (const VstSlotDrive& drive) noexcept
{
    if (next != current)
        return;                    // they are the next one's
    const AllowedLockScope theirs; // as in HostedPlugin
    for (size_t i = 0; i < parameters.size(); ++i)
    {
        const auto value = drive.params[i].value_or (paramValues[i]);
        if (parameters[i] != nullptr && value != applied[i])
            parameters[i]->setValue (static_cast<float> (value));
        applied[i] = value;
    }
}

PluginFault VstSlot::playPlugin (const float* const* in, int frames) noexcept
{
    if (lastFault != PluginFault::none)
    {
        wet.clear (0, 0, frames);
        wet.clear (1, 0, frames);
        return PluginFault::none;
    }
    float* const out[] { wet.getWritePointer (0), wet.getWritePointer (1) };
    // The dry signal's buffer is free until delayDry().
    float* const heard[] { dry.getWritePointer (0), dry.getWritePointer (1) };
    const auto isNew = static_cast<double> (playHead.frames) < hearingSeconds * sampleRate;
    if (isNew)
        for (int side = 0; side < 2; ++side)
            fadeIn (in[side], heard[side], frames, playHead.frames, sampleRate);
    const auto outcome = current->process (isNew ? heard : in, out, frames);
    auto fault = guard.run (out, frames);
    if (outcome == HostedPlugin::Outcome::threw)
        fault = PluginFault::threw;
    if (fault != PluginFault::none)
    {
        lastFault = fault;
        enabled = 0;
    }
    return fault;
}

void VstSlot::delayDry (const float* const* in, int frames) noexcept
{
    for (int side = 0; side < 2; ++side)
    {
        auto* const out = dry.getWritePointer (side);
        if (delay == 0)
        {
            juce::FloatVectorOperations::copy (out, in[side], frames);
            continue;
        }
        auto* const waiting = line.getWritePointer (side);
        for (int i = 0, place = linePlace; i < frames; ++i, place = place + 1 < delay ? place + 1 : 0)
            out[i] = std::exchange (waiting[place], in[side][i]);
    }
    if (delay > 0)
        linePlace = (linePlace + frames) % delay;
}

void VstSlot::mix (float* const* pair, int frames) noexcept
{
    if (enabledGain.isAt (0.0))
    {
        wetGain.settle();
        dryGain.settle();
        return;
    }
    const float* const plugin[] { wet.getReadPointer (0), wet.getReadPointer (1) };
    const float* const delayed[] { dry.getReadPointer (0), dry.getReadPointer (1) };
    for (int i = 0; i < frames; ++i)
    {
        const auto wetPart = static_cast<float> (wetGain.next()),
                   dryPart = static_cast<float> (dryGain.next()),
                   heard = static_cast<float> (enabledGain.next());
        for (int side = 0; side < 2; ++side)
        {
            const auto mixed = dryPart * delayed[side][i] + wetPart * plugin[side][i];
            pair[side][i] = CrossFade::mixed (pair[side][i], mixed, heard);
        }
    }
}
