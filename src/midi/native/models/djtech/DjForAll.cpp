#include "midi/native/table/ModelTable.h"

namespace controllers
{
namespace
{
using namespace midi;
using enum FunctionId;

constexpr Control controls[] {
    // Playing
    { play, { note (5), note (1) } },
    { cue, { note (26), note (22) } },
    { nth (hotCue, 1), { note (25), note (14) }, Form::press, plain& inDeckMode (0) & inSurfaceMode (0) },
    { nth (hotCue, 2), { note (21), note (10) }, Form::press, plain& inDeckMode (0) & inSurfaceMode (0) },
    { nth (hotCue, 3), { note (17), note (6) }, Form::press, plain& inDeckMode (0) & inSurfaceMode (0) },
    { nth (hotCue, 4), { note (13), note (2) }, Form::press, plain& inDeckMode (0) & inSurfaceMode (0) },
    { nth (deleteHotCue, 1),
      { note (25), note (14) },
      Form::press,
      shifted& inDeckMode (0) & inSurfaceMode (0) },
    { nth (deleteHotCue, 2),
      { note (21), note (10) },
      Form::press,
      shifted& inDeckMode (0) & inSurfaceMode (0) },
    { nth (deleteHotCue, 3),
      { note (17), note (6) },
      Form::press,
      shifted& inDeckMode (0) & inSurfaceMode (0) },
    { nth (deleteHotCue, 4),
      { note (13), note (2) },
      Form::press,
      shifted& inDeckMode (0) & inSurfaceMode (0) },
    // Tempo and key
    { sync, { note (27), note (3) } },
    // Loops
    { nth (loopBeats, 6), { note (25), note (14) }, Form::press, inDeckMode (1) & inSurfaceMode (0) },
    { nth (loopBeats, 7), { note (21), note (10) }, Form::press, inDeckMode (1) & inSurfaceMode (0) },
    { nth (loopBeats, 8), { note (17), note (6) }, Form::press, inDeckMode (1) & inSurfaceMode (0) },
    { nth (loopBeats, 9), { note (13), note (2) }, Form::press, inDeckMode (1) & inSurfaceMode (0) },
    // Jog wheels
    { jog, { note (55), note (52) }, Form::stepOn },
    { jog, { note (56), note (53) }, Form::stepBack },
    { jogTouch, { note (57), note (54) } },
    { scratchMode, { note (15), note (15) } },
    { searchMode, { note (19), note (19) } },
    // Mixer
    { eqHigh, { cc (36), cc (37) }, Form::absolute },
    { eqMid, { cc (38), cc (39) }, Form::absolute },
    { eqLow, { cc (40), cc (41) }, Form::absolute },
    { eqHighReset, { note (80), note (81) } },
    { eqMidReset, { note (82), note (83) } },
    { eqLowReset, { note (84), note (85) } },
    { volume, { cc (33), cc (34) }, Form::absolute },
    { pfl, { note (24), note (8) } },
    { crossfader, { cc (35) }, Form::absolute },
    { masterVolume, { cc (42) }, Form::absolute },
    // Effects and instruments
    { nth (effectOn, 1), { note (25), note (14) }, Form::press, inSurfaceMode (1) },
    { nth (effectOn, 2), { note (21), note (10) }, Form::press, inSurfaceMode (1) },
    { nth (effectOn, 3), { note (17), note (6) }, Form::press, inSurfaceMode (1) },
    { wetOnOff, { note (13), note (2) }, Form::press, inSurfaceMode (1) },
    { nth (samplerPad, 1), { note (25), note (14) }, Form::press, inDeckMode (2) & inSurfaceMode (0) },
    { nth (samplerPad, 2), { note (21), note (10) }, Form::press, inDeckMode (2) & inSurfaceMode (0) },
    { nth (samplerPad, 3), { note (17), note (6) }, Form::press, inDeckMode (2) & inSurfaceMode (0) },
    { nth (samplerPad, 4), { note (13), note (2) }, Form::press, inDeckMode (2) & inSurfaceMode (0) },
    // Library
    { load, { note (20), note (12) } },
    { playlistSelect, { note (48) }, Form::stepOn },
    { playlistSelect, { note (49) }, Form::stepBack },
    { preview, { note (16) } },
    // Layers of the surface
    { shift, { note (28), note (4) } },
    { nth (deckMode, 1), { note (67), note (70) } },
    { nth (deckMode, 2), { note (66), note (71) } },
    { nth (deckMode, 3), { note (65), note (69) } },
    { surfaceModeFlip, { note (11) } },
};
static_assert (areSound (controls));

constexpr Lamp lamps[] {
    // Playing
    { play, { note (5), note (1) } },
    { cue, { note (26), note (22) } },
    { nth (hotCue, 1), { note (25), note (14) }, light, inDeckMode (0) & inSurfaceMode (0) },
    { nth (hotCue, 2), { note (21), note (10) }, light, inDeckMode (0) & inSurfaceMode (0) },
    { nth (hotCue, 3), { note (17), note (6) }, light, inDeckMode (0) & inSurfaceMode (0) },
    { nth (hotCue, 4), { note (13), note (2) }, light, inDeckMode (0) & inSurfaceMode (0) },
    // Tempo and key
    { sync, { note (27), note (3) } },
    // Loops
    { nth (loopBeats, 6), { note (25), note (14) }, light, inDeckMode (1) & inSurfaceMode (0) },
    { nth (loopBeats, 7), { note (21), note (10) }, light, inDeckMode (1) & inSurfaceMode (0) },
    { nth (loopBeats, 8), { note (17), note (6) }, light, inDeckMode (1) & inSurfaceMode (0) },
    { nth (loopBeats, 9), { note (13), note (2) }, light, inDeckMode (1) & inSurfaceMode (0) },
    // Jog wheels
    { scratchMode, { note (15) } },
    { searchMode, { note (19) } },
    // Effects and instruments
    { nth (effectOn, 1), { note (25), note (14) }, light, inSurfaceMode (1) },
    { nth (effectOn, 2), { note (21), note (10) }, light, inSurfaceMode (1) },
    { nth (effectOn, 3), { note (17), note (6) }, light, inSurfaceMode (1) },
    { wetOnOff, { note (13), note (2) }, light, inSurfaceMode (1) },
    { nth (samplerPad, 1), { note (25), note (14) }, light, inDeckMode (2) & inSurfaceMode (0) },
    { nth (samplerPad, 2), { note (21), note (10) }, light, inDeckMode (2) & inSurfaceMode (0) },
    { nth (samplerPad, 3), { note (17), note (6) }, light, inDeckMode (2) & inSurfaceMode (0) },
    { nth (samplerPad, 4), { note (13), note (2) }, light, inDeckMode (2) & inSurfaceMode (0) },
    // Layers of the surface
    { surfaceModeFlip, { note (11) } },
};
static_assert (areSound (lamps));

}

extern const Model djTechDjForAll;
const Model djTechDjForAll {
    .number = 33,
    .controls = controls,
    .lamps = lamps,
    .jog = { .bend = 0.005, .scratch = 0.08, .touchNeedsScratchMode = true },
    .clearsCache = true,
    .remark = "DJ-Tech DJ for All: wheels and list knob send a note for each step. Pads by their switch: hot "
              "cues (shift deletes), loops of half a beat to four, sampler; the third centre button makes "
              "them effects.",
};
}
