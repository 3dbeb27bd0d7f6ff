#pragma once

#include "instruments/sampler/sample/SampleFacts.h"
#include "instruments/sampler/sample/WavLoopFacts.h"

/** Finds the tempo of a sample, and with it the part of it that goes round as a loop. Each sets `bpm`, `beats` and, where
    they are not set, the bounds of the loop; the other facts are known already. Any thread. */
namespace SampleTempo
{
/** Below so many seconds a sample is taken for a loop, whose length tells its tempo. */
constexpr double longestLoopSeconds = 31.0;

inline bool isLoop (const SampleFacts& facts) noexcept
{
    return facts.lengthFrames < longestLoopSeconds * facts.sampleRate;
}

/** Takes the sample for a power of two of beats, at 120 BPM or the next tempo above that fits. */
void byLength (SampleFacts&) noexcept;

/** Takes a stated tempo in BPM, above 0. A length within 2 % of whole beats is a loop of so many, and its exact tempo
    counts; of any other the whole beats loop, pairs of them if there are two. */
void byStatedTempo (SampleFacts&, double bpm) noexcept;

/** Takes over what a WAV file tells of its loop. @returns false if it tells no tempo */
bool byLoopFacts (SampleFacts&, const WavLoopFacts&) noexcept;

/** Makes it a sample without a tempo, which is never stretched. */
void none (SampleFacts&) noexcept;
}
