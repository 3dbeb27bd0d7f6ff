#include "Materials.h"

namespace
{
constexpr float barWide = 7, secondBar = 9; ///< two bars, the second at 9
constexpr float cell = 4;                   ///< the length of a cell with the gap after it
constexpr float loud = 68;                  ///< 6 dB below full, 86 times the cube root of a half
}

/** The bars are scaled by the cube root of the level: full scale ends the picture, half of it lies at 68. Loud cells are
    lighter, and the last, from about 1 dB below full, is the clip light. */
void paintMeter (const Pen& pen, const skin::Row& row, int frame)
{
    const bool upright = row.material == skin::Material::uprightMeter;
    const float length = upright ? pen.height : pen.width;
    const auto hue = row.hue == skin::Hue::neutral ? palette::anchorNumber : skin::colourOf (row.hue);
    for (float end = length; end > 1; end -= cell)
    {
        const bool last = end > length - cell / 2;
        const auto lit = last         ? juce::Colour (palette::danger).brighter (0.15f)
                         : end > loud ? hue.interpolatedWith (juce::Colours::white, 0.5f)
                                      : hue;
        const auto colour = frame == 1 ? lit : last ? palette::line : palette::well;
        const float from = juce::jmax (0.0f, pen.snap (end - cell + 1)), to = pen.snap (end);
        for (const float across : { 0.0f, secondBar })
        {
            const float left = pen.snap (across), right = pen.snap (across + barWide);
            pen.fill (colour, upright ? juce::Rectangle<float> (left, length - to, right - left, to - from)
                                      : juce::Rectangle<float> (from, left, to - from, right - left));
        }
    }
}
