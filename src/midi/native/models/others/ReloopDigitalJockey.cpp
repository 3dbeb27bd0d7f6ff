#include "midi/native/table/ModelTable.h"

namespace controllers
{
namespace
{
using namespace midi;
using enum FunctionId;

constexpr Control controls[] {
    // Playing
    { play, { note (25), note (85) } },
    { cue, { note (24), note (84) } },
    { cuePlay, { note (23), note (83) } },
    // Tempo and key
    { sync, { note (1), note (61) } },
    { pitch, byChannel (bend (1), 2), Form::bend },
    { nudgeMinus, { note (3), note (63) } },
    { nudgePlus, { note (4), note (64) } },
    { keyLock, { note (2), note (62) } },
    // Loops
    { loop, { note (17), note (77) } },
    { loopIn, { note (15), note (75) } },
    { loopOut, { note (16), note (76) } },
    { reloop, { note (18), note (78) } },
    { loopSize, { cc (10), cc (69) }, Form::centred },
    // Jog wheels
    { jog, { cc (11), cc (71) }, Form::centred },
    { jogTouch, { note (29), note (89) } },
    { scratchMode, { note (27), note (87) } },
    { searchMode, { note (26), note (86) } },
    // Mixer
    { gain, { cc (2), cc (62) }, Form::absolute },
    { eqHigh, { cc (3), cc (63) }, Form::absolute },
    { eqMid, { cc (4), cc (64) }, Form::absolute },
    { eqLow, { cc (5), cc (65) }, Form::absolute },
    { eqHighKill, { note (20), note (80) } },
    { eqMidKill, { note (21), note (81) } },
    { eqLowKill, { note (22), note (82) } },
    { volume, { cc (6), cc (66) }, Form::absolute },
    { pfl, { note (5), note (65) } },
    { crossfader, { cc (18) }, Form::absolute },
    { masterVolume, { cc (15) }, Form::absolute },
    { monitorVolume, { cc (16) }, Form::absolute },
    { monitorMix, { cc (17) }, Form::absolute },
    // Effects and instruments
    { nth (effectOn, 1), { note (14), note (69) } },
    // Library
    { load, { note (19), note (79) } },
    { playlistSelect, { cc (19) }, Form::centred },
};
static_assert (areSound (controls));

constexpr Lamp lamps[] {
    // Playing
    { play, { note (25), note (85) } },
    { cue, { note (24), note (84) } },
    { cuePlay, { note (23), note (83) } },
    // Tempo and key
    { keyLock, { note (2), note (62) } },
    // Loops
    { reloop, { note (18), note (78) } },
    // Jog wheels
    { scratchMode, { note (27), note (87) } },
    { searchMode, { note (26), note (86) } },
    // Mixer
    { eqHighKill, { note (20), note (80) } },
    { eqMidKill, { note (21), note (81) } },
    { eqLowKill, { note (22), note (82) } },
    { pfl, { note (5), note (65) } },
    // Effects and instruments
    { nth (effectOn, 1), { note (14), note (69) } },
    { wetOnOff, { note (28), note (88) } },
};
static_assert (areSound (lamps));

}

extern const Model reloopDigitalJockey;
const Model reloopDigitalJockey {
    .number = 30,
    .controls = controls,
    .lamps = lamps,
    .jog = { .bend = 0.01, .scratch = 0.1, .touchNeedsScratchMode = true },
    .isDoubtful = true,
    .remark = "Reloop Digital Jockey, by the numbers of its successor, the Digital Jockey 2 Controller "
              "Edition.",
};
}
