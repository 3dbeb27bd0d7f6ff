#include "midi/native/table/ModelTable.h"

namespace controllers
{
namespace
{
using namespace midi;
using enum FunctionId;

constexpr Control controls[] {
    // Playing
    { play, { note (41) }, Form::press, always, Decks::chosen },
    { cue, { note (43) }, Form::press, always, Decks::chosen },
    { nth (hotCue, 1), { note (32) }, Form::press, always, Decks::chosen },
    { nth (hotCue, 2), { note (33) }, Form::press, always, Decks::chosen },
    { nth (hotCue, 3), { note (34) }, Form::press, always, Decks::chosen },
    { nth (hotCue, 4), { note (35) }, Form::press, always, Decks::chosen },
    { nth (deleteHotCue, 1), { note (48) }, Form::press, always, Decks::chosen },
    { nth (deleteHotCue, 2), { note (49) }, Form::press, always, Decks::chosen },
    { nth (deleteHotCue, 3), { note (50) }, Form::press, always, Decks::chosen },
    { nth (deleteHotCue, 4), { note (51) }, Form::press, always, Decks::chosen },
    // Tempo and key
    { sync, { note (42) }, Form::press, always, Decks::chosen },
    { master, { note (27) }, Form::press, always, Decks::chosen },
    { tap, { note (40) }, Form::press, always, Decks::chosen },
    { pitch, { cc (0) }, Form::centre64, always, Decks::chosen },
    { pitchReset, { note (7) }, Form::press, always, Decks::chosen },
    { keyLock, { note (29) }, Form::press, always, Decks::chosen },
    // Loops
    { loop, { note (22) }, Form::press, always, Decks::chosen },
    { loopIn, { note (53) }, Form::press, always, Decks::chosen },
    { loopOut, { note (54) }, Form::press, always, Decks::chosen },
    { loopHalf, { note (23) }, Form::press, always, Decks::chosen },
    { loopDouble, { note (5) }, Form::press, always, Decks::chosen },
    { searchBack, { note (47) }, Form::press, always, Decks::chosen },
    { searchForward, { note (46) }, Form::press, always, Decks::chosen },
    // Mixer
    { gain, { cc (127) }, Form::centred, inSurfaceMode (0), Decks::chosen },
    { gainReset, { note (0) }, Form::press, inSurfaceMode (0), Decks::chosen },
    { eqHigh, { cc (126) }, Form::centred, inSurfaceMode (0), Decks::chosen },
    { eqMid, { cc (125) }, Form::centred, inSurfaceMode (0), Decks::chosen },
    { eqLow, { cc (124) }, Form::centred, inSurfaceMode (0), Decks::chosen },
    { eqHighReset, { note (1) }, Form::press, inSurfaceMode (0), Decks::chosen },
    { eqMidReset, { note (2) }, Form::press, inSurfaceMode (0), Decks::chosen },
    { eqLowReset, { note (3) }, Form::press, inSurfaceMode (0), Decks::chosen },
    { pfl, { note (55) }, Form::press, always, Decks::chosen },
    // Effects and instruments
    { nth (effectOn, 1), { note (0) }, Form::press, inSurfaceMode (1), Decks::chosen },
    { nth (effectOn, 2), { note (1) }, Form::press, inSurfaceMode (1), Decks::chosen },
    { nth (effectOn, 3), { note (2) }, Form::press, inSurfaceMode (1), Decks::chosen },
    { nth (effectParam, 1), { cc (127) }, Form::centred, inSurfaceMode (1), Decks::chosen },
    { nth (effectParam, 2), { cc (126) }, Form::centred, inSurfaceMode (1), Decks::chosen },
    { nth (effectParam, 3), { cc (125) }, Form::centred, inSurfaceMode (1), Decks::chosen },
    { dryWet, { cc (124) }, Form::centred, inSurfaceMode (1), Decks::chosen },
    { dryWetReset, { note (3) }, Form::press, inSurfaceMode (1), Decks::chosen },
    { nth (samplerPad, 1), { note (8) } },
    { nth (samplerPad, 2), { note (9) } },
    { nth (samplerPad, 3), { note (10) } },
    { nth (samplerPad, 4), { note (11) } },
    { nth (samplerPad, 5), { note (12) } },
    { nth (samplerPad, 6), { note (13) } },
    { nth (samplerPad, 7), { note (14) } },
    { nth (samplerPad, 8), { note (15) } },
    { nth (samplerPad, 9), { note (18) } },
    { nth (samplerPad, 10), { note (19) } },
    { nth (samplerPad, 11), { note (20) } },
    { nth (samplerPad, 12), { note (21) } },
    // Library
    { load, { note (30) }, Form::press, always, Decks::chosen },
    { playlistUp, { note (25) } },
    { playlistDown, { note (24) } },
    { preview, { note (28) } },
    { directoryUp, { note (16) } },
    { directoryDown, { note (17) } },
    // Layers of the surface
    { surfaceModeFlip, { note (4) } },
    { nextDeck, { note (64) }, Form::press, always, Decks::chosen },
};
static_assert (areSound (controls));

constexpr Lamp lamps[] {
    // Playing
    { play, { note (41) }, light, always, Decks::chosen },
    { cue, { note (43) }, light, always, Decks::chosen },
    { nth (hotCue, 1), { note (48) }, lightOf (32), always, Decks::chosen },
    { nth (hotCue, 1), { cc (32) }, light, always, Decks::chosen },
    { nth (hotCue, 2), { note (49) }, lightOf (32), always, Decks::chosen },
    { nth (hotCue, 2), { cc (33) }, light, always, Decks::chosen },
    { nth (hotCue, 3), { note (50) }, lightOf (32), always, Decks::chosen },
    { nth (hotCue, 3), { cc (34) }, light, always, Decks::chosen },
    { nth (hotCue, 4), { note (51) }, lightOf (32), always, Decks::chosen },
    { nth (hotCue, 4), { cc (35) }, light, always, Decks::chosen },
    // Tempo and key
    { sync, { note (42) }, light, always, Decks::chosen },
    { master, { note (27) }, light, always, Decks::chosen },
    { tap, { note (40) }, light, always, Decks::chosen },
    { pitchReset, { note (7) }, light, always, Decks::chosen },
    { keyLock, { note (29) }, light, always, Decks::chosen },
    // Loops
    { loop, { note (22) }, light, always, Decks::chosen },
    { loopIn, { note (53) }, lightOf (32), always, Decks::chosen },
    { loopOut, { note (54) }, lightOf (32), always, Decks::chosen },
    { loopHalf, { note (23) }, light, always, Decks::chosen },
    { loopDouble, { note (5) }, light, always, Decks::chosen },
    { searchBack, { note (47) }, light, always, Decks::chosen },
    { searchForward, { note (46) }, light, always, Decks::chosen },
    // Mixer
    { gain, { cc (127) }, fullScale, inSurfaceMode (0), Decks::chosen },
    { eqHigh, { cc (126) }, fullScale, inSurfaceMode (0), Decks::chosen },
    { eqMid, { cc (125) }, fullScale, inSurfaceMode (0), Decks::chosen },
    { eqLow, { cc (124) }, fullScale, inSurfaceMode (0), Decks::chosen },
    { pfl, { note (55) }, light, always, Decks::chosen },
    // Effects and instruments
    { nth (effectParam, 1), { cc (127) }, fullScale, inSurfaceMode (1), Decks::chosen },
    { nth (effectParam, 2), { cc (126) }, fullScale, inSurfaceMode (1), Decks::chosen },
    { nth (effectParam, 3), { cc (125) }, fullScale, inSurfaceMode (1), Decks::chosen },
    { dryWet, { cc (124) }, fullScale, inSurfaceMode (1), Decks::chosen },
    { nth (samplerPad, 1), { note (8) }, light1 },
    { nth (samplerPad, 2), { note (9) }, light1 },
    { nth (samplerPad, 3), { note (10) }, light1 },
    { nth (samplerPad, 4), { note (11) }, light1 },
    { nth (samplerPad, 5), { note (12) }, light1 },
    { nth (samplerPad, 6), { note (13) }, light1 },
    { nth (samplerPad, 7), { note (14) }, light1 },
    { nth (samplerPad, 8), { note (15) }, light1 },
    { nth (samplerPad, 9), { note (18) }, light1 },
    { nth (samplerPad, 10), { note (19) }, light1 },
    { nth (samplerPad, 11), { note (20) }, light1 },
    { nth (samplerPad, 12), { note (21) }, light1 },
    // Library
    { playlistUp, { note (25) } },
    { playlistDown, { note (24) } },
    { preview, { note (28) } },
    { directoryUp, { note (16) } },
    { directoryDown, { note (17) } },
    // Layers of the surface
    { surfaceModeFlip, { note (4) }, lightOf (32) },
    { nextDeck, { note (64) }, lightOf (32), always, Decks::chosen },
};
static_assert (areSound (lamps));

/** Leaves the passive mode, and puts out all lamps. Channel 1. */
constexpr Message wake[] { message (0xf0, 0x00, 0x01, 0x02, 0x00, 14, 0, 0xf7),
                           message (0xf0, 0x00, 0x01, 0x02, 0x00, 17, 0xf7) };

/** Precedes the number of a text. */
constexpr uint8_t textHead[] { 0xf0, 0x00, 0x01, 0x02, 0x00 };

using Text = TextField::Text;
constexpr TextField texts[] {
    { 1, Text::title },
    { 2, Text::label, " TRACK" },
    { 3, Text::label, "GAIN", inSurfaceMode (0) },
    { 4, Text::label, "HIGH", inSurfaceMode (0) },
    { 5, Text::label, "MID", inSurfaceMode (0) },
    { 6, Text::label, "LOW", inSurfaceMode (0) },
    { 3, Text::effectName, {}, inSurfaceMode (1) },
    { 4, Text::label, "FX DEPTH", inSurfaceMode (1) },
    { 5, Text::label, "FX TONE", inSurfaceMode (1) },
    { 6, Text::label, "DRY/WET", inSurfaceMode (1) },
};

}

extern const Model stantonScs1d;
const Model stantonScs1d {
    .number = 15,
    .controls = controls,
    .lamps = lamps,
    .wake = wake,
    .clearsCache = true,
    .textHead = textHead,
    .texts = texts,
    .remark = "Stanton SCS.1D: one deck, A or B after \"deck select\", with a display. The platter's motion "
              "comes as other bytes than MIDI messages and can't be used; vinyl mode is key lock, the "
              "triggers are sampler pads, their banks loops.",
};
}
