#include "midi/native/table/ModelTable.h"

namespace controllers
{
namespace
{
using namespace midi;
using enum FunctionId;

constexpr Control controls[] {
    // Playing
    { play, { cc (8), cc (2) } },
    { cue, { cc (9), cc (3) } },
    { nth (hotCue, 1), { cc (15), cc (16) }, Form::press, inDeckMode (1) },
    { nth (hotCue, 2), { cc (14), cc (17) }, Form::press, inDeckMode (1) },
    { nth (hotCue, 3), { cc (13), cc (18) }, Form::press, inDeckMode (1) },
    // Tempo and key
    { sync, { cc (10), cc (4) } },
    { pitch, { cc (52), cc (53) }, Form::twosComplement },
    { nudgeMinus, { cc (20), cc (24) } },
    { nudgePlus, { cc (19), cc (23) } },
    { keyLock, { cc (22), cc (26) } },
    // Loops
    { searchBack, { cc (11), cc (5) } },
    { searchForward, { cc (12), cc (6) } },
    // Jog wheels
    { jog, { cc (54), cc (55) }, Form::twosComplement },
    // Mixer
    { eqHigh, { cc (48), cc (45) }, Form::absolute },
    { eqMid, { cc (47), cc (44) }, Form::absolute },
    { eqLow, { cc (46), cc (43) }, Form::absolute },
    { volume, { cc (50), cc (51) }, Form::absolute },
    { pfl, { cc (21), cc (25) } },
    { crossfader, { cc (49) }, Form::absolute },
    // Effects and instruments
    { nth (effectOn, 1), { cc (15), cc (16) }, Form::press, inDeckMode (0) },
    { nth (effectOn, 2), { cc (14), cc (17) }, Form::press, inDeckMode (0) },
    { nth (effectOn, 3), { cc (13), cc (18) }, Form::press, inDeckMode (0) },
    // Library
    { load, { cc (27), cc (28) } },
    { playlistSelect, { cc (57) }, Form::sign },
    // Layers of the surface
    { deckModeFlip, { cc (7), cc (1) } },
};
static_assert (areSound (controls));

constexpr Lamp lamps[] {
    // Playing
    { play, { cc (0), cc (5) }, ownBlink },
    { play, { cc (8), cc (2) }, steady },
    { cue, { cc (9), cc (3) } },
    { nth (hotCue, 1), { cc (15), cc (16) }, light, inDeckMode (1) },
    { nth (hotCue, 2), { cc (14), cc (17) }, light, inDeckMode (1) },
    { nth (hotCue, 3), { cc (13), cc (18) }, light, inDeckMode (1) },
    // Tempo and key
    { sync, { cc (10), cc (4) } },
    { keyLock, { cc (22), cc (26) } },
    // Mixer
    { pfl, { cc (126), cc (125) } },
    // Effects and instruments
    { nth (effectOn, 1), { cc (15), cc (16) }, light, inDeckMode (0) },
    { nth (effectOn, 2), { cc (14), cc (17) }, light, inDeckMode (0) },
    { nth (effectOn, 3), { cc (13), cc (18) }, light, inDeckMode (0) },
};
static_assert (areSound (lamps));

}

extern const Model herculesControlMp3;
const Model herculesControlMp3 {
    .number = 16,
    .controls = controls,
    .lamps = lamps,
    .jog = { .bend = 0.005, .scratch = 0.14, .feelsHand = false },
    .clearsCache = true,
    .remark = "Hercules Control MP3: as the Console MK2, with a joystick for the list.",
};
}
