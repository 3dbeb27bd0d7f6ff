#pragma once

#include "deck/state/DeckNumbers.h"

#include <juce_graphics/juce_graphics.h>

#include <array>

/** The places of the editor's children, in unscaled pixels. An empty rectangle means that the child is hidden. */
struct EditorLayout
{
    static constexpr int minimumWidth = 1024, minimumHeight = 296, maximum = 2560;
    static constexpr int deckHeight = 239, globalWidth = 216;
    static constexpr int leastBrowser = 200; ///< the waves leave it this
    static constexpr int browserlessHeight = 468, focusedBrowserlessHeight = 728;

    struct Mode
    {
        bool fourDecks = false;
        bool ghostMixer = false;
        bool waves = false; ///< stacked above everything else, if the window is taller than the rest needs
        bool browser = true;
        bool operator== (const Mode&) const = default;
    };

    EditorLayout (int width, int height, Mode);

    /** The height that a window without a browser snaps to. */
    static constexpr int heightWithoutBrowser (bool browserFocus) noexcept
    {
        return browserFocus ? focusedBrowserlessHeight : browserlessHeight;
    }

    /** The height of a window without a browser that has room for the stacked waves. */
    static int heightWithWaves (bool fourDecks);

    juce::Rectangle<int> waves, header, global, ghostMixer, browser, resizer;
    std::array<juce::Rectangle<int>, deckCount> decks;
};
