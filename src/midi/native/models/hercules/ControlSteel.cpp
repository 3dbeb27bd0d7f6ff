#include "midi/native/table/ModelTable.h"

namespace controllers
{
namespace
{
using namespace midi;
using enum FunctionId;

constexpr Control controls[] {
    // Playing
    { play, { cc (11), cc (35) } },
    { stop, { cc (13), cc (37) } },
    { cue, { cc (12), cc (36) } },
    { nth (hotCue, 1), { cc (1), cc (25) }, Form::press, inDeckMode (0) },
    { nth (hotCue, 1), { cc (102), cc (108) }, Form::press, inDeckMode (1) },
    { nth (hotCue, 2), { cc (2), cc (26) }, Form::press, inDeckMode (0) },
    { nth (hotCue, 2), { cc (103), cc (109) }, Form::press, inDeckMode (1) },
    { nth (hotCue, 3), { cc (3), cc (27) }, Form::press, inDeckMode (0) },
    { nth (hotCue, 3), { cc (104), cc (110) }, Form::press, inDeckMode (1) },
    { nth (hotCue, 4), { cc (4), cc (28) }, Form::press, inDeckMode (0) },
    { nth (hotCue, 4), { cc (105), cc (111) }, Form::press, inDeckMode (1) },
    { nth (hotCue, 5), { cc (5), cc (29) }, Form::press, inDeckMode (0) },
    { nth (hotCue, 6), { cc (6), cc (30) }, Form::press, inDeckMode (0) },
    { nth (hotCue, 7), { cc (100), cc (106) }, Form::press, inDeckMode (0) },
    { nth (hotCue, 8), { cc (101), cc (107) }, Form::press, inDeckMode (0) },
    // Tempo and key
    { sync, { cc (7), cc (31) } },
    { pitch, { cc (49), cc (59) }, Form::centre63 },
    { pitchReset, { cc (17), cc (32) } },
    { keyLock, { cc (8), cc (21) } },
    // Loops
    { searchBack, { cc (9), cc (33) } },
    { searchForward, { cc (10), cc (34) } },
    // Jog wheels
    { jog, { cc (47), cc (48) }, Form::twosComplement },
    { scratchMode, { cc (41), cc (41) } },
    // Mixer
    { gain, { cc (51), cc (61) }, Form::absolute },
    { eqHigh, { cc (52), cc (62) }, Form::absolute },
    { eqMid, { cc (53), cc (63) }, Form::absolute },
    { eqLow, { cc (54), cc (64) }, Form::absolute },
    { eqHighKill, { cc (14), cc (38) } },
    { eqMidKill, { cc (15), cc (39) } },
    { eqLowKill, { cc (16), cc (40) } },
    { volume, { cc (50), cc (60) }, Form::absolute },
    { pfl, { cc (20), cc (24) } },
    { balance, { cc (55), cc (55), cc (55), cc (55) }, Form::absolute },
    { crossfader, { cc (57) }, Form::absolute },
    { masterVolume, { cc (56) }, Form::absolute },
    { monitorMix, { cc (58) }, Form::absolute },
    // Effects and instruments
    { nth (slicegatePad, 1), { cc (102), cc (108) }, Form::press, inDeckMode (0) },
    { nth (slicegatePad, 1), { cc (1), cc (25) }, Form::press, inDeckMode (1) },
    { nth (slicegatePad, 2), { cc (103), cc (109) }, Form::press, inDeckMode (0) },
    { nth (slicegatePad, 2), { cc (2), cc (26) }, Form::press, inDeckMode (1) },
    { nth (slicegatePad, 3), { cc (104), cc (110) }, Form::press, inDeckMode (0) },
    { nth (slicegatePad, 3), { cc (3), cc (27) }, Form::press, inDeckMode (1) },
    { nth (slicegatePad, 4), { cc (105), cc (111) }, Form::press, inDeckMode (0) },
    { nth (slicegatePad, 4), { cc (4), cc (28) }, Form::press, inDeckMode (1) },
    { nth (slicegatePad, 5), { cc (5), cc (29) }, Form::press, inDeckMode (1) },
    { nth (slicegatePad, 6), { cc (6), cc (30) }, Form::press, inDeckMode (1) },
    { nth (slicegatePad, 7), { cc (100), cc (106) }, Form::press, inDeckMode (1) },
    { nth (slicegatePad, 8), { cc (101), cc (107) }, Form::press, inDeckMode (1) },
    // Library
    { load, { cc (18), cc (22) } },
    { playlistUp, { cc (42) } },
    { playlistDown, { cc (43) } },
    { directoryUp, { cc (44) } },
    { directoryDown, { cc (45) } },
    // Layers of the surface
    { deckModeFlip, { cc (19), cc (23) } },
};
static_assert (areSound (controls));

constexpr Lamp lamps[] {
    // Playing
    { play, { cc (11), cc (35) }, steady },
    { play, { cc (59), cc (83) }, ownBlink },
    { cue, { cc (12), cc (36) }, steady },
    { cue, { cc (60), cc (84) }, ownBlink },
    { nth (hotCue, 1), { cc (1), cc (25) }, light, inDeckMode (0) },
    { nth (hotCue, 1), { cc (102), cc (108) }, light, inDeckMode (1) },
    { nth (hotCue, 2), { cc (2), cc (26) }, light, inDeckMode (0) },
    { nth (hotCue, 2), { cc (103), cc (109) }, light, inDeckMode (1) },
    { nth (hotCue, 3), { cc (3), cc (27) }, light, inDeckMode (0) },
    { nth (hotCue, 3), { cc (104), cc (110) }, light, inDeckMode (1) },
    { nth (hotCue, 4), { cc (4), cc (28) }, light, inDeckMode (0) },
    { nth (hotCue, 4), { cc (105), cc (111) }, light, inDeckMode (1) },
    { nth (hotCue, 5), { cc (5), cc (29) }, light, inDeckMode (0) },
    { nth (hotCue, 6), { cc (6), cc (30) }, light, inDeckMode (0) },
    { nth (hotCue, 7), { cc (100), cc (106) }, light, inDeckMode (0) },
    { nth (hotCue, 8), { cc (101), cc (107) }, light, inDeckMode (0) },
    // Tempo and key
    { sync, { cc (7), cc (31) }, steady },
    { sync, { cc (55), cc (79) }, ownBlink },
    { pitchReset, { cc (17), cc (32) } },
    { keyLock, { cc (8), cc (21) } },
    // Jog wheels
    { scratchMode, { cc (41) } },
    // Mixer
    { eqHighKill, { cc (14), cc (38) } },
    { eqMidKill, { cc (15), cc (39) } },
    { eqLowKill, { cc (16), cc (40) } },
    { pfl, { cc (20), cc (24) } },
    // Effects and instruments
    { nth (slicegatePad, 1), { cc (102), cc (108) }, light, inDeckMode (0) },
    { nth (slicegatePad, 1), { cc (1), cc (25) }, light, inDeckMode (1) },
    { nth (slicegatePad, 2), { cc (103), cc (109) }, light, inDeckMode (0) },
    { nth (slicegatePad, 2), { cc (2), cc (26) }, light, inDeckMode (1) },
    { nth (slicegatePad, 3), { cc (104), cc (110) }, light, inDeckMode (0) },
    { nth (slicegatePad, 3), { cc (3), cc (27) }, light, inDeckMode (1) },
    { nth (slicegatePad, 4), { cc (105), cc (111) }, light, inDeckMode (0) },
    { nth (slicegatePad, 4), { cc (4), cc (28) }, light, inDeckMode (1) },
    { nth (slicegatePad, 5), { cc (5), cc (29) }, light, inDeckMode (1) },
    { nth (slicegatePad, 6), { cc (6), cc (30) }, light, inDeckMode (1) },
    { nth (slicegatePad, 7), { cc (100), cc (106) }, light, inDeckMode (1) },
    { nth (slicegatePad, 8), { cc (101), cc (107) }, light, inDeckMode (1) },
    // Layers of the surface
    { deckModeFlip, { cc (19), cc (23) } },
};
static_assert (areSound (lamps));

}

extern const Model herculesControlSteel;
const Model herculesControlSteel {
    .number = 24,
    .controls = controls,
    .lamps = lamps,
    .jog = { .bend = 0.005, .scratch = 0.1, .feelsHand = false },
    .clearsCache = true,
    .remark = "Hercules Control Steel: as the Console RMX, with twelve pads for each deck.",
};
}
