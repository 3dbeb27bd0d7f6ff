#include "midi/native/table/ModelTable.h"

namespace controllers
{
namespace
{
using namespace midi;
using enum FunctionId;

constexpr Control controls[] {
    // Playing
    { play, byChannel (note (50), 2) },
    { cue, byChannel (note (53), 2) },
    { cuePlay, byChannel (note (51), 2) },
    // Tempo and key
    { sync, byChannel (note (70), 2) },
    { pitch, byChannel (cc (14), 2), Form::centreInverted },
    { nudgeMinus, byChannel (note (34), 2) },
    { nudgePlus, byChannel (note (35), 2) },
    // Loops
    { loop, byChannel (note (32), 2) },
    { loopHalf, byChannel (note (33), 2) },
    { loopDouble, byChannel (note (66), 2) },
    { searchBack, byChannel (note (55), 2) },
    { searchForward, byChannel (note (56), 2) },
    { startPoint, byChannel (note (54), 2) },
    // Jog wheels
    { jog, byChannel (cc (16), 2), Form::centred },
    { jogTouch, byChannel (note (46), 2) },
    // Mixer
    { gain, byChannel (cc (20), 2), Form::absolute },
    { eqHigh, byChannel (cc (21), 2), Form::absolute },
    { eqMid, byChannel (cc (22), 2), Form::absolute },
    { eqLow, byChannel (cc (23), 2), Form::absolute },
    { volume, byChannel (cc (12), 2), Form::absolute },
    { pfl, byChannel (note (37), 2) },
    { crossfader, { cc (8, 3) }, Form::absolute },
    // Effects and instruments
    { filter, byChannel (cc (17), 2), Form::centred },
    { nth (effectOn, 1), { note (41, 3), note (40, 3) } },
    { dryWet, { cc (81, 3), cc (82, 3) }, Form::absolute },
    // Library
    { load, { note (96, 3), note (97, 3) } },
    { playlistUp, { note (92, 3) }, Form::press, plain },
    { playlistDown, { note (93, 3) }, Form::press, plain },
    { directoryUp, { note (92, 3) }, Form::press, shifted },
    { directoryDown, { note (93, 3) }, Form::press, shifted },
    // Layers of the surface
    { shift, { note (38, 3) }, Form::press, always, Decks::chosen },
    { deckModeFlip, byChannel (note (36), 2) },
};
static_assert (areSound (controls));

constexpr Lamp lamps[] {
    // Playing
    { play, byChannel (note (50), 2) },
    { cue, byChannel (note (53), 2) },
    { cuePlay, byChannel (note (51), 2) },
    // Tempo and key
    { sync, byChannel (note (70), 2) },
    // Loops
    { loop, byChannel (note (32), 2) },
    // Mixer
    { pfl, byChannel (note (37), 2) },
    { level, byChannel (note (41), 2), segment (1, 5) },
    { level, byChannel (note (42), 2), segment (2, 5) },
    { level, byChannel (note (43), 2), segment (3, 5) },
    { level, byChannel (note (44), 2), segment (4, 5) },
    { level, byChannel (note (45), 2), segment (5, 5) },
    // Effects and instruments
    { nth (effectOn, 1), { note (41, 3), note (40, 3) } },
    // Layers of the surface
    { shift, { note (38, 3) }, light, always, Decks::chosen },
    { deckModeFlip, byChannel (note (36), 2) },
};
static_assert (areSound (lamps));

}

extern const Model vestaxTyphoon;
const Model vestaxTyphoon {
    .number = 39,
    .controls = controls,
    .lamps = lamps,
    .jog = { .bend = 0.16, .scratch = 5.0, .law = Jog::Law::power },
    .clearsCache = true,
    .remark = "Vestax Typhoon: the channel is the deck, channel 3 the common controls. In its second layer a "
              "wheel turns the filter.",
};
}
