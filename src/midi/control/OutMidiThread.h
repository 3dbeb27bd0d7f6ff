#pragma once

#include <condition_variable>
#include <mutex>
#include <stop_token>
#include <thread>

class MidiControl;

/** Has the lamps stated every 50 ms. */
class OutMidiThread
{
public:
    explicit OutMidiThread (MidiControl&);

    void start();
    void stop() { thread = {}; }

private:
    void run (const std::stop_token&);

    MidiControl& control;
    std::mutex lock;
    std::condition_variable_any wake;
    std::jthread thread;
};
