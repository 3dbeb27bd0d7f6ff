#include "midi/native/table/ModelTable.h"

namespace controllers
{
namespace
{
using namespace midi;
using enum FunctionId;

constexpr Control controls[] {
    // Playing
    { play, { note (70), note (55) } },
    { cue, { note (51), note (71) } },
    // Tempo and key
    { sync, { note (101), note (103) } },
    { pitch, { cc (14), cc (15) }, Form::centreInverted },
    // Loops
    { loopIn, { note (52), note (54) } },
    { loopOut, { note (50), note (56) } },
    { loopHalf, { note (102), note (104) } },
    { loopDouble, { note (66), note (67) } },
    // Jog wheels
    { jog, { cc (16), cc (17) }, Form::twosComplement },
    // Mixer
    { gain, { cc (28), cc (29) }, Form::absolute },
    { eqHigh, { cc (20), cc (27) }, Form::absolute },
    { eqMid, { cc (21), cc (25) }, Form::absolute },
    { eqLow, { cc (23), cc (24) }, Form::absolute },
    { volume, { cc (12), cc (13) }, Form::absolute },
    { crossfader, { cc (8, 9) }, Form::absolute },
    // Effects and instruments
    { filter, { cc (85), cc (87) }, Form::absolute },
    { nth (effectOn, 1), { note (22), note (23) } },
    { nth (samplerPad, 1), { note (78) } },
    { nth (samplerPad, 2), { note (83) } },
    // Library
    { load, { note (88), note (91) } },
};
static_assert (areSound (controls));

}

extern const Model iconIdj;
const Model iconIdj {
    .number = 36,
    .controls = controls,
    .jog = { .bend = 0.01, .scratch = 0.2, .feelsHand = false },
    .remark = "Icon iDJ: no lamps; the crossfader alone sends on channel 9. The form of the wheels is not "
              "known: both are taken.",
};
}
