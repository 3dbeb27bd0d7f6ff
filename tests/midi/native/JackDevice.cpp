#include "JackDevice.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <thread>

namespace
{
constexpr int markStatus = 0xaf, markData = 127; ///< a message that no controller sends
constexpr uint8_t exclusive = 0xf0, privateUse = 0x7d, endOfExclusive = 0xf7;

/** Waits for another thread or program; one that never comes ends the run. */
template <typename Condition>
void await (Condition condition)
{
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds (60);
    while (!condition())
    {
        if (std::chrono::steady_clock::now() > end)
        {
            std::fflush (stdout);
            std::fprintf (stderr, "FAILED: JACK does not answer\n");
            std::_Exit (1);
        }
        std::this_thread::sleep_for (std::chrono::microseconds (100));
    }
}
}

JackDevice* JackDevice::wanted()
{
    static auto* const device = juce::SystemStats::getEnvironmentVariable ("PX_OVER_JACK", {}).isNotEmpty()
                                    ? new JackDevice
                                    : nullptr;
    return device;
}

JackDevice::JackDevice()
{
    client = jack ? jack.client_open ("Surface", JackNoStartServer, nullptr) : nullptr;
    if (client == nullptr)
    {
        std::fprintf (stderr, "FAILED: there is no JACK server\n");
        std::_Exit (1);
    }
    output = jack.port_register (client, "out", JACK_DEFAULT_MIDI_TYPE, JackPortIsOutput, 0);
    input = jack.port_register (client, "in", JACK_DEFAULT_MIDI_TYPE, JackPortIsInput, 0);
    jack.set_process_callback (
        client,
        [] (jack_nframes_t frames, void* me) { return static_cast<JackDevice*> (me)->process (frames); },
        this);
    jack.activate (client);
}

int JackDevice::process (jack_nframes_t frames)
{
    const std::scoped_lock sl (lock);
    auto* const out = jack.port_get_buffer (output, frames);
    jack.midi_clear_buffer (out);
    while (!queue.empty())
    {
        auto* const place = jack.midi_event_reserve (out, 0, queue.front().size());
        if (place == nullptr)
            break; // the rest goes with the next cycle
        std::copy (queue.front().begin(), queue.front().end(), place);
        queue.pop_front();
    }
    auto* const in = jack.port_get_buffer (input, frames);
    jack_midi_event_t event {};
    for (uint32_t i = 0; i < jack.midi_get_event_count (in); ++i)
        if (jack.midi_event_get (&event, in, i) == 0)
            arrived.emplace_back (event.buffer, event.buffer + event.size);
    return 0;
}

JackDevice::Plugged::Plugged (JackDevice& d, MidiSystem& m) : device (d), midi (m)
{
    thread.start();
    ports.setInputEnabled (inputName, true);
    midi.control.ports.setOutputEnabled (outputName, true);
    await (
        [&]
        {
            midi.ports.lookNow();
            return ports.isInputEnabled (inputName) && midi.control.ports.isOutputEnabled (outputName);
        });
}

JackDevice::Plugged::~Plugged()
{
    queue.close(); // a port that waits for room would hold up its own closing
    ports.close();
    thread.stop();
}

void JackDevice::Plugged::midiArrived (const juce::String&, std::span<const uint8_t> message)
{
    if (message.size() == 3)
        queue.push (MidiWord::pack (message[0], message[1], message[2]));
}

void JackDevice::Plugged::play (int status, int data, int value)
{
    device.marks = (device.marks + 1) % 128;
    {
        const std::scoped_lock sl (device.lock);
        for (const auto& [s, d, v] :
             { std::array { status, data, value }, { markStatus, markData, device.marks } })
            device.queue.push_back (
                { static_cast<uint8_t> (s), static_cast<uint8_t> (d), static_cast<uint8_t> (v) });
    }
    await (
        [&]
        {
            const auto seen = midi.control.lastSeen();
            return seen.status == markStatus && seen.value == device.marks;
        });
}

bool JackDevice::hasArrived (const Bytes& message)
{
    const std::scoped_lock sl (lock);
    return !arrived.empty() && arrived.back() == message;
}

std::vector<JackDevice::Bytes> JackDevice::takeSent (MidiControl& control)
{
    marks = (marks + 1) % 128;
    const Bytes mark { exclusive, privateUse, static_cast<uint8_t> (marks), endOfExclusive };
    control.sender.sendMidiSysEx (mark);
    await ([&] { return hasArrived (mark); });
    const std::scoped_lock sl (lock);
    arrived.pop_back();
    return std::exchange (arrived, {});
}
