#include "midi/native/table/ModelTable.h"

namespace controllers
{
namespace
{
using namespace midi;
using enum FunctionId;

constexpr Control controls[] {
    // Playing
    { play, { note (23), note (39) } },
    { cue, { note (24), note (40) } },
    // Tempo and key
    { sync, { note (22), note (38) } },
    { pitch, { cc (16), cc (32) }, Form::centre64 },
    { nudgeMinus, { note (16), note (32) } },
    { nudgePlus, { note (17), note (33) } },
    // Loops
    { loopIn, { note (18), note (34) } },
    { loopOut, { note (19), note (36) } },
    // Jog wheels
    { jog, { cc (17), cc (33) }, Form::centred },
    { jogTouch, { note (1), note (2) } },
    // Mixer
    { volume, { cc (18), cc (34) }, Form::absolute },
    { pfl, { note (25), note (41) } },
    { crossfader, { cc (64) }, Form::absolute },
    { masterVolume, { cc (48) }, Form::absolute },
    { monitorVolume, { cc (49) }, Form::absolute },
    // Library
    { load, { note (20), note (37) } },
    { playlistSelect, { cc (50) }, Form::centred },
    { directoryUp, { note (48) } },
    { directoryDown, { note (49) } },
};
static_assert (areSound (controls));

constexpr Lamp lamps[] {
    // Playing
    { play, { note (23), note (39) }, light1 },
    { cue, { note (24), note (40) }, light1 },
    // Mixer
    { pfl, { note (25), note (41) }, light1 },
};
static_assert (areSound (lamps));

}

extern const Model behringerCmdMicro;
const Model behringerCmdMicro {
    .number = 45,
    .controls = controls,
    .lamps = lamps,
    .jog = { .bend = 0.32, .scratch = 5.4, .law = Jog::Law::power },
    .clearsCache = true,
    .remark = "Behringer CMD Micro: lamps have two colours and are never dark.",
};
}
