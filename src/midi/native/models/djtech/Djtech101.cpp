#include "midi/native/table/ModelTable.h"

namespace controllers
{
namespace
{
using namespace midi;
using enum FunctionId;

constexpr Control controls[] {
    // Playing
    { play, { note (9), note (7) } },
    { play, byChannel (note (42), 2) },
    { cue, { note (3), note (4) } },
    { cue, byChannel (note (43), 2) },
    // Tempo and key
    { pitch, byChannel (bend (1), 2), Form::bend },
    // Jog wheels
    { jog, { cc (19), cc (21) }, Form::centred },
    { jogBend, byChannel (cc (53), 2), Form::centred },
    { jogScratch, byChannel (cc (54), 2), Form::centred },
    { jogTouch, byChannel (note (32), 2) },
    // Mixer
    { gain, { cc (36), cc (37) }, Form::absolute },
    { gain, { cc (72), cc (79) }, Form::absolute },
    { eqHigh, { cc (38), cc (39) }, Form::absolute },
    { eqHigh, { cc (74), cc (77) }, Form::absolute },
    { eqMid, { cc (40), cc (41) }, Form::absolute },
    { eqMid, { cc (78), cc (75) }, Form::absolute },
    { eqLow, { cc (42), cc (43) }, Form::absolute },
    { eqLow, { cc (76), cc (73) }, Form::absolute },
    { volume, { cc (33), cc (34) }, Form::absolute },
    { volume, { cc (65), cc (66) }, Form::absolute },
    { pfl, { note (1), note (2) } },
    { pfl, { note (33), note (34) } },
    { crossfader, { cc (35) }, Form::absolute },
    { crossfader, { cc (64) }, Form::absolute },
    { masterVolume, { cc (18) }, Form::centred },
    { masterVolume, { cc (67) }, Form::absolute },
    { monitorVolume, { cc (16) }, Form::centred },
    { monitorVolume, { cc (69) }, Form::absolute },
    { monitorMix, { cc (68) }, Form::absolute },
    // Library
    { load, { note (11), note (13) } },
    { load, byChannel (note (31), 2) },
    { playlistSelect, { cc (17), cc (56, 2) }, Form::centred },
    { playlistSelect, { cc (56) }, Form::centred },
    { preview, { note (12) } },
};
static_assert (areSound (controls));

constexpr Lamp lamps[] {
    // Playing
    { play, { note (10), note (7) } },
    { play, byChannel (note (42), 2) },
    { cue, byChannel (note (43), 2) },
    // Mixer
    { pfl, { note (1), note (2) } },
};
static_assert (areSound (lamps));

}

extern const Model djTech101;
const Model djTech101 {
    .number = 31,
    .controls = controls,
    .lamps = lamps,
    .jog = { .bend = 0.01, .scratch = 0.1 },
    .remark = "DJ-Tech 101 series, three units in one table: CDJ-101, whose channel is the deck, DJM-101 and "
              "Mix-101.",
};
}
