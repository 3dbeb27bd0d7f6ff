#pragma once

#include "text/GlyphBlend.h"
#include "text/ZRTypeface.h"

/** JUCE's software renderer with sharp text: glyphs of registered fonts are laid down from the face cache,
    rendered for the screen's own pixels at every scale, placed to a sixth of a pixel across and to whole ones down.

    All else is JUCE's, and so is text that is turned, sheared, squeezed, larger than `largestHeight` on the
    screen, filled with other than a colour, or of a font that is not registered. Thread of the image. */
class ZRRenderer : public juce::LowLevelGraphicsSoftwareRenderer
{
public:
    static constexpr int smallestHeight = 4, largestHeight = 96; ///< of cached glyphs, in pixels

    ZRRenderer (const juce::Image&, juce::Point<int> origin, const juce::RectangleList<int>& initialClip,
                GlyphBlend::Pixels = GlyphBlend::Pixels::lcd);

    void drawGlyph (int glyphNumber, const juce::AffineTransform&) override;

private:
    bool drawCached (uint32_t code, const juce::AffineTransform&);
    bool bindFace();
    void drawClipped (const CachedGlyph&, int phase, juce::Point<int> origin);

    using ClipRegions =
        juce::RenderingHelpers::ClipRegions<juce::RenderingHelpers::SoftwareRendererSavedState>;

    const GlyphBlend::Pixels pixels;

    // The font that was drawn last, for a line is drawn in one.
    juce::Typeface::Ptr boundTypeface;
    ZRTypeface* typeface = nullptr; ///< the same, null where it is none of ours
    std::shared_ptr<CachedFace> face;
};

/** A context that draws sharp text into an image, for pictures and tests: JUCE asks the look only where a
    window is painted.
    @param image    RGB or ARGB
    @param origin   where the drawing's (0, 0) lies in the image
    @param clip     in pixels of the image */
std::unique_ptr<juce::LowLevelGraphicsContext>
createTextContext (const juce::Image& image, juce::Point<int> origin, const juce::RectangleList<int>& clip,
                   GlyphBlend::Pixels = GlyphBlend::Pixels::lcd);
