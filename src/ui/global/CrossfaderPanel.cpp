#include "ui/global/CrossfaderPanel.h"

namespace
{
using Kind = ControlSpec::Kind;

// clang-format off
constexpr PlacedControl table[] {
    { { Kind::sign,  "_autoLeftButton",        "AUTO_CROSSFADER_LEFT",  "left_24", "Fades to the left automatically" }, {   4, 10, 24, 24 } },
    { { Kind::level, "_crossfaderSlider",      "CROSSFADER",            "crossfader_96", "Crossfader" }, { 36, 10, 96, 24 } },
    { { Kind::sign,  "_autoRightButton",       "AUTO_CROSSFADER_RIGHT", "right_24", "Fades to the right automatically" }, { 140, 10, 24, 24 } },
    { { Kind::knob,  "_crossfaderCurveSlider", "CROSSFADER_CURVE",      "CURVE", "Crossfader curve", ControlSpec::Lit::plain, "", true }, { 176,  1, 28, 40 } },
};
// clang-format on
}

CrossfaderPanel::CrossfaderPanel (CPlatterdex& e) : ControlPanel (e)
{
    addControls (table, -1);
}
