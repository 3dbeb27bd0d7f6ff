#include "midi/control/MidiSender.h"

#include <algorithm>

MidiSender::MidiSender (MidiPortSet& p) : ports (p)
{
    clearCache();
}

void MidiSender::clearCache()
{
    for (auto& each : midiOutCache)
        each = unsent;
}

void MidiSender::send (std::span<const uint8_t> message)
{
    ports.send (message);
    if (onSend != nullptr)
        onSend (message);
}

void MidiSender::sendMidiShort (int status, int data, int value, bool force)
{
    status = std::clamp (status, 128, 255);
    data = std::clamp (data, 0, 127);
    const auto last = static_cast<uint8_t> (std::clamp (value, 0, 127));
    auto& cached = cell (status, data);
    if (cached == last && !force)
        return;
    cached = last;
    const std::array message { static_cast<uint8_t> (status), static_cast<uint8_t> (data), last };
    send (message);
    if (const int pause = pauseMs; pause > 0)
        juce::Thread::sleep (pause);
}

void MidiSender::sendMidiSysEx (std::span<const uint8_t> bytes)
{
    if (!bytes.empty())
        send (bytes);
}

void MidiSender::repaintOwing()
{
    if (!ports.owesRepaint())
        return;
    ports.repaintOwing (
        [this] (OpenMidiOutput& output)
        {
            for (int status = 128; status < 256; ++status)
                for (int data = 0; data < 128; ++data)
                    if (const uint8_t value = cell (status, data); value != unsent)
                        if (const std::array message { static_cast<uint8_t> (status),
                                                       static_cast<uint8_t> (data), value };
                            !output.send (message))
                            return false;
            return true;
        });
}
