#pragma once

#include <juce_graphics/juce_graphics.h>

#include <algorithm>
#include <cstdint>
#include <functional>

/** A window of physical pixels on an endless picture that slides sideways below it. What stays in the window when it
    moves is moved, not drawn; only what comes into it is. Message thread. */
class ScrollingImage
{
public:
    /** Draws columns of the endless picture. The bitmap holds them alone, in RGB, and is filled with the ground.
        @param first   the leftmost of them, its coordinate in the endless picture */
    using Draw = std::function<void (juce::Image::BitmapData&, int64_t first)>;

    /** The image is opaque: to lay it down is a copy. */
    explicit ScrollingImage (juce::Colour c) : ground (c) {}

    /** In physical pixels. Another size than before drops the image. */
    void setSize (int width, int height);

    /** Everything is drawn at the next moveTo(). */
    void invalidate() noexcept { valid = false; }

    /** Columns from this one on are drawn at the next moveTo(). */
    void invalidateFrom (int64_t column) noexcept { validEnd = std::min (validEnd, column); }

    /** Moves the window and draws what it lacks. @param left   the column at its left edge
        @returns columns that were drawn */
    int moveTo (int64_t left, const Draw&);

    const juce::Image& image() const noexcept { return picture; }

private:
    int drawBetween (int64_t begin, int64_t end, const Draw&);

    const juce::Colour ground;
    juce::Image picture;
    int64_t leftColumn = 0;
    int64_t validEnd = 0; ///< columns from here on are stale
    bool valid = false;
};
