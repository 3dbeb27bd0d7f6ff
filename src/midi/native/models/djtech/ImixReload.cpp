#include "midi/native/table/ModelTable.h"

namespace controllers
{
namespace
{
using namespace midi;
using enum FunctionId;

constexpr Control controls[] {
    // Playing
    { play, { note (17), note (47) } },
    { cue, { note (11), note (41) } },
    { nth (hotCue, 1), { note (8), note (32) }, Form::press, plain },
    { nth (hotCue, 2), { note (14), note (38) }, Form::press, plain },
    { nth (hotCue, 3), { note (20), note (44) }, Form::press, plain },
    { nth (storeHotCue, 1), { note (8), note (32) }, Form::press, shifted },
    { nth (storeHotCue, 2), { note (14), note (38) }, Form::press, shifted },
    { nth (storeHotCue, 3), { note (20), note (44) }, Form::press, shifted },
    // Tempo and key
    { sync, { note (5), note (35) } },
    { downbeat, { note (23), note (29) } },
    { pitch, { cc (69), cc (75) }, Form::centre64 },
    { keyLock, { note (3), note (45) } },
    // Loops
    { loop, { note (1), note (25) } },
    { reloop, { note (19), note (43) } },
    { loopHalf, { note (7), note (31) } },
    { loopDouble, { note (13), note (37) } },
    // Jog wheels
    { jogBend, { note (114), note (118) }, Form::stepOn },
    { jogBend, { note (115), note (119) }, Form::stepBack },
    { jogScratch, { note (96), note (98) }, Form::stepOn },
    { jogScratch, { note (97), note (99) }, Form::stepBack },
    { jogSearch, { note (112), note (116) }, Form::stepOn },
    { jogSearch, { note (113), note (117) }, Form::stepBack },
    { jogTouch, { note (50), note (49) } },
    // Mixer
    { gain, { cc (71), cc (81) }, Form::absolute },
    { eqHigh, { cc (78), cc (80) }, Form::absolute },
    { eqMid, { cc (79), cc (72) }, Form::absolute },
    { eqLow, { cc (77), cc (82) }, Form::absolute },
    { eqHighKill, { note (28), note (34) } },
    { eqMidKill, { note (24), note (30) } },
    { eqLowKill, { note (18), note (36) } },
    { volume, { cc (67), cc (66) }, Form::absolute },
    { pfl, { note (21), note (27) } },
    { crossfader, { cc (65) }, Form::absolute },
    { monitorVolume, { cc (73) }, Form::absolute },
    { monitorMix, { cc (74) }, Form::absolute },
    // Effects and instruments
    { nth (effectOn, 1), { note (4), note (16) } },
    { nth (effectOn, 2), { note (10), note (22) } },
    { nth (effectParam, 1), { cc (64), cc (64) }, Form::absolute },
    { nth (effectParam, 2), { cc (68), cc (68) }, Form::absolute },
    { nth (effectParam, 3), { cc (70), cc (70) }, Form::absolute },
    // Library
    { load, { note (40), note (46) } },
    { playlistSelect, { note (100) }, Form::stepOn },
    { playlistSelect, { note (101) }, Form::stepBack },
    { preview, { note (39) } },
    // Layers of the surface
    { shift, { note (2), note (26) } },
};
static_assert (areSound (controls));

constexpr Lamp lamps[] {
    // Playing
    { play, { note (17), note (47) } },
    { cue, { note (11), note (41) } },
    { nth (hotCue, 1), { note (8), note (32) } },
    { nth (hotCue, 2), { note (14), note (38) } },
    { nth (hotCue, 3), { note (20), note (44) } },
    // Tempo and key
    { sync, { note (5), note (35) } },
    { downbeat, { note (23), note (29) } },
    { keyLock, { note (3), note (45) } },
    // Loops
    { loop, { note (1), note (25) } },
    { reloop, { note (19), note (43) } },
    { loopHalf, { note (7), note (31) } },
    { loopDouble, { note (13), note (37) } },
    // Mixer
    { eqHighKill, { note (28), note (34) } },
    { eqMidKill, { note (24), note (30) } },
    { eqLowKill, { note (18), note (36) } },
    { pfl, { note (21), note (27) } },
    // Effects and instruments
    { nth (effectOn, 1), { note (4), note (16) } },
    { nth (effectOn, 2), { note (10), note (22) } },
    // Layers of the surface
    { shift, { note (2), note (26) } },
};
static_assert (areSound (lamps));

}

extern const Model djTechImixReload;
const Model djTechImixReload {
    .number = 11,
    .controls = controls,
    .lamps = lamps,
    .jog = { .bend = 0.005, .scratch = 0.08 },
    .clearsCache = true,
    .remark = "DJ-Tech i-Mix Reload: wheels and list knob send a note for each step, in three layers. While "
              "\"set\" is held the hot cues are stored anew. The sides of the three effect knobs are not "
              "known: they play both decks.",
};
}
