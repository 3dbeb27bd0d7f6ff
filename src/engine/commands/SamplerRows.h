#pragma once

#include "engine/commands/RowHelpers.h"

/** The sampler's pads and its loop recorder. */
namespace CommandTable
{
constexpr double samplerRest = 0.5; ///< of the volume, after a reset

inline void setSamplerVolume (CPlatterdex& engine, const CommandCall& call)
{
    engine.sampler.setMasterGain (limited (call));
}

inline double readSamplerVolume (CPlatterdex& engine, int, int)
{
    return engine.sampler.masterGain();
}

/** A press by a value up to 1 is as strong as the value says; above it the value is the velocity itself. */
inline int velocityOf (const CommandCall& call)
{
    if (!call.isPressed())
        return 0;
    const auto velocity = call.value <= 1.0f ? call.value * Sampler::strongest : call.value;
    return juce::jlimit (1, Sampler::strongest, juce::roundToInt (std::min (velocity, 127.0f)));
}

inline void stepLoopSize (CPlatterdex& engine, const CommandCall& call)
{
    auto& length = engine.sampler.ghostLength;
    length = static_cast<int8_t> (juce::jlimit (0, GhostTake::lengthCount - 1, length + call.step()));
}

constexpr CommandRow samplerRows[] {
    {
        .numbers = { .first = 354 },
        .name = N_ ("Sampler Master Volume"),
        .constant = "SAMPLER_MASTER_VOLUME",
        .kind = Kind::value,
        .shape = Shape::continuous,
        .write = setSamplerVolume,
        .read = readSamplerVolume,
        .rest = samplerRest,
        .absent = samplerRest,
        .feedback = Feedback::level,
        .writes = "the volume, 0 to 1",
        .reads = "the value",
    },
    {
        .numbers = { .first = 355 },
        .name = N_ ("Sampler Master Volume Reset"),
        .constant = "SAMPLER_MASTER_VOLUME_RESET",
        .write = [] (CPlatterdex& e, const CommandCall&) { e.sampler.setMasterGain (samplerRest); },
        .read = readSamplerVolume,
        .absent = samplerRest,
        .writes = "the volume to 0.5",
        .reads = "the value",
    },
    {
        .numbers = { .first = 356 },
        .name = N_ ("Sampler PFL"),
        .constant = "SAMPLER_PFL",
        .write = [] (CPlatterdex& e, const CommandCall&) { e.sampler.setMonitor (!e.sampler.isMonitored()); },
        .read = [] (CPlatterdex& e, int, int) -> double { return e.sampler.isMonitored(); },
        .feedback = Feedback::lamp,
        .writes = "toggles",
        .reads = "the flag",
    },
    {
        .numbers = { .first = 357 },
        .name = N_ ("Sampler Preview Play/Stop"),
        .constant = "SAMPLER_PREVIEW_PLAY_STOP",
        .write = [] (CPlatterdex& e, const CommandCall&)
        { e.sampler.padPress (Sampler::preview, Sampler::strongest); },
        .read = [] (CPlatterdex& e, int, int) -> double
        { return e.sampler.desk.slots[Sampler::preview].playing != 0; },
        .feedback = Feedback::lamp,
        .writes = "plays or stops the preview voice",
        .reads = "1 while it plays",
    },
    {
        .numbers = { .first = 358 },
        .name = N_ ("Sampler Record Loop"),
        .constant = "SAMPLER_RECORD_LOOP",
        .write = [] (CPlatterdex& e, const CommandCall&) { e.sampler.askForLoop(); },
        .read = [] (CPlatterdex& e, int, int) -> double
        { return e.sampler.desk.slots[Sampler::preview].isLoading != 0; },
        .feedback = Feedback::lamp,
        .writes = "records a loop of the loop size from the recorder's deck into the preview",
        .reads = "1 while it records",
    },
    {
        .numbers = { .first = 359 },
        .name = N_ ("Sampler Loop Size"),
        .constant = "SAMPLER_LOOP_SIZE",
        .kind = Kind::relative,
        .shape = Shape::stepped,
        .write = stepLoopSize,
        .read = [] (CPlatterdex& e, int, int) -> double { return e.sampler.ghostLength; },
        .range = { 0.0, GhostTake::lengthCount - 1.0, 1.0 },
        .rest = 7.0,
        .feedback = Feedback::level,
        .writes = "steps the size",
        .reads = "the size, 0 for 1/32 of a beat to 9 for 16 beats",
    },
    {
        .numbers = { .first = 360 },
        .name = N_ ("Sampler Sync"),
        .constant = "SAMPLER_SYNC",
        .write = [] (CPlatterdex& e, const CommandCall&) { e.sampler.setSync (!e.sampler.isSynced()); },
        .read = [] (CPlatterdex& e, int, int) -> double { return e.sampler.isSynced(); },
        .feedback = Feedback::lamp,
        .writes = "toggles",
        .reads = "the flag",
    },
    {
        .numbers = { .first = 361, .count = 16 },
        .name = N_ ("Sampler Play Pad #{n}"),
        .constant = "SAMPLER_PLAY_PAD_{n}",
        .kind = Kind::state,
        .shape = Shape::held,
        .write = [] (CPlatterdex& e, const CommandCall& call)
        { e.sampler.padPress (call.which, velocityOf (call)); },
        .read = [] (CPlatterdex& e, int, int which) -> double
        { return e.sampler.desk.slots[static_cast<size_t> (which)].playing != 0; },
        .feedback = Feedback::lamp,
        .writes = "presses the pad, as strongly as the value says, or releases it at 0",
        .reads = "1 while playing",
    },
};
}
