#include "midi/native/table/ModelTable.h"

namespace controllers
{
namespace
{
using namespace midi;

/** The DJ-Tech i-Mix: its maker numbers the keys and knobs, and does not say what is printed on them. */
constexpr NamedControl names[] {
    { note (1), "key 7" },           { note (2), "key 29" },          { note (3), "key 30" },
    { note (4), "key 25" },          { note (5), "key 33" },          { note (6), "key 4" },
    { note (7), "key 32" },          { note (8), "key 8" },           { note (9), "key 1" },
    { note (10), "encoder 1 push" }, { note (11), "key 26" },         { note (12), "key 45" },
    { note (13), "key 5" },          { note (14), "key 35" },         { note (15), "key 9" },
    { note (16), "key 2" },          { note (17), "key 31" },         { note (18), "key 27" },
    { note (20), "key 6" },          { note (21), "key 12" },         { note (22), "key 36" },
    { note (23), "key 3" },          { note (24), "key 43" },         { note (25), "key 28" },
    { note (27), "key 34" },         { note (28), "key 11" },         { note (29), "key 48" },
    { note (30), "key 41" },         { note (31), "key 39" },         { note (32), "key 10" },
    { note (34), "key 46" },         { note (35), "key 14" },         { note (36), "key 22" },
    { note (37), "key 16" },         { note (38), "key 40" },         { note (39), "key 13" },
    { note (41), "key 19" },         { note (42), "key 15" },         { note (43), "key 23" },
    { note (44), "key 17" },         { note (45), "encoder 3 push" }, { note (46), "key 37" },
    { note (48), "key 20" },         { note (49), "key 47" },         { note (50), "key 24" },
    { note (51), "key 18" },         { note (52), "key 42" },         { note (53), "key 38" },
    { note (55), "key 21" },         { note (56), "key 44" },         { note (80), "encoder 3" },
    { note (81), "encoder 1" },      { note (82), "encoder 2" },      { note (83), "encoder 4" },
    { cc (64), "knob 13" },          { cc (65), "knob 12" },          { cc (66), "knob 11" },
    { cc (67), "knob 10" },          { cc (68), "knob 9" },           { cc (69), "knob 2" },
    { cc (70), "knob 3" },           { cc (71), "knob 4" },           { cc (72), "knob 1" },
    { cc (73), "knob 8" },           { cc (74), "knob 7" },           { cc (75), "knob 5" },
    { cc (76), "knob 6" },
};
}

extern const std::span<const NamedControl> djTechImixNames;
const std::span<const NamedControl> djTechImixNames = names;
}
