#include "text/ZRRenderer.h"

#include <cmath>

namespace
{
/** Receives the pixels of a clip region with soft edges and blends there. */
struct SoftClip
{
    const juce::Image::BitmapData& target;
    const CachedGlyph& glyph;
    int phase;
    juce::Point<int> origin;
    GlyphBlend::Ink ink;
    int y = 0;

    void fill (int x, int width, int level) const
    {
        GlyphBlend::blend (target, glyph, phase, origin, { x, y, width, 1 }, ink, level);
    }

    void setEdgeTableYPos (int newY) { y = newY; }
    void handleEdgeTablePixel (int x, int level) const { fill (x, 1, level + 1); }
    void handleEdgeTablePixelFull (int x) const { fill (x, 1, 256); }
    void handleEdgeTableLine (int x, int width, int level) const { fill (x, width, level + 1); }
    void handleEdgeTableLineFull (int x, int width) const { fill (x, width, 256); }
};

bool isOne (float scale)
{
    return std::abs (scale - 1.0f) < 0.01f;
}
}

ZRRenderer::ZRRenderer (const juce::Image& image, juce::Point<int> origin,
                        const juce::RectangleList<int>& initialClip, GlyphBlend::Pixels pixelsToUse)
    : LowLevelGraphicsSoftwareRenderer (image, origin, initialClip),
      pixels (pixelsToUse)
{
}

void ZRRenderer::drawGlyph (int glyphNumber, const juce::AffineTransform& transform)
{
    if (stack->clip != nullptr && !drawCached (static_cast<uint32_t> (glyphNumber), transform))
        LowLevelGraphicsSoftwareRenderer::drawGlyph (glyphNumber, transform);
}

bool ZRRenderer::bindFace()
{
    const auto& place = stack->transform;
    const auto scale = place.isOnlyTranslated ? 1.0f : place.complexTransform.mat11;
    const auto height = juce::roundToInt (stack->font.getHeight() * scale);
    auto wanted = stack->font.getTypefacePtr();
    if (wanted != boundTypeface)
    {
        boundTypeface = std::move (wanted);
        typeface = dynamic_cast<ZRTypeface*> (boundTypeface.get());
        face.reset();
    }
    if (typeface == nullptr || height < smallestHeight || height > largestHeight)
        return false;
    if (face == nullptr || face->pixelHeight != height)
        face = typeface->getFace (height);
    return true;
}

bool ZRRenderer::drawCached (uint32_t code, const juce::AffineTransform& transform)
{
    const auto& place = stack->transform;
    if (!transform.isOnlyTranslation() || !stack->fillType.isColour()
        || !isOne (stack->font.getHorizontalScale())
        || stack->image.getFormat() == juce::Image::SingleChannel)
        return false;
    juce::Point<double> pen (transform.getTranslationX(), transform.getTranslationY());
    if (place.isOnlyTranslated)
        pen += place.offset.toDouble();
    else
    {
        const auto& to = place.complexTransform;
        if (place.isRotated || !isOne (to.mat00 / to.mat11))
            return false;
        pen = { pen.x * to.mat00 + to.mat02, pen.y * to.mat11 + to.mat12 };
    }
    if (!bindFace())
        return false;
    constexpr double farthest = 1.0e6; // beyond any image; keeps whole pixels whole
    if (!(std::abs (pen.x) < farthest && std::abs (pen.y) < farthest) || ZRTypeface::isIgnorable (code))
        return true;

    const auto other = typeface->getFallbackFace (code, face->pixelHeight);
    const auto& glyph = (other != nullptr ? *other : *face).getGlyph (code);
    if (glyph.width == 0)
        return true;
    const auto [phase, column] = CachedGlyph::placeAt (pen.x);
    drawClipped (glyph, phase, { column + glyph.left, juce::roundToInt (pen.y) - glyph.top });
    return true;
}

void ZRRenderer::drawClipped (const CachedGlyph& glyph, int phase, juce::Point<int> origin)
{
    const auto area = juce::Rectangle<int> (origin.x, origin.y, glyph.width, glyph.height)
                          .getIntersection (stack->image.getBounds());
    if (area.isEmpty() || !stack->clip->clipRegionIntersects (area))
        return;

    const GlyphBlend::Ink ink { stack->fillType.colour, pixels };
    const juce::Image::BitmapData target (stack->image, juce::Image::BitmapData::readWrite);
    if (const auto* const list = dynamic_cast<const ClipRegions::RectangleListRegion*> (stack->clip.get()))
    {
        for (const auto& rectangle : list->clip)
        {
            const auto part = rectangle.getIntersection (area);
            if (!part.isEmpty())
                GlyphBlend::blend (target, glyph, phase, origin, part, ink, 256);
        }
    }
    else if (const auto* const edges = dynamic_cast<const ClipRegions::EdgeTableRegion*> (stack->clip.get()))
    {
        juce::EdgeTable soft (area);
        soft.clipToEdgeTable (edges->edgeTable);
        SoftClip clip { target, glyph, phase, origin, ink };
        soft.iterate (clip);
    }
}

std::unique_ptr<juce::LowLevelGraphicsContext> createTextContext (const juce::Image& image,
                                                                  juce::Point<int> origin,
                                                                  const juce::RectangleList<int>& clip,
                                                                  GlyphBlend::Pixels pixels)
{
    return std::make_unique<ZRRenderer> (image, origin, clip, pixels);
}
