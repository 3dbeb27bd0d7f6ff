#include "ui/global/CrossfaderPanel.h"

namespace
{
using Kind = ControlRow::Kind;

// clang-format off
constexpr ControlRow table[] {
    { Kind::sign,  "_autoLeftButton",        "AUTO_CROSSFADER_LEFT",  "left_24",  {   4, 10, 24, 24 }, "Fades to the left by itself" },
    { Kind::level, "_crossfaderSlider",      "CROSSFADER",            "crossfader_96", { 36, 10, 96, 24 }, "Crossfader" },
    { Kind::sign,  "_autoRightButton",       "AUTO_CROSSFADER_RIGHT", "right_24", { 140, 10, 24, 24 }, "Fades to the right by itself" },
    { Kind::knob,  "_crossfaderCurveSlider", "CROSSFADER_CURVE",      "CURVE",    { 176,  1, 28, 40 }, "Curve of the crossfader", ControlRow::Lit::plain, "", true },
};
// clang-format on
}

CrossfaderPanel::CrossfaderPanel (CPlatterdex& e) : ControlPanel (e, Pace::moving)
{
    addControls (table, -1);
}
