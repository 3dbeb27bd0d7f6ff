#include "ui/global/CrossfaderPanel.h"

#include "support/language/Translate.h"

namespace
{
using Kind = ControlSpec::Kind;

// clang-format off
constexpr PlacedControl table[] {
    { { Kind::level, "_crossfaderSlider",      "CROSSFADER",            "crossfader_188", N_ ("Crossfader") }, {  14,  0, 188, 20 } },
    { { Kind::sign,  "_autoLeftButton",        "AUTO_CROSSFADER_LEFT",  "left_20", N_ ("Fades to the left automatically") }, {  14, 21, 22, 20 } },
    { { Kind::level, "_crossfaderCurveSlider", "CROSSFADER_CURVE",      "crossfader_track", N_ ("Crossfader curve"), ControlSpec::Lit::plain, "", true }, {  84, 21, 92, 20 } },
    { { Kind::sign,  "_autoRightButton",       "AUTO_CROSSFADER_RIGHT", "right_20", N_ ("Fades to the right automatically") }, { 180, 21, 22, 20 } },
};
// clang-format on
}

CrossfaderPanel::CrossfaderPanel (CPlatterdex& e) : ControlPanel (e)
{
    addControls (table, -1);
    addLabel (tr ("CURVE"), { 40, 21, 44, 20 });
}
