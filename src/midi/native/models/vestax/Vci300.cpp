#include "midi/native/table/ModelTable.h"

namespace controllers
{
namespace
{
using namespace midi;
using enum FunctionId;

constexpr Control controls[] {
    // Playing
    { play, { note (37), note (56) } },
    { cue, { note (36), note (55) } },
    { nth (hotCue, 1), { note (42), note (61) }, Form::press, plain },
    { nth (hotCue, 2), { note (43), note (62) }, Form::press, plain },
    { nth (hotCue, 3), { note (44), note (63) }, Form::press, plain },
    { nth (deleteHotCue, 1), { note (42), note (61) }, Form::press, shifted },
    { nth (deleteHotCue, 2), { note (43), note (62) }, Form::press, shifted },
    { nth (deleteHotCue, 3), { note (44), note (63) }, Form::press, shifted },
    { reverse, { note (50), note (69) } },
    // Tempo and key
    { sync, { note (41), note (60) } },
    { pitch, { cc (13), cc (19) }, Form::fine32 },
    { nudgeMinus, { note (39), note (58) } },
    { nudgePlus, { note (40), note (59) } },
    { keyLock, { note (38), note (57) } },
    // Loops
    { loop, { note (51), note (70) }, Form::press, plain },
    { leap, { note (51), note (70) }, Form::press, shifted },
    { loopIn, { note (48), note (67) } },
    { loopOut, { note (46), note (65) } },
    { reloop, { note (47), note (66) } },
    { loopHalf, { note (52), note (71) } },
    { loopDouble, { note (53), note (72) } },
    // Jog wheels
    { jog, { cc (28), cc (29) }, Form::cyclicLow32 },
    { jogTouch, { note (83), note (84) } },
    { scratchMode, { note (45), note (64) } },
    // Mixer
    { gain, { cc (14), cc (20) }, Form::absolute },
    { eqHigh, { cc (15), cc (21) }, Form::absolute },
    { eqMid, { cc (16), cc (22) }, Form::absolute },
    { eqLow, { cc (17), cc (23) }, Form::absolute },
    { volume, { cc (12), cc (18) }, Form::absolute },
    { pfl, { note (54), note (73) } },
    { crossfader, { cc (24) }, Form::absolute },
    { crossfaderCurve, { cc (26) }, Form::absolute },
    { monitorMix, { cc (25) }, Form::inverted },
    // Library
    { playlistUp, { note (77) }, Form::press, inSurfaceMode (0) },
    { playlistDown, { note (78) }, Form::press, inSurfaceMode (0) },
    { preview, { note (82) } },
    { directoryUp, { note (77) }, Form::press, inSurfaceMode (1) },
    { directoryDown, { note (78) }, Form::press, inSurfaceMode (1) },
    { directoryEnter, { note (80) }, Form::press, inSurfaceMode (0) },
    { directoryEnter, { note (80) }, Form::press, inSurfaceMode (1) },
    { directoryExit, { note (79) }, Form::press, inSurfaceMode (0) },
    { directoryExit, { note (79) }, Form::press, inSurfaceMode (1) },
    { fileUp, { note (77) }, Form::press, inSurfaceMode (2) },
    { fileDown, { note (78) }, Form::press, inSurfaceMode (2) },
    { fileEnter, { note (80) }, Form::press, inSurfaceMode (2) },
    { fileExit, { note (79) }, Form::press, inSurfaceMode (2) },
    { decksShown, { note (81) } },
    // Layers of the surface
    { shift, { note (49), note (68) } },
    { nth (surfaceMode, 1), { note (75) } },
    { nth (surfaceMode, 2), { note (74) } },
    { nth (surfaceMode, 3), { note (76) } },
};
static_assert (areSound (controls));

constexpr Lamp lamps[] {
    // Playing
    { play, { note (114), note (116) } },
    { play, { note (117), note (119) } },
    { cue, { note (113), note (115) } },
    { nth (hotCue, 1), { note (65), note (77) } },
    { nth (hotCue, 2), { note (67), note (79) } },
    { nth (hotCue, 3), { note (69), note (81) } },
    { reverse, { note (40), note (52) } },
    // Tempo and key
    { sync, { note (37), note (57) } },
    { nudgeMinus, { note (59), note (61) } },
    { nudgePlus, { note (60), note (62) } },
    { keyLock, { note (36), note (51) } },
    // Loops
    { loop, { note (41), note (53) } },
    { loop, { note (76), note (88) } },
    { loopIn, { note (72), note (84) } },
    { loopOut, { note (74), note (86) } },
    { loopHalf, { note (42), note (50) } },
    { loopDouble, { note (43), note (54) } },
    // Jog wheels
    { jogTouch, { note (118), note (120) } },
    { scratchMode, { note (38), note (56) } },
    // Mixer
    { pfl, { note (45), note (49) } },
    { level, { note (89), note (101) }, segment (12, 12) },
    { level, { note (90), note (102) }, segment (11, 12) },
    { level, { note (91), note (103) }, segment (10, 12) },
    { level, { note (92), note (104) }, segment (9, 12) },
    { level, { note (93), note (105) }, segment (8, 12) },
    { level, { note (94), note (106) }, segment (7, 12) },
    { level, { note (95), note (107) }, segment (6, 12) },
    { level, { note (96), note (108) }, segment (5, 12) },
    { level, { note (97), note (109) }, segment (4, 12) },
    { level, { note (98), note (110) }, segment (3, 12) },
    { level, { note (99), note (111) }, segment (2, 12) },
    { level, { note (100), note (112) }, segment (1, 12) },
    // Library
    { preview, { note (47) } },
    // Layers of the surface
    { shift, { note (39), note (55) } },
    { nth (surfaceMode, 1), { note (46) } },
    { nth (surfaceMode, 2), { note (44) } },
    { nth (surfaceMode, 3), { note (48) } },
};
static_assert (areSound (lamps));

}

extern const Model vestaxVci300;
const Model vestaxVci300 {
    .number = 26,
    .controls = controls,
    .lamps = lamps,
    .jog = { .bend = 0.01, .scratch = 0.14, .stepsPerUnit = 12.5, .touchNeedsScratchMode = true },
    .clearsCache = true,
    .remark = "Vestax VCI-300: the lamps' numbers are not those of the buttons. The wheels send a position "
              "of 14 bits, 1600 to a turn. Shift makes the hot cues delete themselves and the loop roll.",
};
}
