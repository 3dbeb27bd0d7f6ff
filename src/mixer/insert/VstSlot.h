#pragma once

#include "mixer/insert/HostedPlugin.h"
#include "mixer/insert/SignalGuard.h"
#include "mixer/insert/VstAudioPlayHead.h"
#include "support/CallbackLock.h"
#include "support/GainRamp.h"

#include <array>
#include <optional>

/** The values of a slot that a SmartKnob holds, 0 to 1. */
struct VstSlotDrive
{
    std::optional<double> off; ///< from 0.5 on the plug-in is off
    std::optional<double> dryWet;
    std::array<std::optional<double>, 2> params;
};

/** A deck's slot for somebody else's plug-in, as the mixer plays it: an insert, or a send beside the dry signal.

    A plug-in comes, goes and changes its place through the dry signal, faded over 5 ms. One that is off plays on unheard, so
    that it comes back without an old tail. The dry signal waits for a plug-in of moderate latency, so that the two don't comb;
    the latency of others can only be shown. Whoever owns the plug-ins puts them in (plugins/slot). */
class VstSlot
{
public:
    /** Blocks from here on pass the slot by. */
    static constexpr int maxFrames = 16384;

    /** The longest latency that the dry signal waits for: beyond it the deck would be heard late. */
    static constexpr int maxCompensated = 1024;

    VstSlot();

    //==================================================================================================================
    // Hands. Any thread.

    Relaxed<double> dryWet { 0.5 }; ///< dry 0 to wet 1
    Relaxed<int8_t> isInsert { 0 }; ///< 1 the plug-in is in the deck's way, 0 it is added to the deck
    std::array<Relaxed<double>, 2> paramValues { 0.5, 0.5 }; ///< of the two chosen parameters

    /** Switches the plug-in on, also one that was taken out for a fault, or off. */
    void setOn (bool) noexcept;
    bool isOn() const noexcept { return enabled != 0; }

    /** The fault for which the plug-in was taken out. */
    PluginFault fault() const noexcept { return lastFault; }

    //==================================================================================================================
    // Plug-ins. The message thread, or whoever drives an engine without one.

    /** Asks for a plug-in in place of the one that plays; null for none. It begins to play when the other has faded out. The
        caller keeps both until uses() lets go of them. */
    void put (HostedPlugin*, const juce::CriticalSection& callbackLock);

    /** Takes everything out at once, whatever is heard of it: at the end of the engine. */
    void clear (const juce::CriticalSection& callbackLock);

    /** True while the block may play the plug-in. */
    bool uses (const HostedPlugin&, const juce::CriticalSection& callbackLock) const;

    /** Ties one of the two values to a parameter of the plug-in that was put last; null to none. The value becomes the
        parameter's. @param which   0 or 1 */
    void assign (int which, juce::AudioProcessorParameter*, const juce::CriticalSection& callbackLock);

    /** Takes over a value that the plug-in itself has given its parameter, unless a hand has just moved it. */
    void showValue (int which, double value) noexcept;

    //==================================================================================================================
    // The block. Audio thread.

    PX_AUDIO_THREAD void setSampleRate (double) noexcept;

    /** Follows the wish for a place at the begin of a block. @param onMaster   on the master's sum, else on the deck */
    PX_AUDIO_THREAD void follow (bool onMaster) noexcept;

    /** True if the slot stands on the master now. */
    PX_AUDIO_THREAD bool isOnMaster() const noexcept { return standsOnMaster; }

    PX_AUDIO_THREAD bool hasPlugin() const noexcept { return current != nullptr; }

    /** Plays the slot over a pair in place.
        @returns a fault that it has just met, for which the plug-in is off now */
    PX_AUDIO_THREAD PluginFault processVstSlot (float* left, float* right, int frames, const DeckTime&,
                                                const VstSlotDrive&) noexcept;

private:
    int wantedDelay() const noexcept;
    bool mayBeHeard() const noexcept;
    PX_AUDIO_THREAD void takeNext() noexcept;
    PX_AUDIO_THREAD void driveParameters (const VstSlotDrive&) noexcept;
    PX_AUDIO_THREAD PluginFault playPlugin (const float* const* in, int frames) noexcept;
    PX_AUDIO_THREAD void delayDry (const float* const* in, int frames) noexcept;
    PX_AUDIO_THREAD void mix (float* const* pair, int frames) noexcept;

    Relaxed<int8_t> enabled { 1 };
    Relaxed<PluginFault> lastFault { PluginFault::none };

    // Under the callback lock, which a block holds too.
    HostedPlugin *current = nullptr, *next = nullptr;
    std::array<juce::AudioProcessorParameter*, 2> parameters {};
    std::array<Relaxed<double>, 2> applied {}; ///< what the parameters were given last

    // The audio thread's.
    PX_VST_SLOT::VstAudioPlayHead playHead;
    GainRamp enabledGain { 0.0 }, wetGain { 0.5 }, dryGain { 1.0 };
    SignalGuard guard;
    juce::AudioBuffer<float> wet, dry, line;
    double sampleRate = 44100.0;
    int linePlace = 0, delay = 0;
    bool standsOnMaster = false, wantsMaster = false;
};
