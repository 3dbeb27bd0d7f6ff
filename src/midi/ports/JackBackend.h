#pragma once

#include "midi/ports/JackClient.h"

/** The MIDI ports of JACK, whose server may come and go: it is looked for each time the ports are asked for. */
class JackBackend : public MidiBackend
{
public:
    /** @param r   asks for real time for the thread that hands messages over; may be empty */
    explicit JackBackend (RealTimeRequest r) : askForRealTime (std::move (r)) {}
    ~JackBackend() override;

    std::vector<MidiPortInfo> ports (MidiDirection) override;
    std::unique_ptr<OpenMidiInput> openInput (const MidiPortInfo&, MidiReceiver&) override;
    std::unique_ptr<OpenMidiOutput> openOutput (const MidiPortInfo&) override;
    void watch (std::function<void()> changed) override;

private:
    std::shared_ptr<JackClient> connected();
    void dropEnded();
    void tellOfChange();

    const RealTimeRequest askForRealTime;
    JackLibrary library;
    std::mutex lock; ///< of the connection
    std::shared_ptr<JackClient> client;
    int connections = 0;
    std::mutex watcherLock; ///< taken by JACK's threads
    std::function<void()> watcher;
};
