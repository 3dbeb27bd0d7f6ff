#pragma once

#include "skin/Skin.h"

#include <juce_gui_basics/juce_gui_basics.h>

#include <string>
#include <string_view>

/** The picture of a widget: frames of a strip of the skin, or of one's own image.

    A strip of the skin is taken at the scale of what it is drawn on, so it is sharp and never scaled. Sizes and places
    are in the pixels of components. Cheap to copy. Message thread. */
class SkinPicture
{
public:
    SkinPicture() = default;

    /** A strip of the skin from one of its frames on. An unknown name gives an empty picture. */
    SkinPicture (std::string_view stripName, int firstFrame = 0);
    SkinPicture (const char* stripName, int firstFrame = 0)
        : SkinPicture (std::string_view (stripName), firstFrame)
    {
    }
    SkinPicture (const std::string& stripName, int firstFrame = 0)
        : SkinPicture (std::string_view (stripName), firstFrame)
    {
    }

    /** An image of unscaled pixels. @param frames   that lie in it from top to bottom, of equal height */
    SkinPicture (juce::Image, int frames = 1);

    bool isEmpty() const noexcept { return !strip.isValid(); }
    int frames() const noexcept { return strip.frames - first; }
    int width() const noexcept { return strip.width; }
    int height() const noexcept { return strip.height; }

    /** Draws a frame in the middle of the target. Frames outside the picture are the nearest inside.
        @param alpha   0 to 1 */
    void draw (juce::Graphics&, juce::Rectangle<int> target, int frame = 0, float alpha = 1.0f) const;

    /** Draws a part of a frame with its upper left corner at a place. */
    void drawPart (juce::Graphics&, juce::Point<int> at, juce::Rectangle<int> part, int frame = 0,
                   float alpha = 1.0f) const;

    /** Draws a frame in any width, and in the middle of any height: its ends as they are, its middle repeated. */
    void drawWide (juce::Graphics&, juce::Rectangle<int> target, int frame = 0, float alpha = 1.0f) const;

    /** The same in any height. */
    void drawTall (juce::Graphics&, juce::Rectangle<int> target, int frame = 0, float alpha = 1.0f) const;

    /** True where a frame has nothing at all, and outside it. */
    bool isClearAt (juce::Point<int>, int frame = 0) const;

private:
    static constexpr int endLength = 8; ///< of what is drawn as it is, where the middle is repeated

    const skin::Strip& at (juce::Graphics&) const;
    int frameIn (int frame) const noexcept;

    std::string name; ///< empty for an image of one's own
    int first = 0;
    skin::Strip strip;             ///< of scale 1
    mutable skin::Strip latest;    ///< of the scale that was drawn last
    mutable float latestScale = 0; ///< that was asked for
};
