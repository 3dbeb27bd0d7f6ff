#pragma once

#include "text/ZRRenderer.h"

/** A bold sans of the machine, registered under a name of the tests. */
namespace TestFont
{
inline constexpr auto name = "Test Bold";

const juce::MemoryBlock& data();
ZRRendererFontManager::FontFile file();
juce::Font withHeight (float height);
}

/** An image that is drawn into through the text context. */
struct Canvas
{
    Canvas (int width, int height, juce::Image::PixelFormat = juce::Image::RGB,
            GlyphBlend::Pixels = GlyphBlend::Pixels::lcd);

    juce::Colour at (int x, int y) const { return image.getPixelAt (x, y); }

    /** The sum of the channels' distances from black in a column. */
    int columnInk (int x) const;
    int ink() const;

    /** The mean place of the ink, in pixels from the left edge. */
    double centroid() const;

    juce::Image image;
    std::unique_ptr<juce::LowLevelGraphicsContext> context;
    juce::Graphics g;
};
