#include "midi/native/table/ModelTable.h"

namespace controllers
{
namespace
{
using namespace midi;
using enum FunctionId;

constexpr Control controls[] {
    // Playing
    { play, byChannel (note (34)) },
    { cue, byChannel (note (35)) },
    { cuePlay, byChannel (note (67)) },
    { nth (hotCue, 1), byChannel (note (42)) },
    { nth (hotCue, 2), byChannel (note (43)) },
    { nth (deleteHotCue, 1), byChannel (note (74)) },
    { nth (deleteHotCue, 2), byChannel (note (75)) },
    { reverse, byChannel (note (66)) },
    // Tempo and key
    { sync, byChannel (note (36)) },
    { downbeat, byChannel (note (68)) },
    { pitch, { cc (27), cc (17, 2), cc (27, 3), cc (17, 4) }, Form::fine16 },
    { pitch, byChannel (cc (30)), Form::fine16 },
    { keyLock, byChannel (note (45)) },
    { keyTuning, { cc (20), cc (18, 2), cc (20, 3), cc (18, 4) }, Form::absolute },
    // Loops
    { loop, { note (38), note (51, 2), note (38, 3), note (51, 4) } },
    { leap, byChannel (note (57)) },
    { reloop, { note (70), note (83, 2), note (70, 3), note (83, 4) } },
    { loopHalf, { note (51), note (41, 2), note (51, 3), note (41, 4) } },
    { loopDouble, { note (41), note (38, 2), note (41, 3), note (38, 4) } },
    { searchBack, { note (83), note (73, 2), note (83, 3), note (73, 4) } },
    { searchForward, { note (73), note (70, 2), note (73, 3), note (70, 4) } },
    { snap, byChannel (note (77)) },
    // Jog wheels
    { jog, byChannel (cc (16)), Form::centred },
    { jogTouch, byChannel (note (59)) },
    // Mixer
    { gain, byChannel (cc (21)), Form::absolute },
    { eqHigh, { cc (17), cc (20, 2), cc (17, 3), cc (20, 4) }, Form::absolute },
    { eqMid, { cc (18), cc (28, 2), cc (18, 3), cc (28, 4) }, Form::absolute },
    { eqLow, byChannel (cc (19)), Form::absolute },
    { volume, { cc (28), cc (22, 2), cc (28, 3), cc (22, 4) }, Form::fine16 },
    { pfl, byChannel (note (54)) },
    { punch, byChannel (note (82)) },
    { assignLeft, byChannel (note (79)) },
    { assignRight, byChannel (note (80)) },
    { crossfader, { cc (16, 5) }, Form::fine16 },
    { masterVolume, { cc (20, 5) }, Form::absolute },
    { monitorVolume, { cc (18, 5) }, Form::absolute },
    { monitorMix, { cc (19, 5) }, Form::absolute },
    // Effects and instruments
    { filter, { cc (26), cc (27, 2), cc (26, 3), cc (27, 4) }, Form::absolute },
    { nth (effectOn, 1), { note (44), note (40, 2), note (44, 3), note (40, 4) } },
    { nth (effectOn, 2), byChannel (note (37)) },
    { nth (effectOn, 3), byChannel (note (39)) },
    { nth (effectParam, 1), { cc (22), cc (23, 2), cc (22, 3), cc (23, 4) }, Form::absolute },
    { nth (effectParam, 2), { cc (23), cc (24, 2), cc (23, 3), cc (24, 4) }, Form::absolute },
    { nth (effectParam, 3), { cc (24), cc (25, 2), cc (24, 3), cc (25, 4) }, Form::absolute },
    { nth (effectNext, 1), byChannel (note (33)) },
    { nth (effectNext, 1), { note (76), note (72, 2), note (76, 3), note (72, 4) } },
    { nth (effectNext, 2), byChannel (note (69)) },
    { nth (effectNext, 3), byChannel (note (71)) },
    { dryWet, { cc (25), cc (26, 2), cc (25, 3), cc (26, 4) }, Form::absolute },
    { dryWetReset, byChannel (note (32)) },
    { dryWetReset, { note (72), note (76, 2), note (72, 3), note (76, 4) } },
    { wetOnOff, { note (40), note (44, 2), note (40, 3), note (44, 4) } },
    { nth (smartKnobOn, 1), byChannel (note (58)) },
    { nth (smartKnobOn, 2), byChannel (note (56)) },
    // Library
    { load, byChannel (note (55)) },
    { playlistSelect, { note (55, 5) }, Form::stepBack },
    { playlistSelect, { note (56, 5) }, Form::stepOn },
    { preview, { note (54, 5) } },
    // Layers of the surface
    { shift, { note (36, 5) }, Form::press, always, Decks::chosen },
    { shift, { note (52, 5) }, Form::press, always, Decks::chosen },
    { nth (selectDeck, 1), { note (52) }, Form::press, always, Decks::left },
    { nth (selectDeck, 2), { note (52, 2) }, Form::press, always, Decks::right },
    { nth (selectDeck, 3), { note (53) }, Form::press, always, Decks::left },
    { nth (selectDeck, 4), { note (53, 2) }, Form::press, always, Decks::right },
};
static_assert (areSound (controls));

constexpr Lamp lamps[] {
    // Playing
    { play, byChannel (note (34)) },
    { cue, byChannel (note (35)) },
    { nth (hotCue, 1), byChannel (note (42)) },
    { nth (hotCue, 2), byChannel (note (43)) },
    // Tempo and key
    { sync, byChannel (note (36)) },
    { keyLock, byChannel (note (45)) },
    // Loops
    { loop, { note (38), note (51, 2), note (38, 3), note (51, 4) } },
    { leap, byChannel (note (57)) },
    { loopHalf, { note (51), note (41, 2), note (51, 3), note (41, 4) } },
    { loopDouble, { note (41), note (38, 2), note (41, 3), note (38, 4) } },
    // Mixer
    { pfl, byChannel (note (54)) },
    // Effects and instruments
    { nth (effectOn, 1), { note (44), note (40, 2), note (44, 3), note (40, 4) } },
    { nth (effectOn, 2), byChannel (note (37)) },
    { nth (effectOn, 3), byChannel (note (39)) },
    { wetOnOff, { note (40), note (44, 2), note (40, 3), note (44, 4) } },
    { nth (smartKnobOn, 1), byChannel (note (58)) },
    { nth (smartKnobOn, 2), byChannel (note (56)) },
};
static_assert (areSound (lamps));

}

extern const Model vestaxVci100MkII;
const Model vestaxVci100MkII {
    .number = 43,
    .controls = controls,
    .lamps = lamps,
    .jog = { .bend = 0.08, .scratch = 5.0, .law = Jog::Law::power },
    .clearsCache = true,
    .remark = "Vestax VCI-100 MkII: the channel is the deck, and each side has numbers of its own, also for "
              "its shift layer. Faders of 14 bits. \"Slip\" rolls a loop, effect units 3 and 4 are the sides "
              "of the crossfader.",
};
}
