#include "app/audio/DeviceKeeper.h"

#include <algorithm>

namespace
{
constexpr int mostStalledLooks = 3;
}

DeviceKeeper::DeviceKeeper (juce::AudioDeviceManager& manager, Place p, int in, int out)
    : devices (manager),
      place (std::move (p)),
      inputs (in),
      outputs (out)
{
}

void DeviceKeeper::start()
{
    const auto choice = juce::parseXML (place.read());
    devices.initialise (inputs, outputs, choice.get(), true);
    if (!isRunning())
        openFirstThatRuns();
    if (!isSilentType (current().type))
        firstThatSounded = current();
}

bool DeviceKeeper::isRunning() const
{
    auto* device = devices.getCurrentAudioDevice();
    return device != nullptr && device->isOpen() && device->isPlaying();
}

bool DeviceKeeper::look (uint32_t blocks)
{
    stalledLooks = blocks == blocksSeen ? stalledLooks + 1 : 0;
    blocksSeen = blocks;
    if (!isRunning() || stalledLooks >= mostStalledLooks)
    {
        stalledLooks = looksSinceTry = 0;
        pause = firstPause;
        openFirstThatRuns();
        return true;
    }
    if (current() == chosen() || ++looksSinceTry < pause)
        return false;
    looksSinceTry = 0;
    if (!takeUpChosen())
        return false;
    // A card that is listed and doesn't open interrupts what plays in its stead: seldom, then.
    pause = current() == chosen() ? firstPause : std::min (2 * pause, longestPause);
    return true;
}

void DeviceKeeper::saveChoice()
{
    // The manager knows of choices only, not of what was taken up instead.
    if (const auto choice = devices.createStateXml())
        place.write (choice->toString (juce::XmlElement::TextFormat().singleLine().withoutHeader()));
}

std::vector<DeviceKeeper::Card> DeviceKeeper::cardsWithOutputs (int least)
{
    std::vector<Card> cards;
    for (auto* type : devices.getAvailableDeviceTypes())
    {
        if (isSilentType (type->getTypeName()))
            continue;
        type->scanForDevices();
        for (const auto& name : type->getDeviceNames (false))
        {
            const Card card { type->getTypeName(), name };
            auto* running = card == current() ? devices.getCurrentAudioDevice() : nullptr;
            const std::unique_ptr<juce::AudioIODevice> probe (
                running == nullptr ? type->createDevice (name, {}) : nullptr);
            if (auto* device = running != nullptr ? running : probe.get();
                device != nullptr && device->getOutputChannelNames().size() >= least)
                cards.push_back (card);
        }
    }
    return cards;
}

void DeviceKeeper::use (const Card& card)
{
    devices.closeAudioDevice(); // else the manager waits 1.5 s between two types
    devices.setCurrentAudioDeviceType (card.type, true);
    auto setup = devices.getAudioDeviceSetup();
    setup.outputDeviceName = card.name;
    if (const auto* type = typeNamed (card.type);
        type != nullptr
        && (!type->hasSeparateInputsAndOutputs() || type->getDeviceNames (true).contains (card.name)))
        setup.inputDeviceName = card.name;
    setup.useDefaultInputChannels = setup.useDefaultOutputChannels = true;
    devices.setAudioDeviceSetup (setup, true);
    if (!isRunning())
        openFirstThatRuns();
    saveChoice();
}

DeviceKeeper::Card DeviceKeeper::current() const
{
    return { devices.getCurrentAudioDeviceType(), devices.getAudioDeviceSetup().outputDeviceName };
}

DeviceKeeper::Card DeviceKeeper::chosen() const
{
    const auto choice = devices.createStateXml();
    if (choice == nullptr)
        return firstThatSounded;
    const auto both = choice->getStringAttribute ("audioDeviceName");
    return { choice->getStringAttribute ("deviceType"),
             both.isNotEmpty() ? both : choice->getStringAttribute ("audioOutputDeviceName") };
}

juce::AudioIODeviceType* DeviceKeeper::typeNamed (const juce::String& name) const
{
    const auto& types = devices.getAvailableDeviceTypes();
    const auto* found = std::find_if (types.begin(), types.end(),
                                      [&] (const auto* type) { return type->getTypeName() == name; });
    return found != types.end() ? *found : nullptr;
}

bool DeviceKeeper::isSilentType (const juce::String& name) const
{
    const auto* last = devices.getAvailableDeviceTypes().getLast();
    return last != nullptr && last->getTypeName() == name;
}

void DeviceKeeper::openFirstThatRuns()
{
    for (auto* type : devices.getAvailableDeviceTypes())
    {
        devices.closeAudioDevice();
        type->scanForDevices();
        devices.setCurrentAudioDeviceType (type->getTypeName(), false);
        // Not by initialise() without a choice, which would forget the one that was made.
        if (!isRunning() && type->getDeviceNames (false).size() > 0)
        {
            auto setup = devices.getAudioDeviceSetup();
            setup.outputDeviceName = type->getDeviceNames (false)[type->getDefaultDeviceIndex (false)];
            setup.inputDeviceName = type->getDeviceNames (true)[type->getDefaultDeviceIndex (true)];
            setup.useDefaultInputChannels = setup.useDefaultOutputChannels = true;
            setup.sampleRate = 0.0;
            setup.bufferSize = 0;
            devices.setAudioDeviceSetup (setup, false);
        }
        if (isRunning() && devices.getCurrentAudioDeviceType() == type->getTypeName())
            return;
    }
}

bool DeviceKeeper::takeUpChosen()
{
    const auto wanted = chosen();
    if (wanted.type.isEmpty())
    {
        // Nothing has ever sounded: any card will do.
        for (auto* type : devices.getAvailableDeviceTypes())
        {
            type->scanForDevices();
            if (!isSilentType (type->getTypeName()) && !type->getDeviceNames (false).isEmpty())
            {
                openFirstThatRuns();
                if (!isSilentType (current().type))
                    firstThatSounded = current();
                return true;
            }
        }
        return false;
    }
    auto* type = typeNamed (wanted.type);
    if (type == nullptr)
        return false;
    type->scanForDevices();
    if (!type->getDeviceNames (false).contains (wanted.name))
        return false;

    devices.closeAudioDevice();
    if (const auto choice = devices.createStateXml())
        devices.initialise (inputs, outputs, choice.get(), false);
    else
    {
        devices.setCurrentAudioDeviceType (wanted.type, false);
        auto setup = devices.getAudioDeviceSetup();
        setup.outputDeviceName = wanted.name;
        setup.useDefaultInputChannels = setup.useDefaultOutputChannels = true;
        devices.setAudioDeviceSetup (setup, false);
    }
    if (!isRunning())
        openFirstThatRuns();
    return true;
}
