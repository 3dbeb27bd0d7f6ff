#include "midi/native/table/ModelTable.h"

namespace controllers
{
namespace
{
using namespace midi;
using enum FunctionId;

constexpr Control controls[] {
    // Playing
    { play, { note (13), note (47) } },
    { stop, { note (14), note (48) } },
    { cue, { note (12), note (46) } },
    { cuePlay, { note (12, 2), note (46, 2) } },
    { nth (hotCue, 1), { note (18), note (52) } },
    { nth (hotCue, 2), { note (19), note (53) } },
    { nth (hotCue, 3), { note (20), note (54) } },
    { nth (hotCue, 4), { note (21), note (55) } },
    { nth (hotCue, 5), { note (23), note (57) } },
    { nth (hotCue, 6), { note (24), note (58) } },
    { nth (hotCue, 7), { note (25), note (59) } },
    { nth (hotCue, 8), { note (26), note (60) } },
    { seek, { cc (40, 2), cc (45, 2) }, Form::absolute },
    // Tempo and key
    { sync, { note (17), note (51) } },
    { master, { note (13, 2), note (47, 2) } },
    { pitch, byChannel (bend (1), 2), Form::bendInverted },
    { nudgeMinus, { note (15), note (49) } },
    { nudgePlus, { note (16), note (50) } },
    { keyLock, { note (39, 2), note (73, 2) } },
    { keyMinus, { note (15, 2), note (49, 2) } },
    { keyPlus, { note (16, 2), note (50, 2) } },
    // Loops
    { loop, { note (34), note (68) } },
    { loopIn, { note (31), note (65) } },
    { loopOut, { note (32), note (66) } },
    { reloop, { note (33), note (67) } },
    { loopHalf, { note (40, 2), note (74, 2) } },
    { loopDouble, { note (41, 2), note (75, 2) } },
    { searchBack, { note (40), note (74) } },
    { searchForward, { note (41), note (75) } },
    { snap, { note (38), note (72) } },
    // Jog wheels
    { jog, { cc (49), cc (51) }, Form::cyclicLowBelow },
    { jogTouch, { note (79), note (80) } },
    { scratchMode, { note (39), note (73) } },
    // Mixer
    { gain, { cc (5), cc (10), cc (0), cc (15) }, Form::absolute },
    { eqHigh, { cc (6), cc (11), cc (1), cc (16) }, Form::absolute },
    { eqMid, { cc (7), cc (12), cc (2), cc (17) }, Form::absolute },
    { eqLow, { cc (8), cc (13), cc (3), cc (18) }, Form::absolute },
    { pfl, { note (43), note (44), note (42), note (45) } },
    { balance, { cc (29), cc (29), cc (29), cc (29) }, Form::absolute },
    { masterVolume, { cc (28) }, Form::absolute },
    { monitorVolume, { cc (35) }, Form::absolute },
    { monitorMix, { cc (34) }, Form::absolute },
    // Effects and instruments
    { nth (effectOn, 1), { note (27), note (61) } },
    { nth (effectParam, 1), { cc (37), cc (42) }, Form::absolute },
    { nth (effectSelect, 1), { cc (36), cc (41) }, Form::cyclic7 },
    { nth (effectNext, 1), { note (83), note (85) } },
    { dryWet, { cc (40), cc (45) }, Form::absolute },
    { wetOnOff, { note (28), note (62) } },
    { nth (samplerPad, 1), { note (29) } },
    { nth (samplerPad, 2), { note (63) } },
    { samplerVolume, { cc (39), cc (44) }, Form::absolute },
    { samplerLoopSize, { cc (38), cc (43) }, Form::cyclic7 },
    { samplerRecord, { note (84), note (86) } },
    // Library
    { load, { note (101), note (102) } },
};
static_assert (areSound (controls));

constexpr Lamp lamps[] {
    // Playing
    { play, { note (13), note (47) } },
    { stop, { note (14), note (48) } },
    { cue, { note (12), note (46) } },
    { nth (hotCue, 1), { note (18), note (52) } },
    { nth (hotCue, 2), { note (19), note (53) } },
    { nth (hotCue, 3), { note (20), note (54) } },
    { nth (hotCue, 4), { note (21), note (55) } },
    { nth (hotCue, 5), { note (23), note (57) } },
    { nth (hotCue, 6), { note (24), note (58) } },
    { nth (hotCue, 7), { note (25), note (59) } },
    { nth (hotCue, 8), { note (26), note (60) } },
    // Tempo and key
    { sync, { note (22), note (56) } },
    { nudgeMinus, { note (15), note (49) } },
    { nudgePlus, { note (16), note (50) } },
    { keyLock, { note (39), note (73) } },
    // Loops
    { loop, { note (34), note (68) } },
    { loopIn, { note (31), note (65) } },
    { loopOut, { note (32), note (66) } },
    { reloop, { note (33), note (67) } },
    { searchBack, { note (40), note (74) } },
    { searchForward, { note (41), note (75) } },
    { snap, { note (38), note (72) } },
    // Mixer
    { pfl, { note (43), note (44), note (42), note (45) } },
    // Effects and instruments
    { nth (effectOn, 1), { note (27), note (61) } },
    { nth (samplerPad, 1), { note (29) } },
    { nth (samplerPad, 2), { note (63) } },
};
static_assert (areSound (lamps));

}

extern const Model americanAudioVms4;
const Model americanAudioVms4 {
    .number = 40,
    .controls = controls,
    .lamps = lamps,
    .jog = { .bend = 0.0002, .scratch = 0.005, .touchNeedsScratchMode = true },
    .clearsCache = true,
    .remark = "American Audio VMS4: channel 2 is the shift layer. The line faders send nothing: the mixer of "
              "the unit works by itself. The touch strip is dry/wet of the effects, with shift the position "
              "in the track.",
};
}
