#include "midi/native/table/ModelTable.h"

namespace controllers
{
namespace
{
using namespace midi;
using enum FunctionId;

constexpr Control controls[] {
    // Playing
    { play, { note (50), note (54) } },
    { cue, { note (52), note (56) }, Form::press, inDeckMode (0) },
    { cueGoto, { note (51), note (55) }, Form::press, inDeckMode (0) },
    { setCue, { note (53), note (57) }, Form::press, inDeckMode (0) },
    { nth (hotCue, 1), { note (53), note (57) }, Form::press, inDeckMode (1) },
    { nth (hotCue, 2), { note (51), note (55) }, Form::press, inDeckMode (1) },
    { nth (hotCue, 3), { note (52), note (56) }, Form::press, inDeckMode (1) },
    // Tempo and key
    { sync, { note (70), note (71) } },
    { pitch, { cc (14), cc (15) }, Form::centreInverted },
    { nudgeMinus, { note (59), note (61) } },
    { nudgePlus, { note (58), note (60) } },
    // Loops
    { loop, { note (101), note (103) } },
    { searchBack, { note (66), note (69) } },
    { searchForward, { note (68), note (67) } },
    { snap, { note (99) } },
    // Jog wheels
    { jogBend, { cc (18), cc (19) }, Form::centred },
    { jogScratch, { cc (16), cc (17) }, Form::centred },
    { jogTouch, { note (48), note (49) } },
    // Mixer
    { gain, { cc (20), cc (24) }, Form::absolute },
    { eqHigh, { cc (21), cc (25) }, Form::absolute },
    { eqMid, { cc (22), cc (26) }, Form::absolute },
    { eqLow, { cc (23), cc (27) }, Form::absolute },
    { volume, { cc (12), cc (13) }, Form::absolute },
    { pfl, { note (72), note (73) } },
    { balance, { cc (31), cc (31), cc (31), cc (31) }, Form::absolute },
    { crossfader, { cc (8) }, Form::absolute },
    { masterVolume, { cc (7) }, Form::absolute },
    { monitorVolume, { cc (88) }, Form::absolute },
    { monitorMix, { cc (89) }, Form::absolute },
    // Effects and instruments
    { nth (effectOn, 1), { note (74), note (75) } },
    { nth (effectParam, 1), { cc (70), cc (84) }, Form::absolute },
    { nth (effectParam, 2), { cc (71), cc (85) }, Form::absolute },
    { nth (effectParam, 3), { cc (72), cc (86) }, Form::absolute },
    // Library
    { load, { note (96), note (97) } },
    { playlistUp, { note (92) }, Form::press, plain },
    { playlistDown, { note (93) }, Form::press, plain },
    { directoryUp, { note (92) }, Form::press, shifted },
    { directoryDown, { note (93) }, Form::press, shifted },
    { decksShown, { note (98) } },
    // Layers of the surface
    { shift, { note (100) }, Form::press, always, Decks::chosen },
    { deckModeFlip, { note (102), note (104) } },
};
static_assert (areSound (controls));

constexpr Lamp lamps[] {
    // Loops
    { loop, { note (101), note (103) } },
    { snap, { cc (99) } },
    // Library
    { decksShown, { cc (98) } },
    // Layers of the surface
    { shift, { cc (100) }, light, always, Decks::chosen },
    { deckModeFlip, { note (102), note (104) } },
};
static_assert (areSound (lamps));

}

extern const Model vestaxVci100;
const Model vestaxVci100 {
    .number = 7,
    .controls = controls,
    .lamps = lamps,
    .jog = { .bend = 0.16, .scratch = 5.0, .law = Jog::Law::power },
    .clearsCache = true,
    .remark = "Vestax VCI-100: the wheels send on other controllers while a hand is on them. Function keys 1 "
              "and 2 show two or four decks and snap, 3 is shift.",
};
}
