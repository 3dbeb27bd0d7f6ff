#include "measure/Machine.h"
#include "measure/Timing.h"

#include "instruments/envelope/Envelope.h"

#include <algorithm>
#include <cstdio>

// bench_envelope: what one level of a curve of 30 points costs, in nanoseconds, for times that rise as a pad's do, with
// the segment kept between calls and looked up at each.

namespace
{
constexpr int points = 30, evaluations = 88'200, rounds = 60; // a window of four beats at 120 BPM

Envelope curve (std::optional<SegmentShape> shape)
{
    std::vector<EnvelopePoint> all (points);
    for (int i = 0; i < points; ++i)
    {
        auto& p = all[static_cast<size_t> (i)];
        p.delta = i == 0 ? 0.0 : 4.0 / (points - 1);
        p.value = i % 2 == 0 ? 1.0f : 0.25f;
        p.tension = i % 3 == 0 ? 0.4f : -0.3f;
        p.type = shape ? static_cast<std::uint8_t> (*shape) : static_cast<std::uint8_t> (i % 11);
    }
    Envelope envelope;
    envelope.setPoints (all);
    return envelope;
}

template <class Evaluate>
double nanoseconds (Evaluate&& evaluate)
{
    Timing::Durations durations (rounds);
    volatile double kept = 0.0;
    for (int round = 0; round < rounds; ++round)
    {
        auto sum = 0.0;
        const auto before = Timing::nanoseconds();
        for (int i = 0; i < evaluations; ++i)
            sum += evaluate (i * (4.0 / evaluations));
        durations.add (Timing::nanoseconds() - before);
        kept = kept + sum;
    }
    return durations.quantile (0.5) / evaluations;
}

void measure (const char* what, const Envelope& envelope)
{
    EnvelopeCursor cursor;
    std::printf ("%-18s %10.2f %10.2f\n", what,
                 nanoseconds ([&] (double time) { return envelope.evaluate (time, cursor); }),
                 nanoseconds ([&] (double time) { return envelope.evaluate (time); }));
}
}

int main()
{
    Machine::print();
    std::printf ("ns per level       %10s %10s\n", "kept", "looked up");
    measure ("all shapes", curve ({}));
    for (size_t shape = 0; shape < SegmentShapes::names.size(); ++shape)
        measure (SegmentShapes::names[shape], curve (static_cast<SegmentShape> (shape)));
}
