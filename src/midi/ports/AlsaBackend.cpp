#include "midi/ports/AlsaBackend.h"

#include <juce_audio_devices/juce_audio_devices.h>

#include <mutex>

namespace
{
constexpr const char* prefix = "alsa:";

/** JUCE's client of the sequencer belongs to the process and is made and found without a lock. */
std::mutex clientLock;

/** JUCE's reading thread ends up to 100 ms after the last input was closed, and one that is opened meanwhile hears nothing. */
constexpr int readerEndMs = 150;
uint32_t lastClosed = 0;
bool hasClosed = false;

juce::String identifierOf (const MidiPortInfo& port)
{
    return port.handle.fromFirstOccurrenceOf (prefix, false, false);
}

class AlsaInput : public OpenMidiInput, private juce::MidiInputCallback
{
public:
    AlsaInput (const MidiPortInfo& port, MidiReceiver& r) : receiver (r), name (port.name)
    {
        const std::scoped_lock sl (clientLock);
        const auto since = juce::Time::getMillisecondCounter() - lastClosed;
        if (hasClosed && since < readerEndMs)
            juce::Thread::sleep (readerEndMs - static_cast<int> (since));
        input = juce::MidiInput::openDevice (identifierOf (port), this);
        if (input != nullptr)
            input->start();
    }

    ~AlsaInput() override
    {
        const std::scoped_lock sl (clientLock);
        input.reset();
        lastClosed = juce::Time::getMillisecondCounter();
        hasClosed = true;
    }

    bool isOpen() const { return input != nullptr; }

private:
    void handleIncomingMidiMessage (juce::MidiInput*, const juce::MidiMessage& message) override
    {
        receiver.midiArrived (name, { message.getRawData(), static_cast<size_t> (message.getRawDataSize()) });
    }

    MidiReceiver& receiver;
    const juce::String name;
    std::unique_ptr<juce::MidiInput> input;
};

class AlsaOutput : public OpenMidiOutput
{
public:
    explicit AlsaOutput (const MidiPortInfo& port)
    {
        const std::scoped_lock sl (clientLock);
        output = juce::MidiOutput::openDevice (identifierOf (port));
    }

    ~AlsaOutput() override
    {
        const std::scoped_lock sl (clientLock);
        output.reset();
    }

    bool isOpen() const { return output != nullptr; }

    bool send (std::span<const uint8_t> message) override
    {
        output->sendMessageNow (juce::MidiMessage (message.data(), static_cast<int> (message.size())));
        return true; // JUCE tells of no failure; a port that is gone is seen at the next look
    }

private:
    std::unique_ptr<juce::MidiOutput> output;
};

template <typename Open, typename Result>
std::unique_ptr<Result> orNull (std::unique_ptr<Open> made)
{
    if (!made->isOpen())
        return nullptr;
    return made;
}
}

std::vector<MidiPortInfo> AlsaBackend::ports (MidiDirection direction)
{
    if (!juce::File ("/dev/snd/seq").exists())
        return {}; // the library would complain on the terminal at each try
    const std::scoped_lock sl (clientLock);
    std::vector<MidiPortInfo> list;
    for (const auto& device : direction == MidiDirection::input ? juce::MidiInput::getAvailableDevices()
                                                                : juce::MidiOutput::getAvailableDevices())
        list.push_back ({ device.name, prefix + device.identifier });
    return list;
}

std::unique_ptr<OpenMidiInput> AlsaBackend::openInput (const MidiPortInfo& port, MidiReceiver& receiver)
{
    return orNull<AlsaInput, OpenMidiInput> (std::make_unique<AlsaInput> (port, receiver));
}

std::unique_ptr<OpenMidiOutput> AlsaBackend::openOutput (const MidiPortInfo& port)
{
    return orNull<AlsaOutput, OpenMidiOutput> (std::make_unique<AlsaOutput> (port));
}
