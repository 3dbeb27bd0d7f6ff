#include "midi/native/table/ModelTable.h"

namespace controllers
{
namespace
{
using namespace midi;
using enum FunctionId;

constexpr Control controls[] {
    // Playing
    { play, byChannel (note (27)) },
    { cue, byChannel (note (28)) },
    { nth (hotCue, 1), byChannel (note (9)), Form::press, plain },
    { nth (hotCue, 2), byChannel (note (8)), Form::press, plain },
    { nth (hotCue, 3), byChannel (note (7)), Form::press, plain },
    { nth (hotCue, 4), byChannel (note (6)), Form::press, plain },
    { nth (hotCue, 5), byChannel (note (14)), Form::press, plain },
    { nth (hotCue, 6), byChannel (note (13)), Form::press, plain },
    { nth (hotCue, 7), byChannel (note (12)), Form::press, plain },
    { nth (hotCue, 8), byChannel (note (11)), Form::press, plain },
    { nth (deleteHotCue, 1), byChannel (note (9)), Form::press, shifted },
    { nth (deleteHotCue, 2), byChannel (note (8)), Form::press, shifted },
    { nth (deleteHotCue, 3), byChannel (note (7)), Form::press, shifted },
    { nth (deleteHotCue, 4), byChannel (note (6)), Form::press, shifted },
    { nth (deleteHotCue, 5), byChannel (note (14)), Form::press, shifted },
    { nth (deleteHotCue, 6), byChannel (note (13)), Form::press, shifted },
    { nth (deleteHotCue, 7), byChannel (note (12)), Form::press, shifted },
    { nth (deleteHotCue, 8), byChannel (note (11)), Form::press, shifted },
    // Tempo and key
    { sync, byChannel (note (29)) },
    { pitch, byChannel (cc (33)), Form::centre64 },
    { nudgeMinus, byChannel (note (25)) },
    { nudgePlus, byChannel (note (30)) },
    // Jog wheels
    { jog, byChannel (cc (32)), Form::twosComplement },
    { jogTouch, byChannel (note (31)) },
    // Mixer
    { gain, byChannel (cc (55)), Form::twosComplement },
    { gain, { cc (16, 6), cc (21, 7), cc (16, 8), cc (21, 9) }, Form::absolute },
    { gainReset, byChannel (note (4)) },
    { eqHigh, byChannel (cc (54)), Form::twosComplement },
    { eqHigh, { cc (17, 6), cc (22, 7), cc (17, 8), cc (22, 9) }, Form::absolute },
    { eqMid, byChannel (cc (53)), Form::twosComplement },
    { eqMid, { cc (18, 6), cc (23, 7), cc (18, 8), cc (23, 9) }, Form::absolute },
    { eqLow, byChannel (cc (52)), Form::twosComplement },
    { eqLow, { cc (19, 6), cc (24, 7), cc (19, 8), cc (24, 9) }, Form::absolute },
    { eqHighReset, byChannel (note (3)) },
    { eqMidReset, byChannel (note (2)) },
    { eqLowReset, byChannel (note (1)) },
    { eqHighKill, { note (6, 6), note (2, 7), note (6, 8), note (2, 9) } },
    { eqMidKill, { note (9, 6), note (1, 7), note (9, 8), note (1, 9) } },
    { eqLowKill, { note (8, 6), note (4, 7), note (8, 8), note (4, 9) } },
    { volume, { cc (20, 6), cc (25, 7), cc (20, 8), cc (25, 9) }, Form::absolute },
    { pfl, { note (7, 6), note (3, 7), note (7, 8), note (3, 9) } },
    { crossfader, { cc (15, 6) }, Form::absolute },
    { crossfader, { cc (15, 8) }, Form::absolute },
    { crossfaderCurve, { cc (14, 6) }, Form::absolute },
    { crossfaderCurve, { cc (14, 8) }, Form::absolute },
    { masterVolume, { cc (11, 6) }, Form::absolute },
    { masterVolume, { cc (11, 8) }, Form::absolute },
    { monitorVolume, { cc (12, 6) }, Form::absolute },
    { monitorVolume, { cc (12, 8) }, Form::absolute },
    { monitorMix, { cc (13, 6) }, Form::absolute },
    { monitorMix, { cc (13, 8) }, Form::absolute },
    // Effects and instruments
    { nth (slicegatePad, 1), byChannel (note (19)) },
    { nth (slicegatePad, 2), byChannel (note (18)) },
    { nth (slicegatePad, 3), byChannel (note (17)) },
    { nth (slicegatePad, 4), byChannel (note (16)) },
    { nth (slicegatePad, 5), byChannel (note (24)) },
    { nth (slicegatePad, 6), byChannel (note (23)) },
    { nth (slicegatePad, 7), byChannel (note (22)) },
    { nth (slicegatePad, 8), byChannel (note (21)) },
    // Layers of the surface
    { shift, byChannel (note (26)) },
};
static_assert (areSound (controls));

constexpr Lamp lamps[] {
    // Playing
    { play, byChannel (note (27)) },
    { cue, byChannel (note (28)) },
    { nth (hotCue, 1), byChannel (note (9)) },
    { nth (hotCue, 2), byChannel (note (8)) },
    { nth (hotCue, 3), byChannel (note (7)) },
    { nth (hotCue, 4), byChannel (note (6)) },
    { nth (hotCue, 5), byChannel (note (14)) },
    { nth (hotCue, 6), byChannel (note (13)) },
    { nth (hotCue, 7), byChannel (note (12)) },
    { nth (hotCue, 8), byChannel (note (11)) },
    // Tempo and key
    { sync, byChannel (note (29)) },
    // Mixer
    { gain, byChannel (cc (55)), fullScale },
    { eqHigh, byChannel (cc (54)), fullScale },
    { eqMid, byChannel (cc (53)), fullScale },
    { eqLow, byChannel (cc (52)), fullScale },
    { eqHighKill, { note (6, 6), note (2, 7), note (6, 8), note (2, 9) } },
    { eqMidKill, { note (9, 6), note (1, 7), note (9, 8), note (1, 9) } },
    { eqLowKill, { note (8, 6), note (4, 7), note (8, 8), note (4, 9) } },
    { pfl, { note (7, 6), note (3, 7), note (7, 8), note (3, 9) } },
    { level, { cc (34, 6), cc (35, 7), cc (34, 8), cc (35, 9) }, fullScale },
    { nth (masterLevel, 1), { cc (31, 6) }, fullScale },
    { nth (masterLevel, 1), { cc (31, 8) }, fullScale },
    { nth (masterLevel, 2), { cc (32, 6) }, fullScale },
    { nth (masterLevel, 2), { cc (32, 8) }, fullScale },
    // Effects and instruments
    { nth (slicegatePad, 1), byChannel (note (19)) },
    { nth (slicegatePad, 2), byChannel (note (18)) },
    { nth (slicegatePad, 3), byChannel (note (17)) },
    { nth (slicegatePad, 4), byChannel (note (16)) },
    { nth (slicegatePad, 5), byChannel (note (24)) },
    { nth (slicegatePad, 6), byChannel (note (23)) },
    { nth (slicegatePad, 7), byChannel (note (22)) },
    { nth (slicegatePad, 8), byChannel (note (21)) },
    // Layers of the surface
    { shift, byChannel (note (26)) },
};
static_assert (areSound (lamps));

}

extern const Model djTechKontrolMixerOne;
const Model djTechKontrolMixerOne {
    .number = 22,
    .controls = controls,
    .lamps = lamps,
    .jog = { .bend = 0.005, .scratch = 0.1 },
    .remark = "DJ-Tech Kontrol One and Mixer One: the channel is the deck, and the mixer's second layer has "
              "channels of its own. Pads 1 to 8 are hot cues, which shift deletes, 9 to 16 Slicegate pads.",
};
}
