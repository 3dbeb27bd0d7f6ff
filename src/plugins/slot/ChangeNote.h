#pragma once

#include <juce_audio_processors/juce_audio_processors.h>

#include <atomic>

/** Notes that a plug-in tells of a change: a parameter moved in its window, another preset. Any thread, also one that plays
    the plug-in. */
class ChangeNote : public juce::AudioProcessorListener
{
public:
    void set() noexcept { isSet = true; }

    /** Takes the note back. @returns true if there was one */
    bool take() noexcept { return isSet.exchange (false); }

private:
    void audioProcessorParameterChanged (juce::AudioProcessor*, int, float) override { set(); }
    void audioProcessorChanged (juce::AudioProcessor*, const ChangeDetails&) override { set(); }

    std::atomic<bool> isSet { false };
};
