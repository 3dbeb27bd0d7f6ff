#include "app/audio/AudioDevices.h"

#include "app/audio/RealTimePriority.h"
#include "app/audio/SilentDevice.h"
#include "cli/TerminalOutput.h"
#include "engine/CPlatterdex.h"
#include "skin/Palette.h"
#include "support/CallbackLock.h"

#include <alsa/asoundlib.h>

#include <cstdio>

namespace
{
constexpr int watchMs = 1000;
constexpr int mostStalledTurns = 3;
constexpr int outputsWithMonitor = 4;

/** Above the threads of other programs that ask, below those of the kernel that serve the card. */
constexpr int audioPriority = 40;

void ignoreAlsaError (const char*, int, const char*, int, const char*, ...) {}

/** Both libraries report each device that isn't there on the standard error output; it is said once, in our line. */
void quietLibraries (juce::DynamicLibrary& jack)
{
    snd_lib_error_set_handler (ignoreAlsaError);
    if (!jack.open ("libjack.so.0"))
        return;
    using Setter = void (*) (void (*) (const char*));
    for (const auto* function : { "jack_set_error_function", "jack_set_info_function" })
        if (const auto set = reinterpret_cast<Setter> (jack.getFunction (function)))
            set ([] (const char*) {});
}

class SettingsDialog : public juce::DialogWindow
{
public:
    SettingsDialog() : DialogWindow ("Audio settings", palette::panel, true) {}

private:
    void closeButtonPressed() override { setVisible (false); }
};
}

void AudioDevices::Devices::createAudioDeviceTypes (juce::OwnedArray<juce::AudioIODeviceType>& types)
{
    for (auto* type : { juce::AudioIODeviceType::createAudioIODeviceType_JACK(),
                        juce::AudioIODeviceType::createAudioIODeviceType_ALSA() })
        if (type != nullptr)
            types.add (type);
    types.add (new SilentDeviceType());
}

AudioDevices::AudioDevices (juce::AudioProcessor& engine, const juce::File& file)
    : choiceFile (file),
      player (engine)
{
    quietLibraries (jack);
    const auto choice = juce::parseXML (choiceFile);
    devices.addAudioCallback (&player);
    devices.initialise (CPlatterdex::inputChannels, CPlatterdex::outputChannels, choice.get(), true);
    if (!isRunning())
        openFirstThatRuns();
    announce();
    devices.addChangeListener (this);
    startTimer (watchMs);
}

AudioDevices::~AudioDevices()
{
    stopTimer();
    dialog.reset();
    devices.removeChangeListener (this);
    saveChoice();
    devices.removeAudioCallback (&player);
    devices.closeAudioDevice();
}

bool AudioDevices::isRunning() const
{
    auto* device = devices.getCurrentAudioDevice();
    return device != nullptr && device->isOpen() && device->isPlaying();
}

void AudioDevices::openFirstThatRuns()
{
    for (const auto* type : devices.getAvailableDeviceTypes())
    {
        devices.closeAudioDevice();
        devices.setCurrentAudioDeviceType (type->getTypeName(), false);
        if (!isRunning())
            devices.initialise (CPlatterdex::inputChannels, CPlatterdex::outputChannels, nullptr, false);
        if (isRunning() && devices.getCurrentAudioDeviceType() == type->getTypeName())
            return;
    }
}

void AudioDevices::timerCallback()
{
    askForRealTime();
    const uint32_t blocks = player.times.blocks;
    stalledTurns = blocks == blocksSeen ? stalledTurns + 1 : 0;
    blocksSeen = blocks;
    if (isRunning() && stalledTurns < mostStalledTurns)
        return;
    stalledTurns = 0;
    printLine ("The audio device has stopped.");
    openFirstThatRuns();
    announce();
}

void AudioDevices::askForRealTime()
{
    const int thread = player.thread;
    if (thread != 0 && thread != askedFor)
        RealTimePriority::request (thread, audioPriority);
    askedFor = thread;
}

void AudioDevices::changeListenerCallback (juce::ChangeBroadcaster*)
{
    announce();
    saveChoice();
}

void AudioDevices::announce()
{
    auto* device = devices.getCurrentAudioDevice();
    if (device == nullptr)
        return;
    juce::String line;
    if (device->getTypeName() == SilentDevice::name)
        line = "No audio device found: running silently.";
    else
        line << "Audio device: " << device->getTypeName() << ", " << device->getName() << ", "
             << device->getActiveInputChannels().countNumberOfSetBits() << " in, "
             << device->getActiveOutputChannels().countNumberOfSetBits() << " out, "
             << juce::roundToInt (device->getCurrentSampleRate()) << " Hz, blocks of "
             << device->getCurrentBufferSizeSamples() << ".";
    if (line != announced)
    {
        printLine (line);
        std::fflush (stdout);
    }
    announced = line;
    onChange();
}

juce::String AudioDevices::notice() const
{
    const auto* device = devices.getCurrentAudioDevice();
    if (device == nullptr || device->getTypeName() == SilentDevice::name)
        return "No audio device: nothing can be heard. Click to choose one.";
    if (device->getActiveOutputChannels().countNumberOfSetBits() < outputsWithMonitor)
        return "Two outputs only: headphones and PFL cannot be heard. Click to choose another device.";
    return {};
}

void AudioDevices::saveChoice() const
{
    if (const auto choice = devices.createStateXml())
        choice->writeTo (choiceFile);
}

juce::String AudioDevices::report() const
{
    const auto [held, reason] = CallbackLock::longest();
    juce::String line;
    line << "Audio: " << player.times.line() << ", longest held "
         << juce::String (static_cast<double> (held) / 1e6, 3) << " ms (" << reason << ")";
    auto* device = devices.getCurrentAudioDevice();
    if (const auto gaps = device != nullptr ? device->getXRunCount() : -1; gaps >= 0)
        line << ", gaps counted by the device " << gaps;
    line << ", scheduling " << RealTimePriority::describe (player.thread);
    return line + ".";
}

void AudioDevices::showSettings (juce::Component& centredOn)
{
    if (dialog == nullptr)
    {
        auto selector = std::make_unique<juce::AudioDeviceSelectorComponent> (
            devices, 0, CPlatterdex::inputChannels, 0, CPlatterdex::outputChannels, false, false, true,
            false);
        selector->setSize (560, 520);
        dialog = std::make_unique<SettingsDialog>();
        dialog->setUsingNativeTitleBar (true);
        dialog->setContentOwned (selector.release(), true);
        dialog->centreAroundComponent (&centredOn, dialog->getWidth(), dialog->getHeight());
    }
    dialog->setVisible (true);
    dialog->toFront (true);
}
