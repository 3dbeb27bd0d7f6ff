#include "midi/ports/JackClient.h"

#include <algorithm>
#include <unistd.h>

namespace
{
constexpr const char* clientName = "Platterdex MIDI";

/** A message that is longer goes through no port's buffer. */
constexpr size_t longestMessage = 1 << 15;

/** A name as JACK gives it. */
juce::String textOf (const char* utf8)
{
    return juce::String (juce::CharPointer_UTF8 (utf8));
}
}

class JackClient::OpenInput : public OpenMidiInput
{
public:
    OpenInput (std::shared_ptr<JackClient> c, Input& i) : client (std::move (c)), input (i) {}

    ~OpenInput() override
    {
        auto* const port = input.port.load();
        {
            const std::scoped_lock sl (client->delivery);
            input.receiver = nullptr;
            input.port.store (nullptr);
        }
        client->endPort (port);
    }

private:
    const std::shared_ptr<JackClient> client;
    Input& input;
};

class JackClient::OpenOutput : public OpenMidiOutput
{
public:
    OpenOutput (std::shared_ptr<JackClient> c, Output& o) : client (std::move (c)), output (o) {}

    ~OpenOutput() override
    {
        client->awaitSent (output);
        client->endPort (output.port.exchange (nullptr));
        output.isTaken = false;
    }

    bool send (std::span<const uint8_t> message) override
    {
        return client->isAlive() && !message.empty() && message.size() <= longestMessage
               && output.ring.write (0, message);
    }

private:
    const std::shared_ptr<JackClient> client;
    Output& output;
};

JackClient::JackClient (const JackLibrary& library, int n, std::function<void()> c, RealTimeRequest r)
    : jack (library),
      number (n),
      changed (std::move (c)),
      askForRealTime (std::move (r))
{
}

std::shared_ptr<JackClient> JackClient::connect (const JackLibrary& library, int number,
                                                 std::function<void()> changed, RealTimeRequest realTime)
{
    std::shared_ptr<JackClient> made (
        new JackClient (library, number, std::move (changed), std::move (realTime)));
    return made->start() ? made : nullptr;
}

bool JackClient::start()
{
    client = jack.client_open (clientName, JackNoStartServer, nullptr);
    if (client == nullptr)
        return false;

    jack.set_process_callback (
        client,
        [] (jack_nframes_t frames, void* context)
        { return static_cast<JackClient*> (context)->process (frames); },
        this);
    jack.set_port_registration_callback (
        client,
        [] (jack_port_id_t port, int isThere, void* context)
        {
            auto* me = static_cast<JackClient*> (context);
            if (isThere != 0)
                me->portRegistered (port);
            me->changed();
        },
        this);
    jack.on_shutdown (
        client,
        [] (void* context)
        {
            auto* me = static_cast<JackClient*> (context);
            // Two threads of libjack tell of one end, the second one perhaps when the backend has gone.
            if (!me->hasEnded.exchange (true, std::memory_order_acq_rel))
                me->changed();
        },
        this);
    thread = std::jthread ([this] (const std::stop_token& stop) { deliver (stop); });
    return jack.activate (client) == 0;
}

JackClient::~JackClient()
{
    if (client != nullptr && isAlive())
        jack.client_close (client); // after this none of JACK's threads calls us
    endDelivery();
}

void JackClient::endDelivery()
{
    thread.request_stop();
    arrivals.release();
    thread = {};
}

void JackClient::abandon (std::shared_ptr<JackClient> ended)
{
    static std::mutex lock;
    static auto& all = *new std::vector<std::shared_ptr<JackClient>>; // outlives every thread
    ended->endDelivery();
    const std::scoped_lock sl (lock);
    all.push_back (std::move (ended));
}

void JackClient::portRegistered (jack_port_id_t id)
{
    auto* const port = jack.port_by_id (client, id);
    if (port == nullptr || jack.port_is_mine (client, port) != 0)
        return;
    comings.add (textOf (jack.port_name (port)));
}

juce::String JackClient::handleOf (const juce::String& portName)
{
    return "jack:" + juce::String (number) + "." + juce::String (comings.of (portName)) + ":" + portName;
}

juce::String JackClient::shownName (jack_port_t* port) const
{
    auto name = textOf (jack.port_name (port));
    if (!name.startsWith ("system:"))
        return name;
    // The server's own ports bear the device's name as an alias.
    const auto length = static_cast<size_t> (jack.port_name_size());
    std::vector<char> first (length), second (length);
    char* const aliases[] { first.data(), second.data() };
    for (int i = jack.port_get_aliases (port, aliases); --i >= 0;)
    {
        const auto alias = textOf (aliases[i]);
        const auto device =
            alias.startsWith ("alsa_pcm:")
                ? alias.fromFirstOccurrenceOf (":", false, false).upToFirstOccurrenceOf ("/", false, false)
                : alias;
        if (device.isNotEmpty())
            return device;
    }
    return name;
}

std::vector<MidiPortInfo> JackClient::ports (MidiDirection direction)
{
    std::vector<MidiPortInfo> list;
    const auto** names =
        jack.get_ports (client, nullptr, JACK_DEFAULT_MIDI_TYPE,
                        direction == MidiDirection::input ? JackPortIsOutput : JackPortIsInput);
    for (const auto** name = names; name != nullptr && *name != nullptr; ++name)
        if (auto* port = jack.port_by_name (client, *name);
            port != nullptr && jack.port_is_mine (client, port) == 0)
            list.push_back ({ shownName (port), handleOf (textOf (*name)) });
    if (names != nullptr)
        jack.free (static_cast<void*> (names));
    return list;
}

