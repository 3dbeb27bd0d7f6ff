#pragma once

#include "engine/commands/RowHelpers.h"
#include "mixer/AutoCrossfader.h"

/** Crossfader, headphones, master and recorder. */
namespace CommandTable
{
inline void moveCrossfader (CPlatterdex& engine, const CommandCall& call)
{
    const CallbackLock lock (engine.getCallbackLock(), "crossfader");
    engine.settings.crossfader = engine.handCrossfader = limited (call);
    engine.settings.autoFadeState = AutoCrossfader::idle;
}

template <AutoCrossfader::State side>
void startFade (CPlatterdex& engine, const CommandCall&)
{
    const CallbackLock lock (engine.getCallbackLock(), "fade");
    engine.settings.autoFadeState = side;
    if (engine.settings.automixOn != 0)
        engine.automix.automixDeck = side == AutoCrossfader::toLeft ? 0 : 1;
}

template <AutoCrossfader::State side>
double isFading (CPlatterdex& engine, int, int)
{
    return engine.settings.autoFadeState == side;
}

inline void toggleRecorder (CPlatterdex& engine, const CommandCall&)
{
    engine.decks.requests.toggle (EngineRequest::toggleRecorder);
}

constexpr CommandRow mixerRows[] {
    {
        .numbers = { .first = 277 },
        .name = N_ ("Crossfader"),
        .constant = "CROSSFADER",
        .kind = Kind::value,
        .shape = Shape::continuous,
        .write = moveCrossfader,
        .read = readField<&EngineSettings::crossfader>,
        .rest = 0.5,
        .feedback = Feedback::level,
        .writes = "the position, 0 left to 1 right; stops an automatic fade",
        .reads = "the position",
    },
    {
        .numbers = { .first = 278 },
        .name = N_ ("Crossfader Curve"),
        .constant = "CROSSFADER_CURVE",
        .kind = Kind::value,
        .shape = Shape::continuous,
        .write = setLevel<&EngineSettings::crossfaderCurve>,
        .read = readField<&EngineSettings::crossfaderCurve>,
        .rest = 0.5,
        .feedback = Feedback::level,
        .writes = "the curve, 0 to 1",
        .reads = "the curve",
    },
    {
        .numbers = { .first = 279 },
        .name = N_ ("Auto Crossfader Left"),
        .constant = "AUTO_CROSSFADER_LEFT",
        .write = startFade<AutoCrossfader::toLeft>,
        .read = isFading<AutoCrossfader::toLeft>,
        .feedback = Feedback::lamp,
        .writes = "starts the fade to the left",
        .reads = "1 during it",
    },
    {
        .numbers = { .first = 280 },
        .name = N_ ("Auto Crossfader Right"),
        .constant = "AUTO_CROSSFADER_RIGHT",
        .write = startFade<AutoCrossfader::toRight>,
        .read = isFading<AutoCrossfader::toRight>,
        .feedback = Feedback::lamp,
        .writes = "starts the fade to the right",
        .reads = "1 during it",
    },
    {
        .numbers = { .first = 281 },
        .name = N_ ("Monitor Volume"),
        .constant = "MONITOR_VOLUME",
        .kind = Kind::value,
        .shape = Shape::continuous,
        .write = setLevel<&EngineSettings::monitorVolume>,
        .read = readField<&EngineSettings::monitorVolume>,
        .rest = 1.0,
        .feedback = Feedback::level,
        .writes = "the volume, 0 to 1",
        .reads = "the value",
    },
    {
        .numbers = { .first = 282 },
        .name = N_ ("Monitor Mix"),
        .constant = "MONITOR_MIX",
        .kind = Kind::value,
        .shape = Shape::continuous,
        .write = setLevel<&EngineSettings::monitorMix>,
        .read = readField<&EngineSettings::monitorMix>,
        .feedback = Feedback::level,
        .writes = "0 cue to 1 master",
        .reads = "the value",
    },
    {
        .numbers = { .first = 283 },
        .name = N_ ("Monitor Phone Split"),
        .constant = "MONITOR_PHONE_SPLIT",
        .write = toggle<&EngineSettings::monitorSplit>,
        .read = readFlag<&EngineSettings::monitorSplit>,
        .feedback = Feedback::lamp,
        .writes = "toggles",
        .reads = "the flag",
    },
    {
        .numbers = { .first = 284 },
        .name = N_ ("Monitor Overdrive"),
        .constant = "MONITOR_OVERDRIVE",
        .write = toggle<&EngineSettings::monitorOverdrive>,
        .read = readFlag<&EngineSettings::monitorOverdrive>,
        .feedback = Feedback::lamp,
        .writes = "toggles",
        .reads = "the flag",
    },
    {
        .numbers = { .first = 297 },
        .name = N_ ("Master Volume"),
        .constant = "MASTER_VOLUME",
        .kind = Kind::value,
        .shape = Shape::continuous,
        .write = setLevel<&EngineSettings::masterVolume>,
        .read = readField<&EngineSettings::masterVolume>,
        .rest = 1.0,
        .feedback = Feedback::level,
        .writes = "the volume, 0 to 1",
        .reads = "the value",
    },
    {
        .numbers = { .first = 465 },
        .name = N_ ("Disk Recorder"),
        .constant = "DISK_RECORDER",
        .write = toggleRecorder,
        .read = [] (CPlatterdex& e, int, int) -> double { return e.recorder.isRecording(); },
        .feedback = Feedback::lamp,
        .writes = "starts or stops the recording",
        .reads = "1 while recording",
    },
};
}
