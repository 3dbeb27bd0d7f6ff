#include "app/audio/AudioDevices.h"

#include "app/audio/AudioPage.h"
#include "app/audio/RealTimePriority.h"
#include "app/audio/SilentDevice.h"
#include "cli/TerminalOutput.h"
#include "engine/CPlatterdex.h"
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
constexpr const char *choiceName = "audioDevice", *pairsName = "audioOutputs";

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

/** The words of the preferences for the sources of a pair of outputs, from OutputPairs::silent on. */
const juce::StringArray& sourceNames()
{
    static const juce::StringArray names { "none", "master", "headphones", "A", "B", "C", "D", "sampler" };
    return names;
}
}

void AudioDevices::Devices::createAudioDeviceTypes (juce::OwnedArray<juce::AudioIODeviceType>& types)
{
    for (auto* type : { juce::AudioIODeviceType::createAudioIODeviceType_JACK(),
                        juce::AudioIODeviceType::createAudioIODeviceType_ALSA() })
        if (type != nullptr)
            types.add (type);
    types.add (new SilentDeviceType());
}

const char* const AudioDevices::pageTitle = N_ ("Audio");

AudioDevices::AudioDevices (CPlatterdex& e, PreferencesFile& p)
    : engine (e),
      preferences (p),
      player (engine, &engine.settings.monitorSplit),
      keeper (devices,
              { [this] { return preferences.get (choiceName); },
                [this] (const juce::String& choice) { preferences.set (choiceName, choice); } },
              CPlatterdex::inputChannels, CPlatterdex::outputChannels)
{
    quietLibraries (jack);
    readPairs();
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
        return showPage();
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
    menu.addItem (tr ("Audio settings..."), [this] { showPage(); });
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

std::unique_ptr<juce::Component> AudioDevices::makePage()
{
    return std::make_unique<AudioPage> (
        devices, keeper, player.pairs, [this] { keepPairs(); }, engine.environment.prompts);
}

/** A word that is unknown leaves its pair as it is. */
void AudioDevices::readPairs()
{
    const auto words = juce::StringArray::fromTokens (preferences.get (pairsName), false);
    for (int pair = 0; pair < std::min (words.size(), OutputPairs::count); ++pair)
        if (const auto index = sourceNames().indexOf (words[pair]); index >= 0)
            player.pairs.setSource (pair, index + OutputPairs::silent);
}

void AudioDevices::keepPairs()
{
    juce::StringArray words;
    for (int pair = 0; pair < OutputPairs::count; ++pair)
        words.add (sourceNames()[player.pairs.source (pair) - OutputPairs::silent]);
    // Unwritten, they hold until the program ends.
    juce::ignoreUnused (preferences.set (pairsName, words.joinIntoString (" ")));
    onChange();
}
