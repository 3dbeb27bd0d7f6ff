#include "midi/ports/AlsaBackend.h"

#include <juce_audio_devices/juce_audio_devices.h>

#include <mutex>
#include <unistd.h>

namespace
{
constexpr const char* prefix = "alsa:";

/** The client of the sequencer itself, whose ports "Timer" and "Announce" are no devices. */
constexpr const char* systemClient = "0-";

/** JUCE's client of the sequencer belongs to the process and is made and found without a lock. */
std::mutex clientLock;

/** JUCE's reading thread ends up to 100 ms after the last input was closed, and one that is opened meanwhile hears nothing. */
constexpr int readerEndMs = 150;
uint32_t lastClosed = 0;
bool hasClosed = false;

juce::String identifierOf (const MidiPortInfo& port)
{
    return port.handle.fromFirstOccurrenceOf (prefix, false, false).upToFirstOccurrenceOf (".", false, false);
}

class AlsaInput : public OpenMidiInput, private juce::MidiInputCallback
{
public:
    AlsaInput (const MidiPortInfo& port, MidiReceiver& r, std::atomic<pid_t>& t)
        : receiver (r),
          name (port.name),
          reader (t)
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
        // The number changes with the first input after a while without.
        thread_local const auto thread = ::gettid();
        reader.store (thread, std::memory_order_relaxed);
        receiver.midiArrived (name, { message.getRawData(), static_cast<size_t> (message.getRawDataSize()) });
    }

    MidiReceiver& receiver;
    const juce::String name;
    std::atomic<pid_t>& reader;
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

AlsaBackend::~AlsaBackend()
{
    watch ({});
}

void AlsaBackend::watch (std::function<void()> changed)
{
    const std::scoped_lock sl (watcherLock);
    watcher = std::move (changed);
}

void AlsaBackend::tellOfChange()
{
    const std::scoped_lock sl (watcherLock);
    if (watcher != nullptr)
        watcher();
}

std::vector<MidiPortInfo> AlsaBackend::ports (MidiDirection direction)
{
    if (!juce::File ("/dev/snd/seq").exists())
        return {}; // the library would complain on the terminal at each try
    const std::scoped_lock al (announcementsLock);
    if (announcements == nullptr)
    {
        announcements = std::make_unique<SequencerAnnouncements> ([this] { tellOfChange(); });
        announcements->start();
    }
    if (const auto thread = reader.load (std::memory_order_relaxed);
        thread != askedFor && askForRealTime != nullptr)
    {
        askedFor = thread;
        askForRealTime (thread);
    }
    const std::scoped_lock sl (clientLock);
    std::vector<MidiPortInfo> list;
    for (const auto& device : direction == MidiDirection::input ? juce::MidiInput::getAvailableDevices()
                                                                : juce::MidiOutput::getAvailableDevices())
        if (!device.identifier.startsWith (systemClient))
            list.push_back (
                { device.name, prefix + device.identifier + "."
                                   + juce::String (announcements->comings().of (device.identifier)) });
    return list;
}

std::unique_ptr<OpenMidiInput> AlsaBackend::openInput (const MidiPortInfo& port, MidiReceiver& receiver)
{
    return orNull<AlsaInput, OpenMidiInput> (std::make_unique<AlsaInput> (port, receiver, reader));
}

std::unique_ptr<OpenMidiOutput> AlsaBackend::openOutput (const MidiPortInfo& port)
{
    return orNull<AlsaOutput, OpenMidiOutput> (std::make_unique<AlsaOutput> (port));
}
