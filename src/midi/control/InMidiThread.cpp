#include "midi/control/InMidiThread.h"

#include "midi/control/MessageCoalescing.h"
#include "midi/control/MidiControl.h"

#include <chrono>
#include <unistd.h>

namespace
{
using Clock = std::chrono::steady_clock;

constexpr int mostInMillisecond = 64;
constexpr std::chrono::milliseconds span { 1 };

/** Holds the thread to its bound. */
class Bound
{
public:
    void count()
    {
        if (++done < mostInMillisecond)
            return;
        if (const auto now = Clock::now(); now < begin + span)
            std::this_thread::sleep_until (begin + span);
        begin = Clock::now();
        done = 0;
    }

    /** Called after a wait for messages. */
    void restartIfOver()
    {
        if (const auto now = Clock::now(); now >= begin + span)
        {
            begin = now;
            done = 0;
        }
    }

private:
    Clock::time_point begin {};
    int done = 0;
};
}

InMidiThread::InMidiThread (MidiControl& c, MidiMessageQueue& q, RealTimeRequest r)
    : control (c),
      queue (q),
      askForRealTime (std::move (r))
{
}

void InMidiThread::start()
{
    queue.open();
    thread = std::thread ([this] { run(); });
}

void InMidiThread::stop()
{
    queue.close();
    if (thread.joinable())
        thread.join();
}

void InMidiThread::run()
{
    juce::Thread::setCurrentThreadName ("InMidiThread");
    if (askForRealTime != nullptr)
        askForRealTime (::gettid());
    std::vector<uint32_t> words;
    words.reserve (512);
    Bound bound;
    while (queue.takeAll (words))
    {
        bound.restartIfOver();
        if (words.size() > 1 && control.mayCoalesce())
            coalesce (words, control.dispatcher);
        for (const auto word : words)
        {
            control.handle (MidiWord::status (word), MidiWord::data (word), MidiWord::value (word));
            bound.count();
        }
    }
}
