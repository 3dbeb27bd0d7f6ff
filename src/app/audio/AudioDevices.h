#pragma once

#include "app/audio/EnginePlayer.h"

#include <juce_audio_utils/juce_audio_utils.h>

#include <functional>
#include <memory>

/** The application's audio device: JACK, else ALSA, else silence, or what the user has chosen.

    The choice is kept in a file. A device that dies is followed by the next one that opens, at the latest the silent
    one: the engine never stands still. Each device that is taken up is named in one line on the standard output.
    Message thread. */
class AudioDevices : private juce::Timer, private juce::ChangeListener
{
public:
    /** @param engine       outlives this
        @param choiceFile   where the user's choice is kept */
    AudioDevices (juce::AudioProcessor& engine, const juce::File& choiceFile);
    ~AudioDevices() override;

    /** One line on all blocks so far: how many came late, the longest, the lock, and how the kernel schedules them. */
    juce::String report() const;

    /** One sentence on what can't be heard through the device; empty if all can. */
    juce::String notice() const;

    /** Called after a device was taken up. */
    std::function<void()> onChange = [] {};

    /** Opens the dialog in which the device is chosen. */
    void showSettings (juce::Component& centredOn);

private:
    class Devices : public juce::AudioDeviceManager
    {
        void createAudioDeviceTypes (juce::OwnedArray<juce::AudioIODeviceType>&) override;
    };

    void timerCallback() override;
    void changeListenerCallback (juce::ChangeBroadcaster*) override;
    bool isRunning() const;
    void openFirstThatRuns();
    void announce();
    void askForRealTime();
    void saveChoice() const;

    const juce::File choiceFile;
    juce::DynamicLibrary jack;
    EnginePlayer player;
    Devices devices;
    juce::String announced;
    uint32_t blocksSeen = 0;
    int stalledTurns = 0;
    int askedFor = 0; ///< the thread that real time was last asked for
    std::unique_ptr<juce::DialogWindow> dialog;
};
