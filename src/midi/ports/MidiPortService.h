#pragma once

#include "midi/ports/MidiPort.h"
#include "midi/ports/PortPlaces.h"

#include <array>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <stop_token>
#include <thread>

/** Opens and closes ports as they come and go. */
class MidiPortListener
{
public:
    virtual ~MidiPortListener() = default;

    /** After each look, on the service's thread: a port that could not be opened is tried again. */
    virtual void portsChanged() = 0;
};

/** The ports of all MIDI systems in one list, kept true by a thread that looks when a system tells of a change, and once a
    second anyhow for those that tell nothing. All opening and closing is done on that thread: a system that hangs
    holds nobody else up. It begins with watch(); before that there are no ports. */
class MidiPortService
{
public:
    using Backends = std::vector<std::unique_ptr<MidiBackend>>;

    struct Pace
    {
        std::chrono::milliseconds look { 1000 }; ///< between two looks without a reason
        std::chrono::milliseconds quiet {
            300
        }; ///< without a further change before a look: devices come port by port
    };

    /** @param backends   the sequencer first: a port that two systems have is the first one's */
    explicit MidiPortService (Backends backends) : MidiPortService (std::move (backends), Pace {}) {}
    MidiPortService (Backends backends, Pace);
    ~MidiPortService();

    /** The sequencer and JACK. @param realTime   asks for real time for their threads; may be empty */
    static Backends systemBackends (const RealTimeRequest& realTime = {});

    /** Begins to look for ports, or ends it: then there are none, and all are closed. Any thread. */
    void watch (bool on = true);
    bool isWatching() const;

    bool hasBackends() const noexcept { return !backends.empty(); }

    /** The ports that were there at the last look. Any thread. */
    std::vector<MidiPortInfo> ports (MidiDirection) const;

    /** Rises with each change of the ports. Any thread. */
    uint32_t generation() const;

    /** Looks soon, since somebody wants other ports open. Any thread. */
    void reconsider();

    /** Looks at once, and waits until the listeners have been told. Any thread but the service's own. */
    void lookNow();

    /** Waits until all wanted ports that are there have been opened; returns at once while nothing is watched. Any thread
        that may block but the service's own. */
    void waitForPorts();

    /** @returns null if the port is gone. The service's thread */
    std::unique_ptr<OpenMidiInput> openInput (const MidiPortInfo&, MidiReceiver&);
    std::unique_ptr<OpenMidiOutput> openOutput (const MidiPortInfo&);

    /** After remove() a listener hears nothing more. Any thread but the service's own. */
    void add (MidiPortListener&);
    void remove (MidiPortListener&);

private:
    struct Found
    {
        MidiPortInfo port;
        MidiBackend* backend = nullptr;
    };

    void run (const std::stop_token&);
    void awaitReason (const std::stop_token&);
    void look();
    void awaitLook (std::unique_lock<std::mutex>&);
    MidiBackend* backendOf (MidiDirection, const MidiPortInfo&) const;

    const Backends backends;
    const Pace pace;

    mutable std::mutex lock;
    std::condition_variable_any wake, told;
    std::array<std::vector<Found>, 2> found; ///< by direction
    std::array<PortPlaces, 2> places;        ///< the thread's own
    uint32_t changes = 0;
    uint64_t looksWanted = 1, looksDone = 0;
    bool mayHaveChanged = false, isReconsidering = false, isOn = false;

    std::mutex listenersLock; ///< held while they are told
    std::vector<MidiPortListener*> listeners;
    std::jthread thread; ///< last: it uses all of the above
};
