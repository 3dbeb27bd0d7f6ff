#pragma once

#include <juce_graphics/juce_graphics.h>

#include <algorithm>
#include <array>
#include <cmath>

/** Every colour of the desk. What is seen takes its colours from here, the pictures of the skin as well. */
namespace palette
{
// Grounds, from behind to in front.
inline const juce::Colour ground { 0xff16181a }; ///< behind everything; even rows, the tab bar
inline const juce::Colour panel { 0xff1c1e21 };
inline const juce::Colour raised { 0xff212326 }; ///< headings on a panel; odd rows
inline const juce::Colour well { 0xff2b2e32 };   ///< tracks, grooves, a button at rest
inline const juce::Colour line { 0xff43464a };   ///< dialogs, and lines that must be seen

// The one light from above: the top and the bottom edge of what lies on a panel.
inline const juce::Colour edgeLight { 0xff33363a };
inline const juce::Colour edgeDark { 0xff0e0f11 };

// Type and drawn signs.
inline const juce::Colour label { 0xffa0a1a3 }; ///< captions, and signs at rest
inline const juce::Colour value { 0xffe4e6e8 }; ///< values, titles, signs under the hand
inline const juce::Colour ink { 0xff101214 };   ///< on what is lit
inline const juce::Colour tableText { 0xffa0a0a0 };
inline const juce::Colour barNumber { 0xffa0a1a3 };
inline const juce::Colour anchorNumber { 0xffbfc0c1 };

/** A switch that is on as it usually is: filled, and quieter than any waveform. */
inline const juce::Colour quiet { 0xff708a97 };

// Colours that mean something, whatever they are on.
inline const juce::Colour accent {
    0xffbeefff
}; ///< focus, a value that is being changed, a switch that is on and should be noticed
inline const juce::Colour selected { 0xffafc81c }; ///< selected, learnt
inline const juce::Colour danger { 0xffcd3700 };   ///< recording, clipping; a ground, never small text
inline const juce::Colour scope { 0xff227bd5 };    ///< the wave of the magnified view

/** The two curves of a Slicegate pad. */
inline const juce::Colour padTime { 0xff2db5ed }, padVolume { 0xfff2c14e };

/** The hue of a deck, 0 to 3. It marks what that deck does, and nothing else. */
inline const std::array<juce::Colour, 4> decks { juce::Colour { 0xff56b4e9 }, juce::Colour { 0xffe69f00 },
                                                 juce::Colour { 0xff2fbf8f }, juce::Colour { 0xffd985b5 } };

/** The colours of hot cues 1 to 8, each light enough for a dark number. Neighbours differ in lightness too. */
inline const std::array<juce::Colour, 8> cues { juce::Colour { 0xffff7a5c }, juce::Colour { 0xfff5d547 },
                                                juce::Colour { 0xff63d471 }, juce::Colour { 0xff7fe3f0 },
                                                juce::Colour { 0xff7d9bff }, juce::Colour { 0xffe6b8ff },
                                                juce::Colour { 0xffff8fc8 }, juce::Colour { 0xffd9c3a0 } };

/** Laid over a selected row, and over a control that waits to be learnt. */
inline const juce::Colour selectedRow { 0x33ffffff }, learningRow { 0x4dafc81c };

/** Disabled controls: the face that carries a text is drawn at the first alpha, signs and knobs at the second, and the text
    in a colour of its own. So each still stands out enough to be read. */
constexpr float disabledAlpha = 0.4f, disabledSign = 0.7f;
inline const juce::Colour disabledText { 0xff96989a };

/** The colour of text and signs on a filled ground: ink on what is light, else nearly white; at least 4.5 to 1 on
    every colour above that something is filled with. */
inline juce::Colour textOn (juce::Colour filled)
{
    return filled.getPerceivedBrightness() > 0.5f ? ink : juce::Colours::white;
}

/** The distance of two opaque colours, 1 to 21: the contrast ratio of the web's accessibility guidelines. */
inline double contrast (juce::Colour first, juce::Colour second)
{
    auto luminance = [] (juce::Colour colour)
    {
        auto linear = [] (float channel)
        { return channel <= 0.04045 ? channel / 12.92 : std::pow ((channel + 0.055) / 1.055, 2.4); };
        return 0.2126 * linear (colour.getFloatRed()) + 0.7152 * linear (colour.getFloatGreen())
               + 0.0722 * linear (colour.getFloatBlue());
    };
    const auto one = luminance (first), other = luminance (second);
    return (std::max (one, other) + 0.05) / (std::min (one, other) + 0.05);
}
}
