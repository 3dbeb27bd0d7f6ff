#pragma once

#include "midi/ports/MidiPortSet.h"
#include "support/Relaxed.h"

/** The one gate for what goes out to the engine's ports. It remembers the last value of every lamp and sends none twice, so that
    feedback may state the whole surface again and again; a port that comes back, or has lost something, gets all of it. Any
    thread but the audio thread. */
class MidiSender
{
public:
    explicit MidiSender (MidiPortSet&);

    /** Sends a message of three bytes, if its value differs from the last one. Without an open port it is remembered.
        @param status   limited to 128 to 255
        @param data     a lamp, limited to 0 to 127
        @param value    limited to 0 to 127
        @param force    sends it in any case */
    void sendMidiShort (int status, int data, int value, bool force = false);

    /** Sends bytes as they are to every open port. */
    void sendMidiSysEx (std::span<const uint8_t>);

    /** Forgets what was sent, so that everything goes out when it is next stated. */
    void clearCache();

    /** Brings the ports up to date that have come or have lost something. For OutMidiThread. */
    void repaintOwing();

    /** Milliseconds to wait after each message that was sent, for devices that lose them at full speed. */
    Relaxed<int> pauseMs { 0 };

    /** Hears each message that goes out, whether a port is open or not. Set before the threads start. */
    std::function<void (std::span<const uint8_t>)> onSend;

private:
    static constexpr uint8_t unsent = 255;

    Relaxed<uint8_t>& cell (int status, int data)
    {
        return midiOutCache[static_cast<size_t> (status * 128 + data)];
    }

    void send (std::span<const uint8_t>);

    MidiPortSet& ports;
    std::array<Relaxed<uint8_t>, 256 * 128> midiOutCache {};
};
