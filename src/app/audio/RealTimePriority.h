#pragma once

#include <juce_core/juce_core.h>

#include <sys/types.h>

/** The kernel's scheduling of the audio thread: real time where the system grants it, so that other programs don't make
    blocks late. Asked for from another thread, as the asking may wait for a D-Bus service. */
namespace RealTimePriority
{
/** Asks for SCHED_FIFO for one thread of this process: by the user's limits (RLIMIT_RTPRIO), else by RealtimeKit. A
    thread that has real time already, as JACK's, is left alone.
    @param priority   1 to 99; less if less is granted
    @returns true if the thread runs in real time now. Any thread that may wait. */
bool request (pid_t thread, int priority);

/** The thread's scheduling as the kernel tells it: "real time, priority 60" or "ordinary". Any thread. */
juce::String describe (pid_t thread);
}
