#pragma once

#include "app/audio/DeviceKeeper.h"
#include "app/audio/EnginePlayer.h"
#include "session/PreferencesFile.h"

#include <juce_audio_devices/juce_audio_devices.h>

#include <functional>
#include <memory>

class CPlatterdex;

/** The application's audio device: JACK, else ALSA, else silence, or what the user has chosen.

    The choice is kept in the preferences, and so is what each pair of outputs carries. A device that dies is followed by the next one that opens, at the latest the silent
    one: the engine never stands still. The chosen one is taken up again once it is back. Each device that is taken up is
    named in one line on the standard output.

    Where a device has two outputs only, these can be split: the left one carries the headphones with the cue, the right
    one the master. Message thread. */
class AudioDevices : private juce::Timer, private juce::ChangeListener
{
public:
    /** @param engine   outlives this, as do the preferences, which say whether two outputs may be split */
    AudioDevices (CPlatterdex& engine, PreferencesFile&);
    ~AudioDevices() override;

    /** One line on all blocks so far: how many came late, the longest, the lock, and how the kernel schedules them. */
    juce::String report() const;

    /** The line on the device in use. */
    const juce::String& deviceLine() const noexcept { return announced; }

    /** One sentence on what can't be heard through the device; empty if all can. */
    juce::String notice() const;

    /** Called when the notice may be another. */
    std::function<void()> onChange = [] {};

    /** Opens the page of the preferences on the device. */
    std::function<void()> showPage = [] {};

    static const char* const pageTitle;

    /** The page, which this outlives. */
    std::unique_ptr<juce::Component> makePage();

    /** Offers what helps against the notice: the split and cards with more outputs, or the page at once. */
    void offerHelp (juce::Component& window);

private:
    class Devices : public juce::AudioDeviceManager
    {
        void createAudioDeviceTypes (juce::OwnedArray<juce::AudioIODeviceType>&) override;
    };

    void timerCallback() override;
    void changeListenerCallback (juce::ChangeBroadcaster*) override;
    void announce();
    void askForRealTime();
    int outputs() const;
    bool isSplit() const;
    void split (bool wanted);
    void readPairs();
    void keepPairs();

    CPlatterdex& engine;
    PreferencesFile& preferences;
    juce::DynamicLibrary jack;
    EnginePlayer player;
    Devices devices;
    DeviceKeeper keeper;
    juce::String announced, noticed;
    int askedFor = 0; ///< the thread that real time was last asked for
};
