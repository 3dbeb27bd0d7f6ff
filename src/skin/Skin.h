#pragma once

#include "skin/SkinTable.h"

#include <juce_graphics/juce_graphics.h>

#include <cstddef>
#include <span>
#include <string>
#include <string_view>

/** The pictures that the interface is drawn from, and its typeface. Message thread. */
namespace skin
{
/** One picture strip at one scale: frames of one size, one below the other. Cheap to copy; the pixels are shared. */
struct Strip
{
    juce::Image image;
    int frames = 0;
    int width = 0, height = 0; ///< of one frame, in logical pixels
    float scale = 1;           ///< pixels of the image per logical pixel

    bool isValid() const noexcept { return image.isValid(); }

    /** A place in the image, in its own pixels. @param part   in logical pixels of the frame */
    juce::Rectangle<int> pixels (int frame, juce::Rectangle<int> part) const;
    juce::Rectangle<int> pixels (int frame) const { return pixels (frame, { width, height }); }

    /** Draws a frame in the middle of the target. Where the graphics has the strip's own scale this copies pixels.
        All that draw leave the graphics with the opacity of alpha, and nothing else changed.
        @param frame   is held between the first and the last
        @param alpha   0 to 1; palette::disabledAlpha for what is disabled */
    void draw (juce::Graphics&, juce::Rectangle<int> target, int frame, float alpha = 1) const;

    /** Draws a part of a frame with its upper left corner at a place: level meters, tiles. */
    void drawPart (juce::Graphics&, juce::Point<int> at, juce::Rectangle<int> part, int frame,
                   float alpha = 1) const;

    /** Draws a frame to the target's width, its height centred: both ends as they are, the middle repeated.
        @param end   the width of an end in logical pixels */
    void drawWide (juce::Graphics&, juce::Rectangle<int> target, int frame, int end = 8,
                   float alpha = 1) const;

    /** Draws a frame to the target's height, its width centred: top and bottom as they are, the middle repeated. */
    void drawTall (juce::Graphics&, juce::Rectangle<int> target, int frame, int end = 8,
                   float alpha = 1) const;

    /** Fills the target from nine pieces: four corners as they are, the rest repeated. */
    void drawArea (juce::Graphics&, juce::Rectangle<int> target, int frame = 0, int corner = 8,
                   float alpha = 1) const;
};

/** The strip of a name at the set that suits a scale: its own, or the next larger one, or the largest. Decoded at the
    first request, then shared.
    @returns an invalid strip for a name that is not in the table */
Strip strip (std::string_view name, float scale);

/** The scale at which something is being painted, in physical pixels per logical one. */
float scaleOf (juce::Graphics&);

/** The strip of a name for what is being painted. */
inline Strip strip (std::string_view name, juce::Graphics& g)
{
    return strip (name, scaleOf (g));
}

/** The name of a family's member for a deck, 0 to 3: "play_40" gives "play_40_b" for the second deck. */
std::string deckName (std::string_view family, int deck);

/** A picture's file, and the font's, as they lie in the program. Any thread. */
std::span<const std::byte> pngOf (std::size_t row, std::size_t scaleIndex);
std::span<const std::byte> fontData();

/** The bold sans of the interface. Its figures have one width. */
juce::Typeface::Ptr typeface();

/** The name under which the typeface goes. */
constexpr const char* typefaceName = "PX-Bold";
}
