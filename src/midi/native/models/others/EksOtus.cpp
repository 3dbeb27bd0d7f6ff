#include "midi/native/table/ModelTable.h"

namespace controllers
{
namespace
{
using namespace midi;
using enum FunctionId;

constexpr Control controls[] {
    // Playing
    { play, byChannel (note (42), 2) },
    { cue, byChannel (note (43), 2) },
    { nth (hotCue, 1), byChannel (note (36), 2) },
    { nth (hotCue, 2), byChannel (note (37), 2) },
    { nth (hotCue, 3), byChannel (note (38), 2) },
    { nth (hotCue, 4), byChannel (note (39), 2) },
    { nth (hotCue, 5), byChannel (note (40), 2) },
    { nth (hotCue, 6), byChannel (note (41), 2) },
    { reverse, byChannel (note (44), 2) },
    // Tempo and key
    { sync, byChannel (note (64), 2) },
    { pitch, byChannel (bend (1), 2), Form::bend },
    // Loops
    { loopIn, byChannel (note (57), 2) },
    { loopOut, byChannel (note (58), 2) },
    { reloop, byChannel (note (59), 2) },
    { searchBack, byChannel (note (45), 2) },
    { searchForward, byChannel (note (46), 2) },
    // Jog wheels
    { jog, byChannel (cc (78), 2), Form::eitherCentre },
    { jogScratch, byChannel (cc (96), 2), Form::eitherCentre },
    // Mixer
    { gain, { cc (68), cc (72) }, Form::absolute },
    { gain, { cc (68, 2), cc (72, 2) }, Form::absolute },
    { eqHigh, { cc (69), cc (73) }, Form::absolute },
    { eqHigh, { cc (69, 2), cc (73, 2) }, Form::absolute },
    { eqMid, { cc (70), cc (74) }, Form::absolute },
    { eqMid, { cc (70, 2), cc (74, 2) }, Form::absolute },
    { eqLow, { cc (71), cc (75) }, Form::absolute },
    { eqLow, { cc (71, 2), cc (75, 2) }, Form::absolute },
    { volume, { cc (67), cc (64) }, Form::twosComplement },
    { volume, { cc (67, 2), cc (64, 2) }, Form::twosComplement },
    { pfl, { note (61), note (62) } },
    { pfl, { note (61, 2), note (62, 2) } },
    { crossfader, { cc (76) }, Form::absolute },
    { crossfader, { cc (76, 2) }, Form::absolute },
    { masterVolume, { cc (77) }, Form::absolute },
    { masterVolume, { cc (77, 2) }, Form::absolute },
    // Effects and instruments
    { nth (effectOn, 1), byChannel (note (56), 2) },
    // Library
    { load, byChannel (note (51), 2) },
    { playlistSelect, { cc (66) }, Form::centred },
    { playlistSelect, { cc (66, 2) }, Form::centred },
};
static_assert (areSound (controls));

}

extern const Model eksOtus;
const Model eksOtus {
    .number = 21,
    .controls = controls,
    .jog = { .bend = 0.006, .scratch = 0.04, .feelsHand = false },
    .remark = "EKS Otus in its MIDI mode: the channel is the deck, and both sides send the mixer. No lamps "
              "are known, nor the form of the wheels.",
};
}
