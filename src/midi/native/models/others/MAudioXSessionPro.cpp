#include "midi/native/table/ModelTable.h"

namespace controllers
{
namespace
{
using namespace midi;
using enum FunctionId;

constexpr Control controls[] {
    // Playing
    { play, { note (70), note (69) } },
    { cue, { note (58), note (59) } },
    // Tempo and key
    { pitch, { cc (12), cc (15) }, Form::centre64 },
    // Loops
    { searchBack, { note (46), note (56) } },
    { searchForward, { note (43), note (57) } },
    // Mixer
    { gain, { cc (24), cc (31) }, Form::absolute },
    { eqHigh, { cc (27), cc (34) }, Form::absolute },
    { eqMid, { cc (28), cc (35) }, Form::absolute },
    { eqLow, { cc (29), cc (36) }, Form::absolute },
    { volume, { cc (11), cc (14) }, Form::absolute },
    { pfl, { note (44), note (45) } },
    { balance, { cc (32), cc (32), cc (32), cc (32) }, Form::absolute },
    { crossfader, { cc (17) }, Form::absolute },
    { masterVolume, { cc (33) }, Form::absolute },
    { monitorVolume, { cc (26) }, Form::absolute },
    { monitorMix, { cc (25) }, Form::absolute },
};
static_assert (areSound (controls));

}

extern const Model mAudioXSessionPro;
const Model mAudioXSessionPro {
    .number = 5,
    .controls = controls,
    .remark = "M-Audio X-Session Pro: no wheels, no lamps.",
};
}
