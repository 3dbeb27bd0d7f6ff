#include "midi/native/table/ModelTable.h"

namespace controllers
{
namespace
{
using namespace midi;
using enum FunctionId;

constexpr Control controls[] {
    // Playing
    { play, { note (16), note (38) } },
    { cue, { note (14), note (36) } },
    // Tempo and key
    { pitch, { cc (9), cc (10) }, Form::centre64 },
    // Loops
    { loop, { note (3), note (25) } },
    // Jog wheels
    { jog, { cc (40), cc (44) }, Form::twosComplement },
    // Mixer
    { gain, { cc (1), cc (5) }, Form::absolute },
    { eqHigh, { cc (2), cc (6) }, Form::absolute },
    { eqMid, { cc (3), cc (7) }, Form::absolute },
    { eqLow, { cc (4), cc (8) }, Form::absolute },
    { volume, { cc (11), cc (12) }, Form::absolute },
    { pfl, { note (44), note (46) } },
    { crossfader, { cc (13) }, Form::absolute },
    // Library
    { load, { note (20), note (40) } },
    { playlistSelect, { cc (42), cc (46) }, Form::twosComplement },
};
static_assert (areSound (controls));

}

extern const Model kontrolDjKdj500;
const Model kontrolDjKdj500 {
    .number = 2,
    .controls = controls,
    .jog = { .bend = 0.004, .scratch = 0.1, .feelsHand = false },
    .remark = "Kontrol DJ KDJ-500: no lamps are known. The wheels send no pitch bend.",
};
}
