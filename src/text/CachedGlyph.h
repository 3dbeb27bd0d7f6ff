#pragma once

#include "text/FreeTypeFace.h"

#include <array>
#include <vector>

/** A glyph of one face at one size as it is laid on the screen: six renderings, each a sixth of a pixel further right
    than the one before, with a byte of coverage for each of a pixel's three coloured stripes. */
struct CachedGlyph
{
    static constexpr int numPhases = 6;
    static constexpr int stripes = 3; ///< bytes of a pixel: red, green, blue, as they stand on a screen

    int width = 0, height = 0; ///< in pixels, the same for all phases; 0 for a blank
    int left = 0;              ///< the first column, in pixels right of the pen's whole pixel
    int top = 0;               ///< the first row, in pixels above the baseline
    double advance = 0.0;      ///< to the next glyph's place, in pixels, unrounded, without embolden
    int rowBytes = 0;
    std::array<const uint8_t*, numPhases> phases {}; ///< into `block`
    std::vector<uint8_t> block;                      ///< width x height x 3 x 6 bytes

    /** The rendering to draw, and its place. */
    struct Place
    {
        int phase;  ///< 0 to 5
        int column; ///< the image's column that the glyph's `left` counts from
    };

    /** The rendering for a pen's place. @param x   in pixels of the image */
    static Place placeAt (double x) noexcept;

    /** Renders all phases of a glyph; an empty glyph of no width where the face can't give it.
        @param face    at the height wanted */
    static CachedGlyph render (FreeTypeFace& face, uint32_t code, const FreeTypeFace::Style&);
};
