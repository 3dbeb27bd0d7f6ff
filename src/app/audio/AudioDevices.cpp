#include "app/audio/AudioDevices.h"

#include "app/audio/RealTimePriority.h"
#include "app/audio/SilentDevice.h"
#include "cli/TerminalOutput.h"
#include "engine/CPlatterdex.h"
#include "skin/Palette.h"
#include "support/CallbackLock.h"
#include "support/language/Translate.h"
#include "ui/look/OpenMenu.h"

#include <alsa/asoundlib.h>

#include <cstdio>

namespace
{
constexpr int watchMs = 1000;
constexpr int outputsWithMonitor = 4;

/** The preference that lets two outputs be split, and its value. */
constexpr const char *twoOutputs = "two outputs", *asSplit = "split";

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

/** JUCE's selector, and in a line below it the names of the outputs in their order. */
class SettingsPage : public juce::Component
{
public:
    explicit SettingsPage (juce::AudioDeviceManager& devices)
        : selector (devices, 0, CPlatterdex::inputChannels, 0, CPlatterdex::outputChannels, false, false,
                    true, false)
    {
        names.setText (tr ("Pairs of outputs in their order: Master, Headphones, decks A to D, sampler."),
                       juce::dontSendNotification);
        names.setJustificationType (juce::Justification::centred);
        addAndMakeVisible (selector);
        addAndMakeVisible (names);
        setSize (560, 550);
    }

    void resized() override
    {
        auto area = getLocalBounds();
        names.setBounds (area.removeFromBottom (30));
        selector.setBounds (area);
    }

private:
    juce::AudioDeviceSelectorComponent selector;
    juce::Label names;
};

class SettingsDialog : public juce::DialogWindow
{
public:
    SettingsDialog() : DialogWindow (tr ("Audio settings"), palette::panel, true) {}

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

AudioDevices::AudioDevices (CPlatterdex& e, PreferencesFile& p, const juce::File& file)
    : engine (e),
      preferences (p),
      player (engine, &engine.settings.monitorSplit),
      keeper (devices, file, CPlatterdex::inputChannels, CPlatterdex::outputChannels)
{
    quietLibraries (jack);
    player.maySplit = preferences.get (twoOutputs) == asSplit ? 1 : 0;
    devices.addAudioCallback (&player);
    keeper.start();
    announce();
    devices.addChangeListener (this);
    startTimer (watchMs);
}

AudioDevices::~AudioDevices()
{
    stopTimer();
    dialog.reset();
    devices.removeChangeListener (this);
    keeper.saveChoice();
    devices.removeAudioCallback (&player);
    devices.closeAudioDevice();
}

void AudioDevices::timerCallback()
{
    askForRealTime();
    const auto wasRunning = keeper.isRunning();
    if (keeper.look (player.times.blocks))
    {
        if (!wasRunning)
            printLine (tr ("The audio device has stopped."));
        announce();
    }
    else if (notice() != noticed) // the split was switched
    {
        noticed = notice();
        onChange();
    }
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
    keeper.saveChoice();
}

void AudioDevices::announce()
{
    auto* device = devices.getCurrentAudioDevice();
    if (device == nullptr)
        return;
    juce::String line;
    if (device->getTypeName() == SilentDevice::name)
        line = tr ("No audio device found: running silently.");
    else
        line = tr ("Audio device: %1, %2, %3 in, %4 out, %5 Hz, blocks of %6.", device->getTypeName(),
                   device->getName(), device->getActiveInputChannels().countNumberOfSetBits(),
                   device->getActiveOutputChannels().countNumberOfSetBits(),
                   juce::roundToInt (device->getCurrentSampleRate()), device->getCurrentBufferSizeSamples());
    if (line != announced)
    {
        printLine (line);
        std::fflush (stdout);
    }
    announced = line;
    noticed = notice();
    onChange();
}

int AudioDevices::outputs() const
{
    const auto* device = devices.getCurrentAudioDevice();
    return device == nullptr || device->getTypeName() == SilentDevice::name
               ? 0
               : device->getActiveOutputChannels().countNumberOfSetBits();
}

bool AudioDevices::isSplit() const
{
    return player.maySplit != 0 && engine.settings.monitorSplit != 0;
}

void AudioDevices::split (bool wanted)
{
    preferences.set (twoOutputs, wanted ? asSplit : "master");
    engine.settings.monitorSplit = player.maySplit = wanted ? 1 : 0;
    noticed = notice();
    onChange();
}

juce::String AudioDevices::notice() const
{
    const auto count = outputs();
    if (count == 0)
        return tr ("No audio device: nothing can be heard. Click to choose one.");
    if (count == 2 && isSplit())
        return tr ("Two outputs, split: Headphones with the cue on the left, Master on the right. Click to "
                   "change.");
    if (count < outputsWithMonitor)
        return tr ("Two outputs, Master only: Headphones and PFL cannot be heard. Click for what helps.");
    return {};
}

void AudioDevices::offerHelp (juce::Component& window)
{
    if (outputs() != 2)
        return showSettings (window);
    juce::PopupMenu menu;
    menu.addItem (tr ("Split: cue left, master right"), true, isSplit(), [this] { split (!isSplit()); });
    for (const auto& card : keeper.cardsWithOutputs (outputsWithMonitor))
        menu.addItem (tr ("Use %1 (%2) for Master and Headphones", card.name, card.type),
                      [this, card]
                      {
                          keeper.use (card);
                          announce();
                      });
    menu.addSeparator();
    menu.addItem (tr ("Audio settings..."),
                  [this, shown = juce::Component::SafePointer (&window)]
                  {
                      if (shown != nullptr)
                          showSettings (*shown);
                  });
    openMenu (menu, window, juce::PopupMenu::Options().withMousePosition());
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
    line << ".";
    const auto late = player.times.lateLine();
    return late.isEmpty() ? line : line + "\n" + late;
}

void AudioDevices::showSettings (juce::Component& centredOn)
{
    if (dialog == nullptr)
    {
        dialog = std::make_unique<SettingsDialog>();
        dialog->setUsingNativeTitleBar (true);
        dialog->setContentOwned (new SettingsPage (devices), true);
        dialog->centreAroundComponent (&centredOn, dialog->getWidth(), dialog->getHeight());
    }
    dialog->setVisible (true);
    dialog->toFront (true);
}
