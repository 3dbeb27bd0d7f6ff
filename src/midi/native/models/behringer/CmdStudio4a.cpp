#include "midi/native/table/ModelTable.h"

namespace controllers
{
namespace
{
using namespace midi;
using enum FunctionId;

constexpr Control controls[] {
    // Playing
    { play, { note (44), note (76, 2), note (44, 3), note (76, 4) } },
    { cue, { note (43), note (75, 2), note (43, 3), note (75, 4) } },
    { nth (hotCue, 1), { note (34), note (66, 2), note (34, 3), note (66, 4) }, Form::press, plain },
    { nth (hotCue, 2), { note (35), note (67, 2), note (35, 3), note (67, 4) }, Form::press, plain },
    { nth (hotCue, 3), { note (36), note (68, 2), note (36, 3), note (68, 4) }, Form::press, plain },
    { nth (hotCue, 4), { note (37), note (69, 2), note (37, 3), note (69, 4) }, Form::press, plain },
    { nth (hotCue, 5), { note (38), note (70, 2), note (38, 3), note (70, 4) }, Form::press, plain },
    { nth (hotCue, 6), { note (39), note (71, 2), note (39, 3), note (71, 4) }, Form::press, plain },
    { nth (hotCue, 7), { note (40), note (72, 2), note (40, 3), note (72, 4) }, Form::press, plain },
    { nth (hotCue, 8), { note (41), note (73, 2), note (41, 3), note (73, 4) }, Form::press, plain },
    { nth (deleteHotCue, 1), { note (34), note (66, 2), note (34, 3), note (66, 4) }, Form::press, shifted },
    { nth (deleteHotCue, 2), { note (35), note (67, 2), note (35, 3), note (67, 4) }, Form::press, shifted },
    { nth (deleteHotCue, 3), { note (36), note (68, 2), note (36, 3), note (68, 4) }, Form::press, shifted },
    { nth (deleteHotCue, 4), { note (37), note (69, 2), note (37, 3), note (69, 4) }, Form::press, shifted },
    { nth (deleteHotCue, 5), { note (38), note (70, 2), note (38, 3), note (70, 4) }, Form::press, shifted },
    { nth (deleteHotCue, 6), { note (39), note (71, 2), note (39, 3), note (71, 4) }, Form::press, shifted },
    { nth (deleteHotCue, 7), { note (40), note (72, 2), note (40, 3), note (72, 4) }, Form::press, shifted },
    { nth (deleteHotCue, 8), { note (41), note (73, 2), note (41, 3), note (73, 4) }, Form::press, shifted },
    // Tempo and key
    { sync, { note (45), note (77, 2), note (45, 3), note (77, 4) } },
    { pitch, byChannel (bend (1)), Form::bend },
    { nudgeMinus, { note (32), note (64, 2), note (32, 3), note (64, 4) } },
    { nudgePlus, { note (33), note (65, 2), note (33, 3), note (65, 4) } },
    { keyLock, { note (27), note (59, 2), note (27, 3), note (59, 4) } },
    // Loops
    { loop, { note (25), note (57, 2), note (25, 3), note (57, 4) } },
    { loopIn, { note (23), note (56, 2), note (23, 3), note (56, 4) } },
    { loopOut, { note (24), note (55, 2), note (24, 3), note (55, 4) } },
    // Jog wheels
    { jog, { cc (26), cc (58, 2), cc (26, 3), cc (58, 4) }, Form::centred },
    { jogTouch, { note (26), note (58, 2), note (26, 3), note (58, 4) } },
    { scratchMode, { note (22), note (54, 2), note (22, 3), note (54, 4) } },
    // Mixer
    { gain, { cc (16), cc (48, 2), cc (16, 3), cc (48, 4) }, Form::absolute },
    { eqHigh, { cc (96), cc (99, 2), cc (96, 3), cc (99, 4) }, Form::absolute },
    { eqMid, { cc (97), cc (100, 2), cc (97, 3), cc (100, 4) }, Form::absolute },
    { eqLow, { cc (98), cc (101, 2), cc (98, 3), cc (101, 4) }, Form::absolute },
    { eqHighKill, { note (96), note (99, 2), note (96, 3), note (99, 4) } },
    { eqMidKill, { note (97), note (100, 2), note (97, 3), note (100, 4) } },
    { eqLowKill, { note (98), note (101, 2), note (98, 3), note (101, 4) } },
    { volume, { cc (112), cc (113, 2), cc (112, 3), cc (113, 4) }, Form::absolute },
    { pfl, { note (106), note (107, 2), note (106, 3), note (107, 4) } },
    { crossfader, { cc (114) }, Form::absolute },
    { masterVolume, { cc (47) }, Form::absolute },
    { monitorVolume, { cc (123) }, Form::absolute },
    { monitorMix, { cc (122) }, Form::absolute },
    // Effects and instruments
    { nth (effectOn, 1), { note (16), note (48, 2), note (16, 3), note (48, 4) } },
    { nth (effectOn, 2), { note (17), note (49, 2), note (17, 3), note (49, 4) } },
    { nth (effectOn, 3), { note (18), note (50, 2), note (18, 3), note (50, 4) } },
    { nth (effectParam, 2), { cc (17), cc (49, 2), cc (17, 3), cc (49, 4) }, Form::absolute },
    { nth (effectParam, 3), { cc (18), cc (50, 2), cc (18, 3), cc (50, 4) }, Form::absolute },
    { dryWet, { cc (19), cc (51, 2), cc (19, 3), cc (51, 4) }, Form::absolute },
    { wetOnOff, { note (19), note (51, 2), note (19, 3), note (51, 4) } },
    { nth (smartKnobOn, 1), { note (82), note (84, 2), note (82, 3), note (84, 4) } },
    { nth (smartKnobOn, 2), { note (83), note (85, 2), note (83, 3), note (85, 4) } },
    // Library
    { load, { note (80), note (81, 2), note (80, 3), note (81, 4) } },
    { playlistSelect, { cc (1) }, Form::centred },
    { preview, { note (1) } },
    { directoryUp, { note (2) } },
    { directoryDown, { note (3) } },
    // Layers of the surface
    { shift, { note (42), note (74, 2), note (42, 3), note (74, 4) } },
};
static_assert (areSound (controls));

constexpr Lamp lamps[] {
    // Playing
    { play, { note (44), note (76, 2), note (44, 3), note (76, 4) }, threeStates },
    { cue, { note (43), note (75, 2), note (43, 3), note (75, 4) }, threeStates },
    { nth (hotCue, 1), { note (34), note (66, 2), note (34, 3), note (66, 4) }, threeStates },
    { nth (hotCue, 2), { note (35), note (67, 2), note (35, 3), note (67, 4) }, threeStates },
    { nth (hotCue, 3), { note (36), note (68, 2), note (36, 3), note (68, 4) }, threeStates },
    { nth (hotCue, 4), { note (37), note (69, 2), note (37, 3), note (69, 4) }, threeStates },
    { nth (hotCue, 5), { note (38), note (70, 2), note (38, 3), note (70, 4) }, threeStates },
    { nth (hotCue, 6), { note (39), note (71, 2), note (39, 3), note (71, 4) }, threeStates },
    { nth (hotCue, 7), { note (40), note (72, 2), note (40, 3), note (72, 4) }, threeStates },
    { nth (hotCue, 8), { note (41), note (73, 2), note (41, 3), note (73, 4) }, threeStates },
    // Tempo and key
    { sync, { note (45), note (77, 2), note (45, 3), note (77, 4) }, threeStates },
    { nudgeMinus, { note (32), note (64, 2), note (32, 3), note (64, 4) }, threeStates },
    { nudgePlus, { note (33), note (65, 2), note (33, 3), note (65, 4) }, threeStates },
    { keyLock, { note (27), note (59, 2), note (27, 3), note (59, 4) }, threeStates },
    // Loops
    { loop, { note (25), note (57, 2), note (25, 3), note (57, 4) }, threeStates },
    { loopIn, { note (23), note (56, 2), note (23, 3), note (56, 4) }, threeStates },
    { loopOut, { note (24), note (55, 2), note (24, 3), note (55, 4) }, threeStates },
    // Jog wheels
    { scratchMode, { note (22), note (54, 2), note (22, 3), note (54, 4) }, threeStates },
    // Mixer
    { eqHighKill, { note (96), note (99, 2), note (96, 3), note (99, 4) }, threeStates },
    { eqMidKill, { note (97), note (100, 2), note (97, 3), note (100, 4) }, threeStates },
    { eqLowKill, { note (98), note (101, 2), note (98, 3), note (101, 4) }, threeStates },
    { pfl, { note (106), note (107, 2), note (106, 3), note (107, 4) }, threeStates },
    { nth (masterLevel, 1), { cc (126) }, scale (48, 63) },
    { nth (masterLevel, 2), { cc (127) }, scale (48, 63) },
    // Effects and instruments
    { nth (effectOn, 1), { note (16), note (48, 2), note (16, 3), note (48, 4) }, threeStates },
    { nth (effectOn, 2), { note (17), note (49, 2), note (17, 3), note (49, 4) }, threeStates },
    { nth (effectOn, 3), { note (18), note (50, 2), note (18, 3), note (50, 4) }, threeStates },
    { wetOnOff, { note (19), note (51, 2), note (19, 3), note (51, 4) }, threeStates },
    { nth (smartKnobOn, 1), { note (82), note (84, 2), note (82, 3), note (84, 4) }, threeStates },
    { nth (smartKnobOn, 2), { note (83), note (85, 2), note (83, 3), note (85, 4) }, threeStates },
    // Library
    { load, { note (80), note (81, 2), note (80, 3), note (81, 4) }, threeStates },
    // Layers of the surface
    { shift, { note (42), note (74, 2), note (42, 3), note (74, 4) }, threeStates },
};
static_assert (areSound (lamps));

}

extern const Model behringerCmdStudio4a;
const Model behringerCmdStudio4a {
    .number = 46,
    .controls = controls,
    .lamps = lamps,
    .jog = { .bend = 0.001, .scratch = 0.03, .touchNeedsScratchMode = true },
    .clearsCache = true,
    .remark = "Behringer CMD Studio 4A: the channel is the deck, the sides have numbers of their own. "
              "\"Delete\" is the shift of the hot cues; the assign buttons switch the SmartKnobs.",
};
}
