#include "midi/native/table/ModelTable.h"

namespace controllers
{
namespace
{
using namespace midi;
using enum FunctionId;

constexpr Control controls[] {
    // Playing
    { play, byChannel (note (35)) },
    { cue, byChannel (note (34)) },
    { nth (hotCue, 1), byChannel (note (16)) },
    { nth (hotCue, 2), byChannel (note (17)) },
    { nth (hotCue, 3), byChannel (note (18)) },
    { nth (hotCue, 4), byChannel (note (19)) },
    { nth (hotCue, 5), byChannel (note (20)) },
    { nth (hotCue, 6), byChannel (note (21)) },
    { nth (hotCue, 7), byChannel (note (22)) },
    { nth (hotCue, 8), byChannel (note (23)) },
    // Tempo and key
    { sync, byChannel (note (32)) },
    { tap, byChannel (note (33)) },
    { pitch, byChannel (bend (1)), Form::bend },
    { nudgeMinus, byChannel (note (38)) },
    { nudgePlus, byChannel (note (39)) },
    { keyLock, byChannel (note (25)) },
    // Loops
    { loop, byChannel (note (4)) },
    { leap, byChannel (note (5)) },
    { loopSize, byChannel (cc (4)), Form::sign },
    { loopSize, byChannel (cc (5)), Form::sign },
    { searchBack, byChannel (note (36)) },
    { searchForward, byChannel (note (37)) },
    // Jog wheels
    { jog, byChannel (cc (31)), Form::centred },
    { jogTouch, byChannel (note (31)) },
    { scratchMode, byChannel (note (27)) },
    // Mixer
    { gain, { cc (6, 5), cc (7, 5), cc (8, 5), cc (9, 5) }, Form::absolute },
    { eqHigh, { cc (10, 5), cc (11, 5), cc (12, 5), cc (13, 5) }, Form::absolute },
    { eqMid, { cc (14, 5), cc (15, 5), cc (16, 5), cc (17, 5) }, Form::absolute },
    { eqLow, { cc (18, 5), cc (19, 5), cc (20, 5), cc (21, 5) }, Form::absolute },
    { volume, { cc (48, 5), cc (49, 5), cc (50, 5), cc (51, 5) }, Form::absolute },
    { pfl, { midi::none, midi::none, note (50, 5), note (51, 5) } },
    { pfl, { note (48, 5), note (49, 5) }, Form::press, plain },
    { assignLeft, { note (19, 5), note (23, 5), note (27, 5), note (31, 5) } },
    { assignRight, { note (20, 5), note (24, 5), note (28, 5), note (32, 5) } },
    { crossfader, { cc (64, 5) }, Form::absolute },
    { masterVolume, { cc (1, 5) }, Form::absolute },
    { monitorVolume, { cc (4, 5) }, Form::absolute },
    { monitorMix, { cc (5, 5) }, Form::absolute },
    // Effects and instruments
    { nth (effectOn, 1), byChannel (note (1)) },
    { nth (effectOn, 2), byChannel (note (2)) },
    { nth (effectOn, 3), byChannel (note (3)) },
    { nth (effectParam, 1), byChannel (cc (1)), Form::sign },
    { nth (effectParam, 2), byChannel (cc (2)), Form::sign },
    { nth (effectParam, 3), byChannel (cc (3)), Form::sign },
    { dryWet, byChannel (cc (0)), Form::sign },
    { dryWetReset, byChannel (note (0)) },
    { nth (smartKnob, 1), byChannel (cc (6)), Form::sign },
    { nth (smartKnob, 2), byChannel (cc (7)), Form::sign },
    { nth (smartKnobOn, 1), byChannel (note (6)) },
    { nth (smartKnobOn, 2), byChannel (note (7)) },
    { samplerVolume, { cc (2, 5) }, Form::absolute },
    // Library
    { load, byChannel (note (24)) },
    { playlistSelect, { cc (3, 5) }, Form::sign, plain& inSurfaceMode (0) },
    { directorySelect, { cc (3, 5) }, Form::sign, shifted },
    { directoryEnter, { note (49, 5) }, Form::press, shifted },
    { directoryExit, { note (48, 5) }, Form::press, shifted },
    { fileSelect, { cc (3, 5) }, Form::sign, plain& inSurfaceMode (1) },
    { decksShown, { note (3, 5) } },
    // Layers of the surface
    { shift, { note (18, 5) }, Form::press, always, Decks::chosen },
    { nth (surfaceMode, 1), { note (16, 5) } },
    { nth (surfaceMode, 2), { note (17, 5) } },
};
static_assert (areSound (controls));

constexpr Lamp lamps[] {
    // Playing
    { play, byChannel (note (35)), threeStates },
    { cue, byChannel (note (34)), threeStates },
    { nth (hotCue, 1), byChannel (note (16)), threeStates },
    { nth (hotCue, 2), byChannel (note (17)), threeStates },
    { nth (hotCue, 3), byChannel (note (18)), threeStates },
    { nth (hotCue, 4), byChannel (note (19)), threeStates },
    { nth (hotCue, 5), byChannel (note (20)), threeStates },
    { nth (hotCue, 6), byChannel (note (21)), threeStates },
    { nth (hotCue, 7), byChannel (note (22)), threeStates },
    { nth (hotCue, 8), byChannel (note (23)), threeStates },
    // Tempo and key
    { sync, byChannel (note (32)), threeStates },
    { tap, byChannel (note (33)), threeStates },
    { pitch, byChannel (cc (10)), scale (1, 16) },
    { nudgeMinus, byChannel (note (38)), threeStates },
    { nudgePlus, byChannel (note (39)), threeStates },
    { keyLock, byChannel (note (25)), threeStates },
    // Loops
    { loop, byChannel (note (4)), threeStates },
    { leap, byChannel (note (5)), threeStates },
    { loopSize, byChannel (cc (4)), scale (1, 15) },
    { loopSize, byChannel (cc (5)), scale (1, 15) },
    { searchBack, byChannel (note (36)), threeStates },
    { searchForward, byChannel (note (37)), threeStates },
    // Jog wheels
    { scratchMode, byChannel (note (27)), threeStates },
    // Mixer
    { pfl, { note (48, 5), note (49, 5), note (50, 5), note (51, 5) }, threeStates },
    { assignLeft, { note (19, 5), note (23, 5), note (27, 5), note (31, 5) }, threeStates },
    { assignRight, { note (20, 5), note (24, 5), note (28, 5), note (32, 5) }, threeStates },
    { nth (masterLevel, 1), { cc (80, 5) }, scale (48, 63) },
    { nth (masterLevel, 2), { cc (81, 5) }, scale (48, 63) },
    // Effects and instruments
    { nth (effectOn, 1), byChannel (note (1)), threeStates },
    { nth (effectOn, 2), byChannel (note (2)), threeStates },
    { nth (effectOn, 3), byChannel (note (3)), threeStates },
    { nth (effectParam, 1), byChannel (cc (1)), scale (1, 15) },
    { nth (effectParam, 2), byChannel (cc (2)), scale (1, 15) },
    { nth (effectParam, 3), byChannel (cc (3)), scale (1, 15) },
    { dryWet, byChannel (note (0)), threeStates },
    { dryWet, byChannel (cc (0)), scale (1, 15) },
    { nth (smartKnob, 1), byChannel (cc (6)), scale (1, 15) },
    { nth (smartKnob, 2), byChannel (cc (7)), scale (1, 15) },
    { nth (smartKnobOn, 1), byChannel (note (6)), threeStates },
    { nth (smartKnobOn, 2), byChannel (note (7)), threeStates },
    // Library
    { load, byChannel (note (24)), threeStates },
    // Layers of the surface
    { shift, { note (18, 5) }, light, always, Decks::chosen },
    { nth (surfaceMode, 1), { note (16, 5) } },
    { nth (surfaceMode, 2), { note (17, 5) } },
};
static_assert (areSound (lamps));

/** Asks the MM-1 for the place of its faders. */
constexpr Message wake[] { message (0xf0, 0x7f, 0x00, 0x20, 0x7f, 0x03, 0x01, 0xf7) };

}

extern const Model behringerCmdXx1;
const Model behringerCmdXx1 {
    .number = 47,
    .controls = controls,
    .lamps = lamps,
    .jog = { .bend = 0.002, .scratch = 0.04, .touchNeedsScratchMode = true },
    .wake = wake,
    .forcesLamps = true,
    .remark = "Behringer CMD modules. PL-1: channels 1 to 4 are the decks. MM-1: channel 5 is the mixer; the "
              "centre buttons say whether the knob moves in the list or in the files, the middle one is "
              "shift. Other modules send above channel 5.",
};
}
