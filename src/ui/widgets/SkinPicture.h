#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

/** A picture of the skin, or one's own image, with equal frames one below the other.

    A strip of the skin is drawn from the one that was made for the scale of what it is drawn on, so it is sharp at any
    of them and never scaled. Sizes and positions are in the unscaled pixels of components. Copying is cheap. Message
    thread. */
class SkinPicture
{
public:
    SkinPicture() = default;

    /** A strip of the skin by its name in SkinTable.h, from one of its frames on. An unknown name gives an empty one.
        @param stripName   text that lives as long as the program */
    SkinPicture (const char* stripName, int firstFrame = 0);

    /** @param frames   how many frames the image is cut into, from top to bottom */
    SkinPicture (juce::Image, int frames = 1);

    bool isEmpty() const noexcept { return frameCount == 0; }
    int frames() const noexcept { return frameCount; }

    int width() const noexcept { return frameWidth; }
    int height() const noexcept { return frameHeight; }
    juce::Rectangle<int> bounds() const noexcept { return { frameWidth, frameHeight }; }

    /** Copies a frame to a place. A frame that there is not is limited to those that are. */
    void draw (juce::Graphics&, juce::Point<int> topLeft, int frame = 0) const;

    /** Copies a part of a frame. */
    void drawPart (juce::Graphics&, juce::Point<int> topLeft, juce::Rectangle<int> part, int frame = 0) const;

    /** Draws a frame in any width: its ends as they are, the column in its middle repeated between them. What was
        put together stays in the image cache, so that this is one copy as well. */
    void drawStretched (juce::Graphics&, juce::Rectangle<int> target, int frame = 0) const;

    /** True where a frame has nothing at all, and outside it. */
    bool isClearAt (juce::Point<int>, int frame = 0) const;

private:
    juce::Rectangle<int> cellOf (int frame) const;

    const char* strip = nullptr;
    juce::Image own;
    int first = 0, frameCount = 0, frameWidth = 0, frameHeight = 0;
};
