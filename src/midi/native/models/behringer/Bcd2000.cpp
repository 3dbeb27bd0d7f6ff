#include "midi/native/table/ModelTable.h"

namespace controllers
{
namespace
{
using namespace midi;
using enum FunctionId;

constexpr Control controls[] {
    // Playing
    { play, { note (18), note (26) } },
    { cue, { note (19), note (27) } },
    { rewind, { note (4), note (10) } },
    // Tempo and key
    { sync, { note (16), note (24) } },
    { pitch, { cc (11), cc (12) }, Form::centre64 },
    { nudgeMinus, { note (2), note (8) } },
    { nudgePlus, { note (3), note (9) } },
    // Loops
    { loopIn, { note (15), note (23) } },
    { loopOut, { note (5), note (11) } },
    { searchBack, { note (0), note (6) } },
    { searchForward, { note (1), note (7) } },
    // Jog wheels
    { jog, { cc (19), cc (18) }, Form::behringer },
    { scratchMode, { note (17), note (25) } },
    // Mixer
    { gain, { cc (6), cc (10) }, Form::absolute },
    { eqHigh, { cc (5), cc (9) }, Form::absolute },
    { eqMid, { cc (4), cc (8) }, Form::absolute },
    { eqLow, { cc (3), cc (7) }, Form::absolute },
    { eqHighKill, { note (14), note (22) } },
    { eqMidKill, { note (13), note (21) } },
    { eqLowKill, { note (12), note (20) } },
    { volume, { cc (0), cc (2) }, Form::absolute },
    { pfl, { note (35), note (36) } },
    { crossfader, { cc (1) }, Form::absolute },
    { masterVolume, { cc (16) }, Form::absolute },
    { monitorMix, { cc (17) }, Form::absolute },
    { phonesSplit, { note (28) } },
    // Effects and instruments
    { nth (effectOn, 1), { note (31) }, Form::press, always, Decks::chosen },
    { nth (effectOn, 2), { note (32) }, Form::press, always, Decks::chosen },
    { nth (effectOn, 3), { note (33) }, Form::press, always, Decks::chosen },
    { nth (effectParam, 1), { cc (13) }, Form::absolute, always, Decks::chosen },
    { nth (effectParam, 2), { cc (14) }, Form::absolute, always, Decks::chosen },
    { nth (effectParam, 3), { cc (15) }, Form::absolute, always, Decks::chosen },
    { wetOnOff, { note (30) }, Form::press, always, Decks::chosen },
    // Layers of the surface
    { nextDeck, { note (34) }, Form::press, always, Decks::chosen },
};
static_assert (areSound (controls));

constexpr Lamp lamps[] {
    // Playing
    { play, { cc (18), cc (10) } },
    { cue, { cc (17), cc (9) } },
    // Tempo and key
    { sync, { cc (20), cc (12) } },
    // Loops
    { loop, { cc (21), cc (13) } },
    // Jog wheels
    { scratchMode, { cc (19), cc (11) } },
    // Mixer
    { eqHighKill, { cc (22), cc (14) } },
    { eqMidKill, { cc (23), cc (15) } },
    { eqLowKill, { cc (24), cc (16) } },
    { pfl, { cc (2), cc (1) } },
    { phonesSplit, { cc (25) } },
    // Effects and instruments
    { nth (effectOn, 1), { cc (6) }, light, always, Decks::chosen },
    { nth (effectOn, 2), { cc (5) }, light, always, Decks::chosen },
    { nth (effectOn, 3), { cc (4) }, light, always, Decks::chosen },
    { wetOnOff, { cc (7) }, light, always, Decks::chosen },
    // Layers of the surface
    { nextDeck, { cc (3) }, light, always, Decks::chosen },
};
static_assert (areSound (lamps));

/** Asks for the place of every fader. */
constexpr Message wake[] { message (0xb0, 100, 127) };

}

extern const Model behringerBcd2000;
const Model behringerBcd2000 {
    .number = 4,
    .controls = controls,
    .lamps = lamps,
    .jog = { .bend = 0.03, .scratch = 0.6, .law = Jog::Law::of127, .feelsHand = false },
    .wake = wake,
    .remark = "Behringer BCD-2000: notes for buttons, controllers for faders and lamps. On hardware note 18 "
              "is play and 19 cue, the other way round than the maker's chart says. The effect section plays "
              "deck A, or B after its fourth button.",
};
}
