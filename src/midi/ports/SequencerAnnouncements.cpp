#include "midi/ports/SequencerAnnouncements.h"

#include <alsa/asoundlib.h>

#include <memory>
#include <poll.h>
#include <vector>

namespace
{
constexpr int endCheckMs = 200;

struct CloseSequencer
{
    void operator() (snd_seq_t* sequencer) const { snd_seq_close (sequencer); }
};

using Sequencer = std::unique_ptr<snd_seq_t, CloseSequencer>;

/** A client of ours whose one port hears the announcements. @returns null if there is no sequencer */
Sequencer openListener()
{
    snd_seq_t* opened = nullptr;
    if (snd_seq_open (&opened, "default", SND_SEQ_OPEN_INPUT, SND_SEQ_NONBLOCK) < 0)
        return nullptr;
    Sequencer sequencer (opened);
    snd_seq_set_client_name (opened, "Platterdex ports");
    const auto port = snd_seq_create_simple_port (opened, "announcements",
                                                  SND_SEQ_PORT_CAP_WRITE | SND_SEQ_PORT_CAP_NO_EXPORT,
                                                  SND_SEQ_PORT_TYPE_APPLICATION);
    if (port < 0
        || snd_seq_connect_from (opened, port, SND_SEQ_CLIENT_SYSTEM, SND_SEQ_PORT_SYSTEM_ANNOUNCE) < 0)
        return nullptr;
    return sequencer;
}
}

void SequencerAnnouncements::start()
{
    thread = std::jthread ([this] (const std::stop_token& stop) { run (stop); });
}

void SequencerAnnouncements::take (int type, Address address)
{
    // Clients come and go without ports too, above all JUCE's own whenever it is asked for the list.
    if (type != SND_SEQ_EVENT_PORT_START && type != SND_SEQ_EVENT_PORT_EXIT)
        return;
    if (type == SND_SEQ_EVENT_PORT_START)
        ports.add (address.text());
    changed();
}

void SequencerAnnouncements::run (const std::stop_token& stop)
{
    juce::Thread::setCurrentThreadName ("MIDI announce");
    const auto sequencer = openListener();
    if (sequencer == nullptr)
        return; // the list is looked at once a second all the same
    std::vector<pollfd> descriptors (
        static_cast<size_t> (std::max (0, snd_seq_poll_descriptors_count (sequencer.get(), POLLIN))));
    snd_seq_poll_descriptors (sequencer.get(), descriptors.data(), static_cast<unsigned> (descriptors.size()),
                              POLLIN);
    while (!stop.stop_requested())
    {
        if (poll (descriptors.data(), static_cast<nfds_t> (descriptors.size()), endCheckMs) <= 0)
            continue;
        snd_seq_event_t* event = nullptr;
        for (auto left = 1; left > 0 && snd_seq_event_input (sequencer.get(), &event) >= 0;
             left = snd_seq_event_input_pending (sequencer.get(), 0))
            if (event != nullptr)
                take (event->type, { event->data.addr.client, event->data.addr.port });
    }
}
