#include "midi/native/surface/SurfaceHand.h"

namespace controllers
{
namespace
{
using namespace midi;
using enum FunctionId;

constexpr Control controls[] {
    // Playing
    { play, { note (109) }, Form::press, always, Decks::chosen },
    { cue, { note (110) }, Form::press, always, Decks::chosen },
    { nth (hotCue, 1), { note (72) }, Form::press, inSurfaceMode (4), Decks::chosen },
    { nth (hotCue, 2), { note (74) }, Form::press, inSurfaceMode (4), Decks::chosen },
    { nth (hotCue, 3), { note (76) }, Form::press, inSurfaceMode (4), Decks::chosen },
    { nth (hotCue, 4), { note (78) }, Form::press, inSurfaceMode (4), Decks::chosen },
    { nth (hotCue, 5), { note (79) }, Form::press, inSurfaceMode (4), Decks::chosen },
    { nth (hotCue, 6), { note (81) }, Form::press, inSurfaceMode (4), Decks::chosen },
    { nth (hotCue, 7), { note (83) }, Form::press, inSurfaceMode (4), Decks::chosen },
    { nth (hotCue, 8), { note (85) }, Form::press, inSurfaceMode (4), Decks::chosen },
    { rewind, { note (48) }, Form::press, inSurfaceMode (4), Decks::chosen },
    // Tempo and key
    { sync, { note (111) }, Form::press, always, Decks::chosen },
    { tap, { note (112) }, Form::press, always, Decks::chosen },
    { pitch, { cc (4) }, Form::centred, always, Decks::chosen },
    { pitchReset, { note (50) }, Form::press, inSurfaceMode (3), Decks::chosen },
    { keyLock, { note (46) }, Form::press, inSurfaceMode (4), Decks::chosen },
    // Loops
    { loopHalf, { note (44) }, Form::press, inSurfaceMode (2), Decks::chosen },
    { loopDouble, { note (46) }, Form::press, inSurfaceMode (2), Decks::chosen },
    { nth (loopBeats, 2), { note (72) }, Form::press, inSurfaceMode (2), Decks::chosen },
    { nth (loopBeats, 3), { note (74) }, Form::press, inSurfaceMode (2), Decks::chosen },
    { nth (loopBeats, 4), { note (76) }, Form::press, inSurfaceMode (2), Decks::chosen },
    { nth (loopBeats, 5), { note (78) }, Form::press, inSurfaceMode (2), Decks::chosen },
    { nth (loopBeats, 6), { note (79) }, Form::press, inSurfaceMode (2), Decks::chosen },
    { nth (loopBeats, 7), { note (81) }, Form::press, inSurfaceMode (2), Decks::chosen },
    { nth (loopBeats, 8), { note (83) }, Form::press, inSurfaceMode (2), Decks::chosen },
    { nth (loopBeats, 9), { note (85) }, Form::press, inSurfaceMode (2), Decks::chosen },
    { searchBack, { note (48) }, Form::press, inSurfaceMode (2), Decks::chosen },
    { searchForward, { note (50) }, Form::press, inSurfaceMode (2), Decks::chosen },
    { snap, { note (50) }, Form::press, inSurfaceMode (4), Decks::chosen },
    // Jog wheels
    { jog, { cc (99) }, Form::centred, always, Decks::chosen },
    { jogTouch, { note (98) }, Form::press, always, Decks::chosen },
    { scratchMode, { note (50) }, Form::press, inSurfaceMode (0), Decks::chosen },
    // Mixer
    { eqHigh, { cc (14) }, Form::absolute, inSurfaceMode (3), Decks::chosen },
    { eqMid, { cc (1) }, Form::absolute, inSurfaceMode (3), Decks::chosen },
    { eqLow, { cc (12) }, Form::absolute, inSurfaceMode (3), Decks::chosen },
    { eqHighKill, { note (46) }, Form::press, inSurfaceMode (3), Decks::chosen },
    { eqMidKill, { note (48) }, Form::press, inSurfaceMode (3), Decks::chosen },
    { eqLowKill, { note (44) }, Form::press, inSurfaceMode (3), Decks::chosen },
    { volume, { cc (7) }, Form::absolute, always, Decks::chosen },
    { pfl, { note (44) }, Form::press, inSurfaceMode (4), Decks::chosen },
    // Effects and instruments
    { nth (effectOn, 1), { note (44) }, Form::press, inSurfaceMode (1), Decks::chosen },
    { nth (effectOn, 2), { note (46) }, Form::press, inSurfaceMode (1), Decks::chosen },
    { nth (effectOn, 3), { note (48) }, Form::press, inSurfaceMode (1), Decks::chosen },
    { nth (effectParam, 1), { cc (12) }, Form::absolute, inSurfaceMode (1), Decks::chosen },
    { nth (effectParam, 2), { cc (1) }, Form::absolute, inSurfaceMode (1), Decks::chosen },
    { nth (effectParam, 3), { cc (14) }, Form::absolute, inSurfaceMode (1), Decks::chosen },
    { wetOnOff, { note (50) }, Form::press, inSurfaceMode (1), Decks::chosen },
    // Library
    { load, { note (48) }, Form::press, inSurfaceMode (0), Decks::chosen },
    { playlistUp, { note (44) }, Form::press, inSurfaceMode (0) },
    { playlistDown, { note (46) }, Form::press, inSurfaceMode (0) },
    // Layers of the surface
    { nth (surfaceMode, 1), { note (36) } },
    { nth (surfaceMode, 2), { note (32) } },
    { nth (surfaceMode, 3), { note (34) } },
    { nth (surfaceMode, 4), { note (38) } },
    { nth (surfaceMode, 5), { note (40) } },
    { nextDeck, { note (42) }, Form::press, always, Decks::chosen },
};
static_assert (areSound (controls));

constexpr Lamp lamps[] {
    // Playing
    { play, { note (109) }, light1, always, Decks::chosen },
    { play, { note (122) }, light1, always, Decks::chosen },
    { cue, { note (110) }, light1, always, Decks::chosen },
    { nth (hotCue, 1), { note (72) }, light1, inSurfaceMode (4), Decks::chosen },
    { nth (hotCue, 2), { note (74) }, light1, inSurfaceMode (4), Decks::chosen },
    { nth (hotCue, 3), { note (76) }, light1, inSurfaceMode (4), Decks::chosen },
    { nth (hotCue, 4), { note (78) }, light1, inSurfaceMode (4), Decks::chosen },
    { nth (hotCue, 5), { note (79) }, light1, inSurfaceMode (4), Decks::chosen },
    { nth (hotCue, 6), { note (81) }, light1, inSurfaceMode (4), Decks::chosen },
    { nth (hotCue, 7), { note (83) }, light1, inSurfaceMode (4), Decks::chosen },
    { nth (hotCue, 8), { note (85) }, light1, inSurfaceMode (4), Decks::chosen },
    { rewind, { note (48) }, light1, inSurfaceMode (4), Decks::chosen },
    { seek, { note (93) }, pointer (1, 16, 1), always, Decks::chosen },
    { seek, { note (94) }, pointer (2, 16, 1), always, Decks::chosen },
    { seek, { note (95) }, pointer (3, 16, 1), always, Decks::chosen },
    { seek, { note (96) }, pointer (4, 16, 1), always, Decks::chosen },
    { seek, { note (97) }, pointer (5, 16, 1), always, Decks::chosen },
    { seek, { note (98) }, pointer (6, 16, 1), always, Decks::chosen },
    { seek, { note (99) }, pointer (7, 16, 1), always, Decks::chosen },
    { seek, { note (100) }, pointer (8, 16, 1), always, Decks::chosen },
    { seek, { note (101) }, pointer (9, 16, 1), always, Decks::chosen },
    { seek, { note (102) }, pointer (10, 16, 1), always, Decks::chosen },
    { seek, { note (103) }, pointer (11, 16, 1), always, Decks::chosen },
    { seek, { note (104) }, pointer (12, 16, 1), always, Decks::chosen },
    { seek, { note (105) }, pointer (13, 16, 1), always, Decks::chosen },
    { seek, { note (106) }, pointer (14, 16, 1), always, Decks::chosen },
    { seek, { note (107) }, pointer (15, 16, 1), always, Decks::chosen },
    { seek, { note (108) }, pointer (16, 16, 1), always, Decks::chosen },
    // Tempo and key
    { sync, { note (61) }, light1, always, Decks::chosen },
    { sync, { note (111) }, light1, always, Decks::chosen },
    { tap, { note (112) }, light1, always, Decks::chosen },
    { pitch, { note (63) }, pointer (1, 9, 1), always, Decks::chosen },
    { pitch, { note (64) }, pointer (2, 9, 1), always, Decks::chosen },
    { pitch, { note (65) }, pointer (3, 9, 1), always, Decks::chosen },
    { pitch, { note (66) }, pointer (4, 9, 1), always, Decks::chosen },
    { pitch, { note (67) }, pointer (5, 9, 1), always, Decks::chosen },
    { pitch, { note (68) }, pointer (6, 9, 1), always, Decks::chosen },
    { pitch, { note (69) }, pointer (7, 9, 1), always, Decks::chosen },
    { pitch, { note (70) }, pointer (8, 9, 1), always, Decks::chosen },
    { pitch, { note (71) }, pointer (9, 9, 1), always, Decks::chosen },
    { pitchReset, { note (62) }, light1, always, Decks::chosen },
    { pitchReset, { note (50) }, light1, inSurfaceMode (3), Decks::chosen },
    { keyLock, { note (46) }, light1, inSurfaceMode (4), Decks::chosen },
    // Loops
    { loopHalf, { note (44) }, light1, inSurfaceMode (2), Decks::chosen },
    { loopDouble, { note (46) }, light1, inSurfaceMode (2), Decks::chosen },
    { nth (loopBeats, 2), { note (72) }, light1, inSurfaceMode (2), Decks::chosen },
    { nth (loopBeats, 3), { note (74) }, light1, inSurfaceMode (2), Decks::chosen },
    { nth (loopBeats, 4), { note (76) }, light1, inSurfaceMode (2), Decks::chosen },
    { nth (loopBeats, 5), { note (78) }, light1, inSurfaceMode (2), Decks::chosen },
    { nth (loopBeats, 6), { note (79) }, light1, inSurfaceMode (2), Decks::chosen },
    { nth (loopBeats, 7), { note (81) }, light1, inSurfaceMode (2), Decks::chosen },
    { nth (loopBeats, 8), { note (83) }, light1, inSurfaceMode (2), Decks::chosen },
    { nth (loopBeats, 9), { note (85) }, light1, inSurfaceMode (2), Decks::chosen },
    { searchBack, { note (48) }, light1, inSurfaceMode (2), Decks::chosen },
    { searchForward, { note (50) }, light1, inSurfaceMode (2), Decks::chosen },
    { snap, { note (50) }, light1, inSurfaceMode (4), Decks::chosen },
    // Jog wheels
    { scratchMode, { note (50) }, light1, inSurfaceMode (0), Decks::chosen },
    // Mixer
    { eqHigh, { note (79) }, pointer (1, 7, 1), inSurfaceMode (3), Decks::chosen },
    { eqHigh, { note (80) }, pointer (2, 7, 1), inSurfaceMode (3), Decks::chosen },
    { eqHigh, { note (81) }, pointer (3, 7, 1), inSurfaceMode (3), Decks::chosen },
    { eqHigh, { note (82) }, pointer (4, 7, 1), inSurfaceMode (3), Decks::chosen },
    { eqHigh, { note (83) }, pointer (5, 7, 1), inSurfaceMode (3), Decks::chosen },
    { eqHigh, { note (84) }, pointer (6, 7, 1), inSurfaceMode (3), Decks::chosen },
    { eqHigh, { note (85) }, pointer (7, 7, 1), inSurfaceMode (3), Decks::chosen },
    { eqMid, { note (86) }, pointer (1, 7, 1), inSurfaceMode (3), Decks::chosen },
    { eqMid, { note (87) }, pointer (2, 7, 1), inSurfaceMode (3), Decks::chosen },
    { eqMid, { note (88) }, pointer (3, 7, 1), inSurfaceMode (3), Decks::chosen },
    { eqMid, { note (89) }, pointer (4, 7, 1), inSurfaceMode (3), Decks::chosen },
    { eqMid, { note (90) }, pointer (5, 7, 1), inSurfaceMode (3), Decks::chosen },
    { eqMid, { note (91) }, pointer (6, 7, 1), inSurfaceMode (3), Decks::chosen },
    { eqMid, { note (92) }, pointer (7, 7, 1), inSurfaceMode (3), Decks::chosen },
    { eqLow, { note (72) }, pointer (1, 7, 1), inSurfaceMode (3), Decks::chosen },
    { eqLow, { note (73) }, pointer (2, 7, 1), inSurfaceMode (3), Decks::chosen },
    { eqLow, { note (74) }, pointer (3, 7, 1), inSurfaceMode (3), Decks::chosen },
    { eqLow, { note (75) }, pointer (4, 7, 1), inSurfaceMode (3), Decks::chosen },
    { eqLow, { note (76) }, pointer (5, 7, 1), inSurfaceMode (3), Decks::chosen },
    { eqLow, { note (77) }, pointer (6, 7, 1), inSurfaceMode (3), Decks::chosen },
    { eqLow, { note (78) }, pointer (7, 7, 1), inSurfaceMode (3), Decks::chosen },
    { eqHighKill, { note (46) }, light1, inSurfaceMode (3), Decks::chosen },
    { eqMidKill, { note (48) }, light1, inSurfaceMode (3), Decks::chosen },
    { eqLowKill, { note (44) }, light1, inSurfaceMode (3), Decks::chosen },
    { volume, { note (52) }, segment (1, 9, 1), always, Decks::chosen },
    { volume, { note (53) }, segment (2, 9, 1), always, Decks::chosen },
    { volume, { note (54) }, segment (3, 9, 1), always, Decks::chosen },
    { volume, { note (55) }, segment (4, 9, 1), always, Decks::chosen },
    { volume, { note (56) }, segment (5, 9, 1), always, Decks::chosen },
    { volume, { note (57) }, segment (6, 9, 1), always, Decks::chosen },
    { volume, { note (58) }, segment (7, 9, 1), always, Decks::chosen },
    { volume, { note (59) }, segment (8, 9, 1), always, Decks::chosen },
    { volume, { note (60) }, segment (9, 9, 1), always, Decks::chosen },
    { pfl, { note (44) }, light1, inSurfaceMode (4), Decks::chosen },
    // Effects and instruments
    { nth (effectOn, 1), { note (44) }, light1, inSurfaceMode (1), Decks::chosen },
    { nth (effectOn, 2), { note (46) }, light1, inSurfaceMode (1), Decks::chosen },
    { nth (effectOn, 3), { note (48) }, light1, inSurfaceMode (1), Decks::chosen },
    { nth (effectParam, 1), { note (72) }, pointer (1, 7, 1), inSurfaceMode (1), Decks::chosen },
    { nth (effectParam, 1), { note (73) }, pointer (2, 7, 1), inSurfaceMode (1), Decks::chosen },
    { nth (effectParam, 1), { note (74) }, pointer (3, 7, 1), inSurfaceMode (1), Decks::chosen },
    { nth (effectParam, 1), { note (75) }, pointer (4, 7, 1), inSurfaceMode (1), Decks::chosen },
    { nth (effectParam, 1), { note (76) }, pointer (5, 7, 1), inSurfaceMode (1), Decks::chosen },
    { nth (effectParam, 1), { note (77) }, pointer (6, 7, 1), inSurfaceMode (1), Decks::chosen },
    { nth (effectParam, 1), { note (78) }, pointer (7, 7, 1), inSurfaceMode (1), Decks::chosen },
    { nth (effectParam, 2), { note (86) }, pointer (1, 7, 1), inSurfaceMode (1), Decks::chosen },
    { nth (effectParam, 2), { note (87) }, pointer (2, 7, 1), inSurfaceMode (1), Decks::chosen },
    { nth (effectParam, 2), { note (88) }, pointer (3, 7, 1), inSurfaceMode (1), Decks::chosen },
    { nth (effectParam, 2), { note (89) }, pointer (4, 7, 1), inSurfaceMode (1), Decks::chosen },
    { nth (effectParam, 2), { note (90) }, pointer (5, 7, 1), inSurfaceMode (1), Decks::chosen },
    { nth (effectParam, 2), { note (91) }, pointer (6, 7, 1), inSurfaceMode (1), Decks::chosen },
    { nth (effectParam, 2), { note (92) }, pointer (7, 7, 1), inSurfaceMode (1), Decks::chosen },
    { nth (effectParam, 3), { note (79) }, pointer (1, 7, 1), inSurfaceMode (1), Decks::chosen },
    { nth (effectParam, 3), { note (80) }, pointer (2, 7, 1), inSurfaceMode (1), Decks::chosen },
    { nth (effectParam, 3), { note (81) }, pointer (3, 7, 1), inSurfaceMode (1), Decks::chosen },
    { nth (effectParam, 3), { note (82) }, pointer (4, 7, 1), inSurfaceMode (1), Decks::chosen },
    { nth (effectParam, 3), { note (83) }, pointer (5, 7, 1), inSurfaceMode (1), Decks::chosen },
    { nth (effectParam, 3), { note (84) }, pointer (6, 7, 1), inSurfaceMode (1), Decks::chosen },
    { nth (effectParam, 3), { note (85) }, pointer (7, 7, 1), inSurfaceMode (1), Decks::chosen },
    { wetOnOff, { note (50) }, light1, inSurfaceMode (1), Decks::chosen },
    // Library
    { load, { note (48) }, light1, inSurfaceMode (0), Decks::chosen },
    { playlistUp, { note (44) }, light1, inSurfaceMode (0) },
    { playlistDown, { note (46) }, light1, inSurfaceMode (0) },
    // Layers of the surface
    { nth (surfaceMode, 1), { note (36) }, light1 },
    { nth (surfaceMode, 2), { note (32) }, light1 },
    { nth (surfaceMode, 3), { note (34) }, light1 },
    { nth (surfaceMode, 4), { note (38) }, light1 },
    { nth (surfaceMode, 5), { note (40) }, light1 },
    { nth (selectDeck, 1), { note (113) }, light1, always, Decks::chosen },
    { nth (selectDeck, 2), { note (114) }, light1, always, Decks::chosen },
    { nextDeck, { note (42) }, light1, always, Decks::chosen },
};
static_assert (areSound (lamps));

/** Asks for the plain mode, puts out all lamps, and makes the surface a circle. Channel 1. */
constexpr Message wake[] { message (0xf0, 0x00, 0x01, 0x60, 0x10, 0x00, 0xf7), message (0xb0, 123, 0),
                           message (0xf0, 0x00, 0x01, 0x60, 0x01, 0, 0xf7) };

constexpr Message shapeOf (int shape) noexcept
{
    return message (0xf0, 0x00, 0x01, 0x60, 0x01, shape, 0xf7);
}

/** Give the touch surface the shape of each layer. */
constexpr int circle = 0, sliders = 3, buttons = 4;
constexpr Message shapes[] { shapeOf (circle), shapeOf (sliders), shapeOf (buttons), shapeOf (sliders),
                             shapeOf (buttons) };

}

extern const Model stantonScs3d;
const Model stantonScs3d {
    .number = 23,
    .controls = controls,
    .lamps = lamps,
    .jog = { .bend = 0.006, .scratch = 0.2 },
    .wake = wake,
    .clearsCache = true,
    .layerMessages = shapes,
    .remark = "Stanton SCS.3D: one deck, A or B after \"deck\", and a touch surface whose shape its mode "
              "buttons change: the wheel in vinyl mode, three sliders for effects and for the equaliser, "
              "eight buttons for loops and hot cues.",
};
}
