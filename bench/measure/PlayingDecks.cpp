#include "measure/PlayingDecks.h"

#include "engine/CommandTable.h"
#include "measure/MusicLike.h"
#include "measure/Timing.h"

#include <sched.h>

namespace
{
constexpr double trackSeconds = 120.0;
}

PlayingDecks::PlayingDecks (BenchEngine& engine)
{
    const auto music = MusicLike::make (trackSeconds, rate);
    engine->settings.editor[EditorPreference::fourDeckMode] = 1;
    const auto play = CommandTable::numberOf ("PLAY_PAUSE_A");
    for (int deck = 0; deck < deckCount; ++deck)
    {
        engine.putTrack (deck, music, rate);
        engine->setParameter (play + deck, 1.0f);
    }
    thread = std::thread ([this, &engine] { run (engine); });
}

PlayingDecks::~PlayingDecks()
{
    stopping = true;
    thread.join();
}

PlayingDecks::Count PlayingDecks::take()
{
    return { blocks.exchange (0), late.exchange (0), static_cast<double> (longest.exchange (0)) / 1e6 };
}

void PlayingDecks::run (BenchEngine& engine)
{
    // Without the right to it the figures have the scheduler's lateness in them.
    const sched_param priority { .sched_priority = 60 };
    juce::ignoreUnused (::sched_setscheduler (0, SCHED_FIFO, &priority));
    const auto period = static_cast<int64_t> (blockFrames / rate * 1e9);
    auto due = Timing::nanoseconds();
    while (!stopping)
    {
        engine.processBlock();
        const auto took = Timing::nanoseconds() - due;
        ++blocks;
        if (took > longest)
            longest = took;
        if (took > period)
        {
            ++late;
            due += took; // a device goes on from there
        }
        else
            due += period;
        std::this_thread::sleep_for (std::chrono::nanoseconds (due - Timing::nanoseconds()));
    }
}
