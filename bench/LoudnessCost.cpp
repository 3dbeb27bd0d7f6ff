#include "analysis/loudness/Autogain.h"

#include "measure/Machine.h"
#include "measure/MusicLike.h"
#include "measure/Timing.h"

#include <cstdio>

// bench_loudness: how many times faster than it plays a track's loudness is measured, on one core and without pauses.

int main()
{
    Machine::print();
    std::printf ("%10s %14s\n", "rate", "x real time");
    constexpr double seconds = 120.0;
    for (const auto rate : { 44100.0, 48000.0, 96000.0 })
    {
        const auto frames = static_cast<int> (seconds * rate);
        const auto music = MusicLike::make (seconds, rate);
        Pacing pacing (Pacing::Mode::offline);
        const Relaxed<int32_t> cancel { 0 };
        Timing::Durations durations (5);
        for (int i = 0; i < 5; ++i)
        {
            const auto before = Timing::processorNanoseconds (Timing::Threads::own);
            if (!Autogain::measure (music.getReadPointer (0), music.getReadPointer (1), frames, rate, pacing,
                                    cancel))
                return 1;
            durations.add (Timing::processorNanoseconds (Timing::Threads::own) - before);
        }
        std::printf ("%10.0f %14.0f\n", rate, seconds * 1e9 / durations.quantile (0.5));
    }
}
