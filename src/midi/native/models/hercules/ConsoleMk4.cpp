#include "midi/native/table/ModelTable.h"

namespace controllers
{
namespace
{
using namespace midi;
using enum FunctionId;

constexpr Control controls[] {
    // Playing
    { play, { note (15), note (35) } },
    { cue, { note (14), note (34) } },
    { nth (hotCue, 1), { note (1), note (21) }, Form::press, inDeckMode (0) },
    { nth (hotCue, 2), { note (2), note (22) }, Form::press, inDeckMode (0) },
    { nth (hotCue, 3), { note (3), note (23) }, Form::press, inDeckMode (0) },
    { nth (hotCue, 4), { note (4), note (24) } },
    { nth (hotCue, 5), { note (5), note (25) } },
    { nth (hotCue, 6), { note (6), note (26) } },
    { nth (hotCue, 7), { note (7), note (27) } },
    { nth (hotCue, 8), { note (8), note (28) } },
    // Tempo and key
    { sync, { note (18), note (38) } },
    { pitch, { cc (50), cc (51) }, Form::twosComplement },
    { nudgeMinus, { note (10), note (30) } },
    { nudgePlus, { note (11), note (31) } },
    // Loops
    { searchBack, { note (12), note (32) } },
    { searchForward, { note (13), note (33) } },
    // Jog wheels
    { jog, { cc (48), cc (49) }, Form::twosComplement },
    { scratchMode, { note (45), note (45) } },
    // Mixer
    { eqHigh, { cc (53), cc (58) }, Form::absolute },
    { eqMid, { cc (54), cc (59) }, Form::absolute },
    { eqLow, { cc (55), cc (60) }, Form::absolute },
    { volume, { cc (52), cc (57) }, Form::absolute },
    { pfl, { note (16), note (36) } },
    { crossfader, { cc (56) }, Form::absolute },
    { monitorMix, { cc (61) }, Form::absolute },
    // Effects and instruments
    { nth (effectOn, 1), { note (1), note (21) }, Form::press, inDeckMode (1) },
    { nth (effectOn, 2), { note (2), note (22) }, Form::press, inDeckMode (1) },
    { nth (effectOn, 3), { note (3), note (23) }, Form::press, inDeckMode (1) },
    // Library
    { load, { note (17), note (37) } },
    { playlistUp, { note (41) }, Form::press, inSurfaceMode (0) },
    { playlistDown, { note (42) }, Form::press, inSurfaceMode (0) },
    { directoryUp, { note (41) }, Form::press, inSurfaceMode (1) },
    { directoryDown, { note (42) }, Form::press, inSurfaceMode (1) },
    // Layers of the surface
    { deckModeFlip, { note (19), note (39) } },
    { nth (surfaceMode, 1), { note (43) } },
    { nth (surfaceMode, 2), { note (44) } },
};
static_assert (areSound (controls));

constexpr Lamp lamps[] {
    // Playing
    { play, { note (15), note (35) }, steady },
    { play, { note (63), note (83) }, ownBlink },
    { cue, { note (14), note (34) } },
    { nth (hotCue, 1), { note (1), note (21) }, light, inDeckMode (0) },
    { nth (hotCue, 2), { note (2), note (22) }, light, inDeckMode (0) },
    { nth (hotCue, 3), { note (3), note (23) }, light, inDeckMode (0) },
    { nth (hotCue, 4), { note (4), note (24) } },
    { nth (hotCue, 5), { note (5), note (25) } },
    { nth (hotCue, 6), { note (6), note (26) } },
    { nth (hotCue, 7), { note (7), note (27) } },
    { nth (hotCue, 8), { note (8), note (28) } },
    // Tempo and key
    { sync, { note (18), note (38) }, steady },
    { sync, { note (66), note (86) }, ownBlink },
    { nudgeMinus, { note (10), note (30) }, steady },
    { nudgeMinus, { note (58), note (78) }, ownBlink },
    { nudgePlus, { note (11), note (31) } },
    // Jog wheels
    { scratchMode, { note (45) } },
    // Mixer
    { pfl, { note (16), note (36) } },
    // Effects and instruments
    { nth (effectOn, 1), { note (1), note (21) }, light, inDeckMode (1) },
    { nth (effectOn, 2), { note (2), note (22) }, light, inDeckMode (1) },
    { nth (effectOn, 3), { note (3), note (23) }, light, inDeckMode (1) },
    // Layers of the surface
    { deckModeFlip, { note (19), note (39) } },
};
static_assert (areSound (lamps));

/** Asks for the place of every fader. */
constexpr Message wake[] { message (0xb0, 127, 127) };

}

extern const Model herculesConsoleMk4;
const Model herculesConsoleMk4 {
    .number = 41,
    .controls = controls,
    .lamps = lamps,
    .jog = { .bend = 0.005, .scratch = 0.1, .feelsHand = false },
    .wake = wake,
    .clearsCache = true,
    .remark = "Hercules Console MK4: as the Control MP3 e2. Some lamps' numbers are untried.",
};
}
