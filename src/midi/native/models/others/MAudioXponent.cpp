#include "midi/native/table/ModelTable.h"

namespace controllers
{
namespace
{
using namespace midi;
using enum FunctionId;

constexpr Control controls[] {
    // Playing
    { play, byChannel (note (36), 2) },
    { stop, byChannel (note (18), 2) },
    { cue, byChannel (note (35), 2) },
    { nth (hotCue, 1), byChannel (note (23), 2), Form::press, plain },
    { nth (hotCue, 2), byChannel (note (24), 2), Form::press, plain },
    { nth (hotCue, 3), byChannel (note (25), 2), Form::press, plain },
    { nth (hotCue, 4), byChannel (note (26), 2), Form::press, plain },
    { nth (hotCue, 5), byChannel (note (27), 2), Form::press, plain },
    { nth (deleteHotCue, 1), byChannel (note (23), 2), Form::press, shifted },
    { nth (deleteHotCue, 2), byChannel (note (24), 2), Form::press, shifted },
    { nth (deleteHotCue, 3), byChannel (note (25), 2), Form::press, shifted },
    { nth (deleteHotCue, 4), byChannel (note (26), 2), Form::press, shifted },
    { nth (deleteHotCue, 5), byChannel (note (27), 2), Form::press, shifted },
    { reverse, byChannel (note (32), 2) },
    // Tempo and key
    { sync, byChannel (note (2), 2) },
    { downbeat, byChannel (note (31), 2) },
    { pitch, byChannel (bend (1), 2), Form::bend },
    { nudgeMinus, byChannel (note (16), 2) },
    { nudgePlus, byChannel (note (17), 2) },
    { keyLock, byChannel (note (30), 2) },
    // Loops
    { loop, byChannel (note (42), 2) },
    { loopIn, byChannel (note (41), 2) },
    { loopOut, byChannel (note (43), 2) },
    { nth (loopBeats, 8), byChannel (note (37), 2) },
    { nth (loopBeats, 9), byChannel (note (38), 2) },
    { nth (loopBeats, 10), byChannel (note (39), 2) },
    { nth (loopBeats, 11), byChannel (note (40), 2) },
    { searchBack, byChannel (note (28), 2) },
    { searchBack, byChannel (note (33), 2) },
    { searchForward, byChannel (note (29), 2) },
    { searchForward, byChannel (note (34), 2) },
    // Jog wheels
    { jog, byChannel (cc (22), 2), Form::centred },
    { jogTouch, byChannel (note (22), 2) },
    { scratchMode, byChannel (note (21), 2) },
    // Mixer
    { gain, byChannel (cc (11), 2), Form::absolute },
    { eqHigh, byChannel (cc (10), 2), Form::absolute },
    { eqMid, byChannel (cc (9), 2), Form::absolute },
    { eqLow, byChannel (cc (8), 2), Form::absolute },
    { eqHighKill, byChannel (note (10), 2) },
    { eqMidKill, byChannel (note (9), 2) },
    { eqLowKill, byChannel (note (8), 2) },
    { volume, byChannel (cc (7), 2), Form::absolute },
    { pfl, byChannel (note (20), 2) },
    { punch, byChannel (note (7), 2) },
    { cut, byChannel (note (11), 2) },
    { crossfader, { cc (7, 3) }, Form::absolute },
    { monitorMix, { cc (13, 3) }, Form::absolute },
    // Effects and instruments
    { nth (effectOn, 1), byChannel (note (12), 2) },
    { nth (effectOn, 2), byChannel (note (13), 2) },
    { nth (effectOn, 3), byChannel (note (14), 2) },
    { nth (effectParam, 1), byChannel (cc (12), 2), Form::absolute },
    { nth (effectParam, 2), byChannel (cc (13), 2), Form::absolute },
    { nth (effectParam, 3), byChannel (cc (14), 2), Form::absolute },
    { dryWet, byChannel (cc (15), 2), Form::absolute },
    { wetOnOff, byChannel (note (15), 2) },
    { nth (smartKnob, 1), { cc (8, 3) }, Form::absolute },
    { nth (smartKnob, 2), { cc (9, 3) }, Form::absolute },
    { nth (smartKnobOn, 1), { note (0, 3) } },
    { nth (smartKnobOn, 2), { note (1, 3) } },
    // Layers of the surface
    { shift, byChannel (note (44), 2) },
};
static_assert (areSound (controls));

constexpr Lamp lamps[] {
    // Playing
    { play, byChannel (note (36), 2) },
    { stop, byChannel (note (18), 2) },
    { cue, byChannel (note (35), 2) },
    { nth (hotCue, 1), byChannel (note (23), 2) },
    { nth (hotCue, 2), byChannel (note (24), 2) },
    { nth (hotCue, 3), byChannel (note (25), 2) },
    { nth (hotCue, 4), byChannel (note (26), 2) },
    { nth (hotCue, 5), byChannel (note (27), 2) },
    { reverse, byChannel (note (32), 2) },
    { seek, { cc (20, 4), cc (21, 4) }, fullScale },
    // Tempo and key
    { sync, byChannel (note (2), 2) },
    { downbeat, byChannel (note (31), 2) },
    { nudgeMinus, byChannel (note (16), 2) },
    { nudgePlus, byChannel (note (17), 2) },
    { keyLock, byChannel (note (30), 2) },
    // Loops
    { loop, byChannel (note (42), 2) },
    { loopIn, byChannel (note (41), 2) },
    { loopOut, byChannel (note (43), 2) },
    { nth (loopBeats, 8), byChannel (note (37), 2) },
    { nth (loopBeats, 9), byChannel (note (38), 2) },
    { nth (loopBeats, 10), byChannel (note (39), 2) },
    { nth (loopBeats, 11), byChannel (note (40), 2) },
    { searchBack, byChannel (note (28), 2) },
    { searchBack, byChannel (note (33), 2) },
    { searchForward, byChannel (note (29), 2) },
    { searchForward, byChannel (note (34), 2) },
    // Jog wheels
    { scratchMode, byChannel (note (21), 2) },
    // Mixer
    { eqHighKill, byChannel (note (10), 2) },
    { eqMidKill, byChannel (note (9), 2) },
    { eqLowKill, byChannel (note (8), 2) },
    { pfl, byChannel (note (20), 2) },
    { punch, byChannel (note (7), 2) },
    { cut, byChannel (note (11), 2) },
    { level, { cc (18, 4), cc (19, 4) }, fullScale },
    // Effects and instruments
    { nth (effectOn, 1), byChannel (note (12), 2) },
    { nth (effectOn, 2), byChannel (note (13), 2) },
    { nth (effectOn, 3), byChannel (note (14), 2) },
    { wetOnOff, byChannel (note (15), 2) },
    // Layers of the surface
    { shift, byChannel (note (44), 2) },
};
static_assert (areSound (lamps));

constexpr Message modeMessage (int on) noexcept
{
    return message (0xf0, 0x00, 0x20, 0x08, 0x00, 0x00, 0x63, 0x0e, 0x16, 0x40, 0x00, on, 0xf7);
}
constexpr Message wake[] { modeMessage (1) }, sleep[] { modeMessage (0) };

}

extern const Model mAudioXponent;
const Model mAudioXponent {
    .number = 17,
    .controls = controls,
    .lamps = lamps,
    .jog = { .bend = 0.01, .scratch = 0.1, .touchNeedsScratchMode = true },
    .wake = wake,
    .sleep = sleep,
    .clearsCache = true,
    .remark = "M-Audio Xponent: the channel is the deck. The brake stops at once; shift makes the hot cues "
              "delete themselves. The touch pad plays the SmartKnobs of deck A.",
};
}
