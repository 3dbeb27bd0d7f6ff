#pragma once

#include "midi/control/MidiMessageQueue.h"
#include "midi/ports/MidiPort.h"

#include <thread>

class MidiControl;

/** Carries messages out, one after the other. A message that comes alone is carried out at once; a flood is held to a bounded
    number in a millisecond, so that it leaves the machine to the audio. */
class InMidiThread
{
public:
    InMidiThread (MidiControl&, MidiMessageQueue&, RealTimeRequest);
    ~InMidiThread() { stop(); }

    void start();

    /** Ends the thread, also one that waits for a message. */
    void stop();

private:
    void run();

    MidiControl& control;
    MidiMessageQueue& queue;
    const RealTimeRequest askForRealTime;
    std::thread thread;
};
