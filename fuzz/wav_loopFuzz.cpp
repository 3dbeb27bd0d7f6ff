#include "Check.h"

#include "instruments/sampler/sample/SampleTempo.h"

#include <juce_core/juce_core.h>

#include <cmath>

/** Finds a tempo in whatever a WAV file tells, and a loop that lies within its sample. */
extern "C" int LLVMFuzzerTestOneInput (const uint8_t* data, size_t size)
{
    juce::MemoryInputStream stream (data, size, false);
    const auto told = WavLoopFacts::read (stream);
    if (!told)
        return 0;
    for (const int32_t frames : { 0, 1, 1000, 1'440'000 })
    {
        SampleFacts facts;
        facts.lengthFrames = frames;
        if (!SampleTempo::byLoopFacts (facts, *told))
            SampleTempo::byLength (facts);
        FUZZ_CHECK (facts.beatEnd <= static_cast<uint32_t> (frames)
                    && facts.beatStart <= static_cast<uint32_t> (frames));
        FUZZ_CHECK (std::isfinite (facts.bpm) && std::isfinite (facts.beats) && facts.bpm >= 0.0
                    && facts.beats >= 0.0);
    }
    return 0;
}
