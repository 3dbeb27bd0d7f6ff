#pragma once

#include <juce_graphics/juce_graphics.h>

#include <algorithm>
#include <cstdint>
#include <functional>

/** A window of physical pixels on an endless picture that slides sideways below it. A column stays in the place that it has in a
    ring as long as it is in the window, so a move costs no more than the columns that come into it. Message thread. */
class ScrollingImage
{
public:
    /** Draws columns of the endless picture, side by side. The image holds them alone, in RGB, and is filled with the ground.
        @param first   the leftmost of them, its coordinate in the endless picture */
    using Draw = std::function<void (juce::Image& columns, int64_t first)>;

    /** The image is opaque: to lay it down is a copy. */
    explicit ScrollingImage (juce::Colour c) : ground (c) {}

    /** In physical pixels. Another size than before drops the image. */
    void setSize (int width, int height);

    /** Everything is drawn at the next moveTo(). */
    void invalidate() noexcept { valid = false; }

    /** Columns from this one on are drawn at the next moveTo(). */
    void invalidateFrom (int64_t column) noexcept { validEnd = std::min (validEnd, column); }

    /** Follows a track that loads, or another one: what the image shows of it otherwise is drawn at the next moveTo().
        @param shown         frames that were loaded the last time; takes those that are now
        @param columnShown   the column up to which nothing changes when more is loaded
        @returns false if nothing has changed */
    bool followLoading (int32_t& shown, int32_t loaded, int64_t columnShown) noexcept;

    /** Moves the window and draws what it lacks. @param left   the column at its left edge
        @returns columns that were drawn */
    int moveTo (int64_t left, const Draw&);

    /** Lays some rows of the window down in physical pixels. @param x   of the window's left edge @param y   of its top */
    void paint (juce::Graphics&, int x, int y, juce::Range<int> rows) const;

    int height() const noexcept { return picture.getHeight(); }

private:
    int drawBetween (int64_t begin, int64_t end, const Draw&);
    int placeOf (int64_t column) const noexcept;

    const juce::Colour ground;
    juce::Image picture;
    int64_t leftColumn = 0;
    int64_t validEnd = 0; ///< columns from here on are stale
    bool valid = false;
};
