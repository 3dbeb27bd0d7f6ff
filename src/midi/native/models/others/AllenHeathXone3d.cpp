#include "midi/native/table/ModelTable.h"

namespace controllers
{
namespace
{
using namespace midi;
using enum FunctionId;

constexpr Control controls[] {
    // Playing
    { play, { note (37, 16), note (69, 16) } },
    { cue, { note (22, 16), note (54, 16) } },
    { nth (hotCue, 1), { note (36, 16), note (68, 16) } },
    { nth (hotCue, 2), { note (21, 16), note (53, 16) } },
    { nth (hotCue, 3), { note (18, 16), note (50, 16) } },
    { nth (hotCue, 4), { note (32, 16), note (64, 16) } },
    // Tempo and key
    { sync, { note (19, 16), note (51, 16) } },
    { pitch, { cc (18, 16), cc (30, 16) }, Form::centre64 },
    { keyTuning, { cc (17, 16), cc (29, 16) }, Form::absolute },
    // Loops
    { loop, { note (24, 16), note (56, 16) } },
    { loopSize, { cc (36, 16), cc (44, 16) }, Form::eitherCentre },
    // Jog wheels
    { jog, { cc (37, 16), cc (45, 16) }, Form::eitherCentre },
    // Mixer
    { gain, { cc (9, 16), cc (21, 16) }, Form::absolute },
    { eqHigh, { cc (11, 16), cc (23, 16) }, Form::absolute },
    { eqMid, { cc (13, 16), cc (25, 16) }, Form::absolute },
    { eqLow, { cc (15, 16), cc (27, 16) }, Form::absolute },
    { volume, { cc (19, 16), cc (31, 16) }, Form::absolute },
    { balance, { cc (14, 16), cc (26, 16) }, Form::absolute },
    { crossfader, { cc (16, 16) }, Form::absolute },
    { masterVolume, { cc (28, 16) }, Form::absolute },
    // Effects and instruments
    { filter, { cc (8, 16), cc (20, 16) }, Form::absolute },
    { nth (effectOn, 1), { note (29, 16), note (61, 16) } },
    { nth (effectOn, 2), { note (15, 16), note (47, 16) } },
    { nth (effectOn, 3), { note (17, 16), note (49, 16) } },
    { nth (effectParam, 1), { cc (32, 16), cc (40, 16) }, Form::eitherCentre },
    { nth (effectParam, 2), { cc (33, 16), cc (41, 16) }, Form::eitherCentre },
    { nth (effectParam, 3), { cc (34, 16), cc (42, 16) }, Form::eitherCentre },
    { nth (effectNext, 1), { note (28, 16), note (60, 16) } },
    { nth (effectNext, 2), { note (14, 16), note (46, 16) } },
    { nth (effectNext, 3), { note (16, 16), note (48, 16) } },
    { dryWet, { cc (35, 16), cc (43, 16) }, Form::eitherCentre },
    { dryWetReset, { note (26, 16), note (58, 16) } },
    { wetOnOff, { note (27, 16), note (59, 16) } },
    { nth (smartKnob, 1), { cc (10, 16), cc (22, 16) }, Form::absolute },
    { nth (smartKnob, 2), { cc (12, 16), cc (24, 16) }, Form::absolute },
    // Library
    { load, { note (33, 16), note (65, 16) } },
    { playlistUp, { note (10, 16), note (42, 16) } },
    { playlistDown, { note (13, 16), note (45, 16) } },
    { directoryUp, { note (11, 16), note (43, 16) } },
    { directoryDown, { note (9, 16), note (41, 16) } },
};
static_assert (areSound (controls));

}

extern const Model allenHeathXone3d;
const Model allenHeathXone3d {
    .number = 6,
    .controls = controls,
    .jog = { .bend = 0.005, .scratch = 0.1, .feelsHand = false },
    .isDoubtful = true,
    .remark = "Allen & Heath Xone:3D, by the numbers of its sister, the Xone:4D, whose chart names places "
              "and no functions: the functions are ours. The left side is deck A, the right side B; the "
              "fourth faders are the crossfader and the master volume.",
};
}
