#pragma once

#include "skin/Palette.h"
#include "skin/SkinTable.h"

namespace skin
{
/** The colour of what is lit in a hue. */
inline juce::Colour colourOf (Hue hue) noexcept
{
    switch (hue)
    {
    case Hue::accent:
        return palette::accent;
    case Hue::lime:
        return palette::selected;
    case Hue::red:
        return palette::danger;
    case Hue::deckA:
    case Hue::deckB:
    case Hue::deckC:
    case Hue::deckD:
        return palette::decks[static_cast<size_t> (hue) - static_cast<size_t> (Hue::deckA)];
    case Hue::neutral:
        break;
    }
    return palette::value;
}

/** The colour that a button is filled with while it is lit. */
inline juce::Colour fillOf (Hue hue) noexcept
{
    return hue == Hue::neutral ? palette::quiet : colourOf (hue);
}
}
