#pragma once

#include "midi/ports/JackLibrary.h"
#include "midi/system/MidiSystem.h"

#include <deque>
#include <mutex>

/** A device on a real JACK server: sends messages from one port and keeps what arrives at another. Lives as long as the
    process, so that the server's list of names does not fill with those of one test after another. */
class JackDevice
{
public:
    using Bytes = std::vector<uint8_t>;

    /** @returns null unless PX_OVER_JACK asks for JACK. Fails the test if no server answers */
    static JackDevice* wanted();

    static constexpr auto inputName = "Surface:out",
                          outputName = "Surface:in"; ///< as the engine sees the ports

    /** The way from the device into an engine, with the same ports, queue and thread as in the application; there a second
        thread states the lamps, which here the test does. */
    class Plugged : private MidiReceiver
    {
    public:
        Plugged (JackDevice&, MidiSystem&);
        ~Plugged() override;

        /** Sends a message and waits until the engine has carried it out. */
        void play (int status, int data, int value);

        /** Waits until all that the engine has sent has arrived. @returns it */
        std::vector<Bytes> takeSent() { return device.takeSent (midi.control); }

    private:
        void midiArrived (const juce::String& port, std::span<const uint8_t> message) override;

        JackDevice& device;
        MidiSystem& midi;
        MidiMessageQueue queue;
        MidiPortSet ports { midi.ports, *this };
        InMidiThread thread { midi.control, queue, {} };
    };

private:
    JackDevice();
    std::vector<Bytes> takeSent (MidiControl&);
    int process (jack_nframes_t);
    bool hasArrived (const Bytes&);

    const JackLibrary jack;
    jack_client_t* client = nullptr;
    jack_port_t *output = nullptr, *input = nullptr;
    std::mutex lock;
    std::deque<Bytes> queue;
    std::vector<Bytes> arrived;
    int marks = 0; ///< so far, of those that follow what is waited for
};
