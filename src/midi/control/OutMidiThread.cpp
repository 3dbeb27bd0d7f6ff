#include "midi/control/OutMidiThread.h"

#include "midi/control/MidiControl.h"

#include <chrono>

OutMidiThread::OutMidiThread (MidiControl& c) : control (c) {}

void OutMidiThread::start()
{
    thread = std::jthread ([this] (const std::stop_token& stop) { run (stop); });
}

void OutMidiThread::run (const std::stop_token& stop)
{
    juce::Thread::setCurrentThreadName ("OutMidiThread");
    while (!stop.stop_requested())
    {
        control.tick();
        std::unique_lock sl (lock);
        wake.wait_for (sl, stop, std::chrono::milliseconds (MidiControl::tickMs), [] { return false; });
    }
}
