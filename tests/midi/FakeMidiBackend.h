#pragma once

#include "midi/ports/MidiPort.h"

#include <algorithm>
#include <map>
#include <mutex>

/** A MIDI system whose cables a test plugs and pulls, whose devices it plays, and whose lamps it reads. */
class FakeMidiBackend : public MidiBackend
{
public:
    using Bytes = std::vector<uint8_t>;

    /** Plugs a device in that has one port of each direction. @returns the handle of this plugging */
    juce::String plug (const juce::String& name)
    {
        const std::scoped_lock sl (lock);
        there.push_back ({ name, "fake:" + juce::String (++plugged) });
        return there.back().handle;
    }

    void pull (const juce::String& handle)
    {
        const std::scoped_lock sl (lock);
        std::erase_if (there, [&] (const auto& port) { return port.handle == handle; });
    }

    /** Has the open inputs of a device receive a message. @returns how many there were */
    int play (const juce::String& handle, const Bytes& message)
    {
        const std::scoped_lock sl (delivery);
        int heard = 0;
        for (auto* input : inputs)
            if (input->port.handle == handle)
            {
                input->receiver.midiArrived (input->port.name, message);
                ++heard;
            }
        return heard;
    }

    /** Takes what a device has been sent since the last time. */
    std::vector<Bytes> takeSent (const juce::String& handle)
    {
        const std::scoped_lock sl (lock);
        return std::exchange (sent[handle], {});
    }

    /** From now on devices take so many messages before they lose all further ones. */
    void limitOutputs (int messages)
    {
        const std::scoped_lock sl (lock);
        room = messages;
    }

    std::vector<MidiPortInfo> ports (MidiDirection) override
    {
        const std::scoped_lock sl (lock);
        return there;
    }

    std::unique_ptr<OpenMidiInput> openInput (const MidiPortInfo& port, MidiReceiver& receiver) override
    {
        return isThere (port) ? std::make_unique<Input> (*this, port, receiver) : nullptr;
    }

    std::unique_ptr<OpenMidiOutput> openOutput (const MidiPortInfo& port) override
    {
        return isThere (port) ? std::make_unique<Output> (*this, port.handle) : nullptr;
    }

    void watch (std::function<void()>) override {}

private:
    struct Input : OpenMidiInput
    {
        Input (FakeMidiBackend& b, MidiPortInfo p, MidiReceiver& r)
            : backend (b),
              port (std::move (p)),
              receiver (r)
        {
            const std::scoped_lock sl (backend.delivery);
            backend.inputs.push_back (this);
        }

        ~Input() override
        {
            const std::scoped_lock sl (backend.delivery);
            std::erase (backend.inputs, this);
        }

        FakeMidiBackend& backend;
        const MidiPortInfo port;
        MidiReceiver& receiver;
    };

    struct Output : OpenMidiOutput
    {
        Output (FakeMidiBackend& b, juce::String h) : backend (b), handle (std::move (h)) {}

        bool send (std::span<const uint8_t> message) override
        {
            const std::scoped_lock sl (backend.lock);
            if (backend.room == 0)
                return false;
            --backend.room;
            backend.sent[handle].emplace_back (message.begin(), message.end());
            return true;
        }

        FakeMidiBackend& backend;
        const juce::String handle;
    };

    bool isThere (const MidiPortInfo& port)
    {
        const std::scoped_lock sl (lock);
        return std::any_of (there.begin(), there.end(),
                            [&port] (const auto& each) { return each.handle == port.handle; });
    }

    std::mutex lock, delivery;
    std::vector<MidiPortInfo> there;
    std::vector<Input*> inputs;
    std::map<juce::String, std::vector<Bytes>> sent;
    int plugged = 0, room = -1;
};
