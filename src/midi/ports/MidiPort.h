#pragma once

#include <juce_core/juce_core.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <sys/types.h>
#include <vector>

/** Asks the system to run a thread that messages pass in real time, so that busy programs don't delay them. Given by a shell
    that may ask, on any thread that may wait; empty elsewhere. */
using RealTimeRequest = std::function<void (pid_t thread)>;

enum class MidiDirection
{
    input, ///< from a device to us
    output ///< from us to a device
};

/** A port of the system. */
struct MidiPortInfo
{
    juce::String name;   ///< compared exactly; several ports may bear one
    juce::String handle; ///< its back end opens by it; a port that was unplugged comes back with another one
    int place = 0;       ///< among the ports of one name and direction, from 0; kept over an unplugging

    bool operator== (const MidiPortInfo&) const = default;
};

/** Hears what open inputs receive. */
class MidiReceiver
{
public:
    virtual ~MidiReceiver() = default;

    /** One whole message. On a thread of the port's back end, which may be made to wait.
        @param port   the name of the source */
    virtual void midiArrived (const juce::String& port, std::span<const uint8_t> message) = 0;
};

/** An input that is open until it is destroyed; no message comes after that. The destructor waits for a message that is
    being delivered. */
class OpenMidiInput
{
public:
    virtual ~OpenMidiInput() = default;
};

/** An output that is open until it is destroyed. */
class OpenMidiOutput
{
public:
    virtual ~OpenMidiOutput() = default;

    /** Sends one whole message, and waits for no device. One thread at a time.
        @returns false if it is lost: the port is gone, or takes nothing at the moment */
    virtual bool send (std::span<const uint8_t> message) = 0;
};

/** A MIDI system: the ALSA sequencer, JACK, or a test's. Thread safe, but for the making and the end; each call may wait for the
    system, so that none is for a window's thread. */
class MidiBackend
{
public:
    virtual ~MidiBackend() = default;

    /** The ports that are there now, in the system's order. Their places are not filled in. */
    virtual std::vector<MidiPortInfo> ports (MidiDirection) = 0;

    /** @returns null if the port can't be opened */
    virtual std::unique_ptr<OpenMidiInput> openInput (const MidiPortInfo&, MidiReceiver&) = 0;
    virtual std::unique_ptr<OpenMidiOutput> openOutput (const MidiPortInfo&) = 0;

    /** @param changed   called on any thread when ports may have come or gone. A system that tells nothing never calls it */
    virtual void watch (std::function<void()> changed) = 0;
};
