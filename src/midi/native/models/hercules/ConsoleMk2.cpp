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
    // Jog wheels
    { jog, { cc (54), cc (55) }, Form::twosComplement },
    // Mixer
    { eqHigh, { cc (48), cc (45) }, Form::absolute },
    { eqMid, { cc (47), cc (44) }, Form::absolute },
    { eqLow, { cc (46), cc (43) }, Form::absolute },
    { volume, { cc (50), cc (51) }, Form::absolute },
    { pfl, { cc (33), cc (34) } },
    { crossfader, { cc (49) }, Form::absolute },
    // Effects and instruments
    { nth (effectOn, 1), { cc (15), cc (16) }, Form::press, inDeckMode (0) },
    { nth (effectOn, 2), { cc (14), cc (17) }, Form::press, inDeckMode (0) },
    { nth (effectOn, 3), { cc (13), cc (18) }, Form::press, inDeckMode (0) },
    // Library
    { load, { cc (27), cc (28) } },
    { playlistUp, { cc (11), cc (5) } },
    { playlistDown, { cc (12), cc (6) } },
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
    // Effects and instruments
    { nth (effectOn, 1), { cc (15), cc (16) }, light, inDeckMode (0) },
    { nth (effectOn, 2), { cc (14), cc (17) }, light, inDeckMode (0) },
    { nth (effectOn, 3), { cc (13), cc (18) }, light, inDeckMode (0) },
};
static_assert (areSound (lamps));

/** Asks for the place of every fader. */
constexpr Message wake[] { message (0xb0, 127, 127) };

}

extern const Model herculesConsoleMk2;
const Model herculesConsoleMk2 {
    .number = 1,
    .controls = controls,
    .lamps = lamps,
    .jog = { .bend = 0.005, .scratch = 0.14, .feelsHand = false },
    .wake = wake,
    .clearsCache = true,
    .remark = "Hercules Console MK2: controllers only, lamps too. The source buttons change buttons 1 to 3 "
              "between effects and hot cues; previous and next track move in the list, which no other "
              "control does.",
};
}
