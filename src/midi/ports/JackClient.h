#pragma once

#include "midi/ports/JackLibrary.h"
#include "midi/ports/MessageRing.h"
#include "midi/ports/MidiPort.h"
#include "midi/ports/PortComings.h"

#include <array>
#include <atomic>
#include <mutex>
#include <semaphore>
#include <thread>

/** One connection with JACK's server, from its making until the server is gone. JACK's own thread moves messages between the
    ports' buffers and rings and never waits; a thread of ours hands what came in to the receivers. */
class JackClient : public std::enable_shared_from_this<JackClient>
{
public:
    static constexpr size_t mostPorts = 64; ///< open ones, of each direction

    /** @param number    tells the handles of this connection from those of earlier ones
        @param changed   called when ports come or go, or the server ends
        @param realTime  asks for real time for the thread that hands messages over; may be empty
        @returns null if no server answers */
    static std::shared_ptr<JackClient> connect (const JackLibrary&, int number, std::function<void()> changed,
                                                RealTimeRequest realTime);
    ~JackClient();

    /** False once the server has gone. Then libjack closes the client by itself when anybody in the process opens the next
        one, JUCE's audio device too; to close it here would free it twice. */
    bool isAlive() const noexcept { return !hasEnded.load (std::memory_order_acquire); }

    /** Keeps a connection whose server has gone until the end of the process: libjack's threads may still call it. */
    static void abandon (std::shared_ptr<JackClient>);

    std::vector<MidiPortInfo> ports (MidiDirection);
    std::unique_ptr<OpenMidiInput> openInput (const MidiPortInfo&, MidiReceiver&);
    std::unique_ptr<OpenMidiOutput> openOutput (const MidiPortInfo&);

private:
    struct Input
    {
        std::atomic<jack_port_t*> port { nullptr }; ///< null while the place is free
        MidiReceiver* receiver = nullptr;           ///< under `delivery`
        juce::String name;                          ///< likewise
    };

    struct Output
    {
        std::atomic<jack_port_t*> port { nullptr };
        std::atomic<bool> isTaken { false };
        MessageRing ring { 1 << 15 };
    };

    class OpenInput;
    class OpenOutput;

    JackClient (const JackLibrary&, int number, std::function<void()> changed, RealTimeRequest);
    bool start();
    int process (jack_nframes_t);
    void readInputs (jack_nframes_t) noexcept;
    void writeOutputs (jack_nframes_t) noexcept;
    void deliver (const std::stop_token&);
    void endDelivery();

    /** Waits until the last messages of an output have left us, for as long as a server that works may take. */
    void awaitSent (const Output&) const;
    void portRegistered (jack_port_id_t);
    juce::String handleOf (const juce::String& portName);
    juce::String shownName (jack_port_t*) const;
    jack_port_t* makePort (const juce::String& name, MidiDirection);
    void endPort (jack_port_t*);

    const JackLibrary& jack;
    const int number;
    const std::function<void()> changed;
    const RealTimeRequest askForRealTime;
    jack_client_t* client = nullptr;
    std::atomic<bool> hasEnded { false };
    std::atomic<int> portsMade { 0 };
    std::atomic<uint32_t> cycles { 0 }; ///< of JACK's process callback

    PortComings comings; ///< by name
    std::array<Input, mostPorts> inputs;
    std::array<Output, mostPorts> outputs;
    std::mutex delivery;             ///< held while a receiver is called
    MessageRing arrived { 1 << 20 }; ///< 150,000 short messages: one that finds it full is lost
    std::counting_semaphore<> arrivals { 0 };
    std::jthread thread;
};
