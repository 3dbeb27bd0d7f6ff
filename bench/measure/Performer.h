#pragma once

#include "measure/BenchEngine.h"
#include "timecode/ControlMedium.h"

#include <vector>

/** Moves of hands on an engine, for benchmarks that measure the same things apart and together. Message thread. */
namespace Performer
{
/** Turns a deck's filter and the three effects that cost most on. */
void turnEffectsOn (BenchEngine&, int deck);

/** Gives both knobs of every deck twenty rows. @param moving   over all they reach; else each at its parameter's rest */
void holdKnobs (BenchEngine&, bool moving);

/** Turns every knob a little further. @param block   counts the calls */
void turnKnobs (BenchEngine&, int block);

/** Lets a deck's first pad loop. @param preset   the factory preset's number */
void runPad (BenchEngine&, int deck, int preset);

/** Lays two seconds of music, eight beats, onto sampler pads 0 to `pads` - 1, which will loop. */
void fillSampler (Sampler&, double rate, int pads);
}

/** A control record or disc that turns steadily from its beginning. */
struct SteadyRecord
{
    /** @param speed   1 is the medium's own */
    SteadyRecord (const ControlMedium&, double rate, int frames, double speed = 1.0);

    std::vector<float> left, right;
};