/** Registers a port of ours and connects it with a device's. @returns null if that port has gone */
jack_port_t* JackClient::makePort (const juce::String& handle, MidiDirection direction)
{
    if (!isAlive())
        return nullptr;
    const auto device =
        handle.fromFirstOccurrenceOf (".", false, false).fromFirstOccurrenceOf (":", false, false);
    const auto isInput = direction == MidiDirection::input;
    const auto ownName = juce::String (isInput ? "in " : "out ") + juce::String (++portsMade);
    auto* port = jack.port_register (client, ownName.toRawUTF8(), JACK_DEFAULT_MIDI_TYPE,
                                     isInput ? JackPortIsInput : JackPortIsOutput, 0);
    if (port == nullptr)
        return nullptr;
    const auto* ours = jack.port_name (port);
    const auto failure = isInput ? jack.connect (client, device.toRawUTF8(), ours)
                                 : jack.connect (client, ours, device.toRawUTF8());
    if (failure == 0)
        return port;
    jack.port_unregister (client, port);
    return nullptr;
}

void JackClient::endPort (jack_port_t* port)
{
    // The process callback may still hold the port for the rest of its cycle; JACK takes the buffer away after that.
    if (port != nullptr && isAlive())
        jack.port_unregister (client, port);
}

std::unique_ptr<OpenMidiInput> JackClient::openInput (const MidiPortInfo& wanted, MidiReceiver& receiver)
{
    const auto place = std::find_if (inputs.begin(), inputs.end(),
                                     [] (const Input& each) { return each.port.load() == nullptr; });
    auto* const port = place != inputs.end() ? makePort (wanted.handle, MidiDirection::input) : nullptr;
    if (port == nullptr)
        return nullptr;
    {
        const std::scoped_lock sl (delivery);
        place->receiver = &receiver;
        place->name = wanted.name;
    }
    place->port.store (port);
    return std::make_unique<OpenInput> (shared_from_this(), *place);
}

std::unique_ptr<OpenMidiOutput> JackClient::openOutput (const MidiPortInfo& wanted)
{
    const auto place = std::find_if (outputs.begin(), outputs.end(),
                                     [] (const Output& each) { return !each.isTaken.load(); });
    auto* const port = place != outputs.end() ? makePort (wanted.handle, MidiDirection::output) : nullptr;
    if (port == nullptr)
        return nullptr;
    place->isTaken = true;
    place->port.store (port);
    return std::make_unique<OpenOutput> (shared_from_this(), *place);
}

int JackClient::process (jack_nframes_t frames)
{
    readInputs (frames);
    writeOutputs (frames);
    return 0;
}

void JackClient::readInputs (jack_nframes_t frames) noexcept
{
    bool hasArrived = false;
    for (size_t i = 0; i < inputs.size(); ++i)
    {
        auto* const port = inputs[i].port.load();
        auto* const buffer = port != nullptr ? jack.port_get_buffer (port, frames) : nullptr;
        const auto count = buffer != nullptr ? jack.midi_get_event_count (buffer) : 0;
        for (uint32_t n = 0; n < count; ++n)
        {
            jack_midi_event_t event {};
            if (jack.midi_event_get (&event, buffer, n) != 0 || event.size == 0
                || event.size > longestMessage)
                continue;
            if (arrived.write (static_cast<uint8_t> (i), { event.buffer, event.size }))
                hasArrived = true;
        }
    }
    if (hasArrived)
        arrivals.release();
}

void JackClient::writeOutputs (jack_nframes_t frames) noexcept
{
    cycles.fetch_add (1, std::memory_order_relaxed);
    for (auto& output : outputs)
    {
        auto* const port = output.port.load();
        if (port == nullptr)
            continue;
        auto* const buffer = jack.port_get_buffer (port, frames);
        if (buffer == nullptr)
            continue;
        jack.midi_clear_buffer (buffer);
        std::array<uint8_t, longestMessage> message;
        for (auto size = output.ring.nextSize(); size > 0; size = output.ring.nextSize())
        {
            // A full buffer keeps the rest for the next cycle; what fits into none is dropped.
            auto* const room = jack.midi_event_reserve (buffer, 0, size);
            if (room == nullptr && jack.midi_get_event_count (buffer) > 0)
                break;
            output.ring.take (room != nullptr ? room : message.data());
        }
    }
}

void JackClient::awaitSent (const Output& output) const
{
    // A buffer that was written in one cycle is read by the device's program in this or the next.
    constexpr uint32_t cyclesToDevice = 3;
    constexpr int mostMs = 200;
    auto emptySince = cycles.load (std::memory_order_relaxed);
    for (int ms = 0; ms < mostMs && isAlive(); ++ms)
    {
        const auto now = cycles.load (std::memory_order_relaxed);
        if (!output.ring.isEmpty())
            emptySince = now;
        else if (now - emptySince >= cyclesToDevice)
            return;
        juce::Thread::sleep (1);
    }
}

void JackClient::deliver (const std::stop_token& stop)
{
    juce::Thread::setCurrentThreadName ("JACK MIDI in");
    if (askForRealTime != nullptr)
        askForRealTime (::gettid());
    std::array<uint8_t, longestMessage> message;
    while (!stop.stop_requested())
    {
        arrivals.acquire();
        for (auto size = arrived.nextSize(); size > 0 && !stop.stop_requested(); size = arrived.nextSize())
        {
            const auto place = arrived.take (message.data());
            const std::scoped_lock sl (delivery);
            if (auto& input = inputs[place]; input.receiver != nullptr)
                input.receiver->midiArrived (input.name, { message.data(), size });
        }
    }
}
