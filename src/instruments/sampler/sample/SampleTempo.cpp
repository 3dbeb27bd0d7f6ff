#include "instruments/sampler/sample/SampleTempo.h"

#include <algorithm>
#include <cmath>

namespace
{
/** Frames of the part that goes round. */
double loopFrames (const SampleFacts& facts) noexcept
{
    return facts.beatEnd > facts.beatStart ? facts.beatEnd - facts.beatStart : facts.lengthFrames;
}

void setWholeBeats (SampleFacts& facts, double beats) noexcept
{
    facts.beats = beats;
    facts.bpm = 30.0 * facts.sampleRate * beats / loopFrames (facts);
}
}

void SampleTempo::none (SampleFacts& facts) noexcept
{
    facts.beats = facts.bpm = 0.0;
}

void SampleTempo::byLength (SampleFacts& facts) noexcept
{
    const auto frames = loopFrames (facts);
    if (!(frames >= 1.0))
        return none (facts);
    const auto b = frames / (facts.sampleRate / 2.0);
    auto p = 2.0;
    while (p < b)
        p *= 2.0;
    facts.bpm = facts.sampleRate * 60.0 * p / frames;
    facts.beats = 2.0 * p;
}

void SampleTempo::byStatedTempo (SampleFacts& facts, double bpm) noexcept
{
    const auto frames = loopFrames (facts), perBeat = 30.0 * facts.sampleRate / bpm;
    const auto beats = frames / perBeat, whole = std::round (beats);
    if (!(frames >= 1.0) || !std::isfinite (beats))
        return none (facts);
    if (whole >= 1.0 && std::abs (beats - whole) <= 0.02 * whole)
        return setWholeBeats (facts, whole);

    auto counted = std::floor (beats);
    if (counted >= 2.0)
        counted -= std::fmod (counted, 2.0);
    facts.bpm = bpm;
    facts.beats = counted;
    if (counted >= 1.0)
        facts.beatEnd = facts.beatStart + static_cast<uint32_t> (std::lround (counted * perBeat));
}

bool SampleTempo::byLoopFacts (SampleFacts& facts, const WavLoopFacts& told) noexcept
{
    const auto limit = static_cast<uint32_t> (std::max (facts.lengthFrames, 0));
    if (told.loopEnd > told.loopBegin && told.loopBegin < limit)
    {
        facts.beatStart = told.loopBegin;
        facts.beatEnd = std::min (told.loopEnd, limit);
    }
    if (told.isOneShot)
        return none (facts), true;
    if (told.tempo >= 1.0f && told.tempo <= 1000.0f)
        return byStatedTempo (facts, static_cast<double> (told.tempo)), true;
    if (told.beats >= 1 && told.beats <= 4096 && loopFrames (facts) >= 1.0)
        return setWholeBeats (facts, 2.0 * told.beats), true;
    return false;
}
