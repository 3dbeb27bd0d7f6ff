#include "midi/native/table/ModelTable.h"

namespace controllers
{
namespace
{
using namespace midi;
using enum FunctionId;

/** The controls of both: their wheels have each other's numbers. */
constexpr auto controlsWith (Addresses wheels) noexcept
{
    return std::to_array<Control> ({
        // Playing
        { play, { note (67), note (76) } },
        { cue, { note (51), note (60) } },
        { setCue, { note (59), note (68) } },
        // Tempo and key
        { sync, { note (64), note (71) } },
        { tap, { note (58), note (62) } },
        { pitch, { cc (3), cc (7) }, Form::twosComplement },
        { pitch, { cc (11), cc (12) }, Form::centre64 },
        { nudgeMinus, { note (65), note (69) } },
        { nudgePlus, { note (66), note (70) } },
        { keyLock, { note (56), note (63) } },
        // Loops
        { loopIn, { note (73), note (77) } },
        { loopOut, { note (74), note (78) } },
        // Jog wheels
        { jog, wheels, Form::twosComplement },
        // Mixer
        { gain, { cc (13), cc (14) }, Form::absolute },
        { eqHigh, { cc (16), cc (17) }, Form::absolute },
        { eqMid, { cc (18), cc (19) }, Form::absolute },
        { eqLow, { cc (20), cc (21) }, Form::absolute },
        { eqHighKill, { note (80), note (82) } },
        { eqMidKill, { note (85), note (81) } },
        { eqLowKill, { note (83), note (84) } },
        { volume, { cc (8), cc (9) }, Form::absolute },
        { pfl, { note (48), note (55) } },
        { crossfader, { cc (10) }, Form::inverted },
        { masterVolume, { cc (23) }, Form::absolute },
        { monitorVolume, { cc (15) }, Form::absolute },
        { monitorMix, { cc (22) }, Form::absolute },
        // Effects and instruments
        { filter, { cc (1), cc (5) }, Form::twosComplement },
        { filterReset, { note (50), note (54) } },
        { nth (effectOn, 1), { note (57), note (61) } },
        { nth (effectParam, 1), { cc (2), cc (6) }, Form::twosComplement },
        { nth (effectNext, 1), { note (49), note (53) } },
        { dryWet, { cc (0), cc (4) }, Form::twosComplement },
        // Library
        { load, { note (75), note (52) } },
        { playlistSelect, { cc (26) }, Form::twosComplement },
        { preview, { note (79) } },
        { directoryExit, { note (72) } },
    });
}

constexpr auto totalControls = controlsWith ({ cc (25), cc (24) }),
               omniControls = controlsWith ({ cc (24), cc (25) });
static_assert (areSound (totalControls) && areSound (omniControls));

constexpr Lamp lamps[] {
    // Playing
    { play, { note (62), note (78) }, light100 },
    { cue, { note (60), note (76) }, light100 },
    { setCue, { note (61), note (77) }, light100 },
    // Tempo and key
    { sync, { note (55), note (66) }, light100 },
    { tap, { note (48), note (71) }, light100 },
    { pitchReset, { note (52), note (67) }, light100 },
    { nudgeMinus, { note (56), note (72) }, light100 },
    { nudgePlus, { note (57), note (73) }, light100 },
    { keyLock, { note (54), note (65) }, light100 },
    // Loops
    { loopIn, { note (58), note (74) }, light100 },
    { loopOut, { note (59), note (75) }, light100 },
    // Mixer
    { eqHighKill, { note (80), note (83) }, light100 },
    { eqMidKill, { note (81), note (84) }, light100 },
    { eqLowKill, { note (82), note (85) }, light100 },
    { pfl, { note (53), note (64) }, light100 },
    // Effects and instruments
    { filterReset, { note (49), note (69) }, light100 },
    { nth (effectOn, 1), { note (50), note (70) }, light100 },
    { nth (effectNext, 1), { note (51), note (68) }, light100 },
    // Library
    { load, { note (63), note (79) }, light100 },
    { directoryExit, { note (86) }, light100 },
};
static_assert (areSound (lamps));

}

extern const Model numarkTotalControl;
const Model numarkTotalControl {
    .number = 10,
    .controls = totalControls,
    .lamps = lamps,
    .jog = { .bend = 0.14, .scratch = 0.6, .law = Jog::Law::of127, .feelsHand = false },
    .clearsCache = true,
    .remark = "Numark Total Control: the lamps' numbers are not those of the buttons.",
};

extern const Model numarkOmniControl;
const Model numarkOmniControl {
    .number = 28,
    .controls = omniControls,
    .lamps = lamps,
    .jog = { .bend = 0.14, .scratch = 0.6, .law = Jog::Law::of127, .feelsHand = false },
    .clearsCache = true,
    .remark = "Numark Omni Control: as the Total Control, with the wheels' numbers the other way round. Most "
              "lamps have its numbers too, untried.",
};
}
