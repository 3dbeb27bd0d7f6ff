#pragma once

#include "midi/ports/PortComings.h"

#include <atomic>
#include <functional>
#include <thread>

/** Listens to the ALSA sequencer's own port "Announce", which tells of every port that comes or goes. */
class SequencerAnnouncements
{
public:
    /** A port of the sequencer as its announcements name it. */
    struct Address
    {
        int client = 0, port = 0;

        /** The text by which JUCE knows the port, such as "20-0". */
        juce::String text() const { return juce::String (client) + "-" + juce::String (port); }
    };

    /** @param changed   called on the thread of the announcements after a port has come or gone */
    explicit SequencerAnnouncements (std::function<void()> c) : changed (std::move (c)) {}

    /** Begins to listen. Without a sequencer nothing is ever heard. */
    void start();

    /** The comings of each port since start(). */
    const PortComings& comings() const noexcept { return ports; }

    /** Acts on one announcement. @param type   an snd_seq_event_type; others than of ports do nothing */
    void take (int type, Address);

private:
    void run (const std::stop_token&);

    const std::function<void()> changed;
    PortComings ports;
    std::jthread thread;
};
