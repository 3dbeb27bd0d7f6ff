#include "midi/ports/JackBackend.h"

#include <utility>

JackBackend::~JackBackend()
{
    watch ({});
    const std::scoped_lock sl (lock);
    dropEnded();
    client.reset();
}

void JackBackend::dropEnded()
{
    if (client != nullptr && !client->isAlive())
        JackClient::abandon (std::exchange (client, nullptr));
}

void JackBackend::watch (std::function<void()> changed)
{
    const std::scoped_lock sl (watcherLock);
    watcher = std::move (changed);
}

void JackBackend::tellOfChange()
{
    const std::scoped_lock sl (watcherLock);
    if (watcher != nullptr)
        watcher();
}

std::shared_ptr<JackClient> JackBackend::connected()
{
    const std::scoped_lock sl (lock);
    dropEnded();
    if (client == nullptr && library)
    {
        // Without a server each try takes 4 ms, and would print several lines.
        library.set_error_function ([] (const char*) {});
        library.set_info_function ([] (const char*) {});
        client = JackClient::connect (
            library, ++connections, [this] { tellOfChange(); }, askForRealTime);
    }
    return client;
}

std::vector<MidiPortInfo> JackBackend::ports (MidiDirection direction)
{
    const auto now = connected();
    return now != nullptr ? now->ports (direction) : std::vector<MidiPortInfo> {};
}

std::unique_ptr<OpenMidiInput> JackBackend::openInput (const MidiPortInfo& port, MidiReceiver& receiver)
{
    const auto now = connected();
    return now != nullptr ? now->openInput (port, receiver) : nullptr;
}

std::unique_ptr<OpenMidiOutput> JackBackend::openOutput (const MidiPortInfo& port)
{
    const auto now = connected();
    return now != nullptr ? now->openOutput (port) : nullptr;
}
