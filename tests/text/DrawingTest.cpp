#include "TestFont.h"

#include <gtest/gtest.h>

namespace
{
/** A glyph with the pen at a place of the image. */
void drawAt (Canvas& canvas, int glyph, float x, float y)
{
    canvas.context->drawGlyph (glyph, juce::AffineTransform::translation (x, y));
}

/** A canvas with one glyph. */
struct Drawn : Canvas
{
    Drawn (int glyph, float x, float height = 16.0f) : Canvas (60, 40)
    {
        g.setFont (TestFont::withHeight (height));
        drawAt (*this, glyph, x, 30.0f);
    }
};

bool samePixels (const juce::Image& a, const juce::Image& b)
{
    for (int y = 0; y < a.getHeight(); ++y)
        for (int x = 0; x < a.getWidth(); ++x)
            if (a.getPixelAt (x, y) != b.getPixelAt (x, y))
                return false;
    return true;
}
}

TEST (CachedGlyph, ThePhaseFollowsTheSixthOfThePixel)
{
    struct Row
    {
        double x;
        int phase, column;
    };
    for (const auto& row :
         { Row { 10.0, 4, 10 }, Row { 10.17, 5, 10 }, Row { 10.34, 0, 11 }, Row { 10.5, 1, 11 },
           Row { 10.99, 3, 11 }, Row { -0.5, 1, 0 }, Row { -1.0, 4, -1 } })
    {
        const auto place = CachedGlyph::placeAt (row.x);
        EXPECT_EQ (place.phase, row.phase) << row.x;
        EXPECT_EQ (place.column, row.column) << row.x;
    }
}

TEST (ZRRenderer, TheInkFollowsThePenBySixthsOfAPixel)
{
    const auto atWhole = Drawn ('l', 10.0f).centroid();
    for (int sixths = 0; sixths < 12; ++sixths)
    {
        const auto x = 10.0f + static_cast<float> (sixths) / 6.0f + 0.01f;
        EXPECT_NEAR (Drawn ('l', x).centroid() - atWhole, sixths / 6.0, 0.02) << sixths;
    }
    // The middle of the letter's ink is where its outline has it.
    const auto outline =
        CachedFace ("x", TestFont::data().getData(), TestFont::data().getSize(), 96, false, 0, 0)
            .getOutline ('l')
            .getBounds();
    EXPECT_NEAR (atWhole, 10.0 + 16.0 * outline.getCentreX(), 0.05);
}

TEST (ZRRenderer, AStemIsSharpAndItsEdgesHaveTheStripesOrder)
{
    const Drawn canvas ('l', 10.0f, 22.0f);
    auto first = 0, last = 0;
    for (int x = 0; x < 60; ++x)
        if (canvas.columnInk (x) > 0)
        {
            first = first == 0 ? x : first;
            last = x;
        }
    constexpr int middle = 22;
    EXPECT_LE (last - first, 6);
    // Left edge: the ink begins in the blue stripe; right edge: it ends in the red one.
    EXPECT_LE (canvas.at (first, middle).getRed(), canvas.at (first, middle).getGreen());
    EXPECT_LE (canvas.at (first, middle).getGreen(), canvas.at (first, middle).getBlue());
    EXPECT_GE (canvas.at (last, middle).getRed(), canvas.at (last, middle).getGreen());
    EXPECT_GE (canvas.at (last, middle).getGreen(), canvas.at (last, middle).getBlue());
    auto darkest = 255, brightest = 0;
    for (int x = first; x <= last; ++x)
        brightest = std::max<int> (brightest, canvas.at (x, middle).getGreen());
    darkest = canvas.at (first - 1, middle).getGreen();
    EXPECT_GE (brightest, 250);
    EXPECT_EQ (darkest, 0);
}

TEST (ZRRenderer, OnAnEmptyImageCoverageRaisesAlphaByTheLargestChannel)
{
    Canvas canvas (40, 30, juce::Image::ARGB);
    canvas.g.setFont (TestFont::withHeight (16.0f));
    drawAt (canvas, 'S', 10.0f, 20.0f);
    const juce::Image::BitmapData data (canvas.image, juce::Image::BitmapData::readOnly);
    auto covered = 0;
    for (int y = 0; y < 30; ++y)
        for (int x = 0; x < 40; ++x)
        {
            const auto& pixel = *reinterpret_cast<const juce::PixelARGB*> (data.getPixelPointer (x, y));
            const auto largest = std::max ({ pixel.getRed(), pixel.getGreen(), pixel.getBlue() });
            EXPECT_EQ (pixel.getAlpha(), largest); // white on nothing: both are the coverage
            covered += largest > 200 ? 1 : 0;
        }
    EXPECT_GT (covered, 20);
}

TEST (ZRRenderer, GreyPixelsHaveNoColour)
{
    Canvas canvas (120, 30, juce::Image::RGB, GlyphBlend::Pixels::grey);
    canvas.g.setFont (TestFont::withHeight (16.0f));
    canvas.g.drawSingleLineText ("Waltz 128", 5, 20);
    EXPECT_GT (canvas.ink(), 10000);
    for (int x = 0; x < 120; ++x)
        for (int y = 0; y < 30; ++y)
            EXPECT_TRUE (canvas.at (x, y).getSaturation() < 0.001f);
}

TEST (ZRRenderer, StaysWithinTheClip)
{
    const auto draw = [] (Canvas& canvas)
    {
        canvas.g.setFont (TestFont::withHeight (22.0f));
        canvas.g.drawSingleLineText ("WAVES", 2, 20);
    };
    Canvas whole (100, 30);
    draw (whole);

    Canvas rectangles (100, 30), path (100, 30), outside (100, 30);
    rectangles.g.excludeClipRegion ({ 30, 8, 20, 7 });
    rectangles.g.reduceClipRegion ({ 10, 5, 70, 20 });
    draw (rectangles);
    juce::Path disc;
    disc.addEllipse (20.0f, 0.0f, 40.0f, 30.0f);
    path.g.reduceClipRegion (disc);
    draw (path);
    outside.g.reduceClipRegion ({ 0, 25, 100, 5 });
    draw (outside);
    EXPECT_EQ (outside.ink(), 0);

    auto soft = 0;
    for (int x = 0; x < 100; ++x)
        for (int y = 0; y < 30; ++y)
        {
            const auto full = whole.at (x, y);
            const auto inRectangles = juce::Rectangle<int> (10, 5, 70, 20).contains (x, y)
                                      && !juce::Rectangle<int> (30, 8, 20, 7).contains (x, y);
            ASSERT_EQ (rectangles.at (x, y), inRectangles ? full : juce::Colours::black) << x << ' ' << y;
            const auto fromCentre = std::hypot ((x - 39.5) / 20.0, (y - 14.5) / 15.0);
            if (fromCentre < 0.9 || fromCentre > 1.1)
            {
                ASSERT_EQ (path.at (x, y), fromCentre < 1.0 ? full : juce::Colours::black) << x << ' ' << y;
            }
            else
                soft += path.at (x, y) != full && path.at (x, y) != juce::Colours::black ? 1 : 0;
        }
    EXPECT_GT (soft, 0);
}

TEST (ZRRenderer, AScaleDrawsTheLargerGlyphsItself)
{
    Canvas scaled (120, 80), large (120, 80);
    scaled.g.addTransform (juce::AffineTransform::scale (2.0f));
    scaled.g.setFont (TestFont::withHeight (11.0f));
    scaled.g.drawSingleLineText ("Waltz", 5, 15);
    large.g.setFont (TestFont::withHeight (22.0f));
    large.g.drawSingleLineText ("Waltz", 10, 30);
    EXPECT_GT (large.ink(), 0);
    EXPECT_TRUE (samePixels (scaled.image, large.image));

    // Layers move the origin, and so must the ink.
    Canvas layered (120, 80);
    layered.g.reduceClipRegion (7, 3, 100, 70);
    layered.g.beginTransparencyLayer (1.0f);
    layered.g.setFont (TestFont::withHeight (22.0f));
    layered.g.drawSingleLineText ("Waltz", 10, 30);
    layered.g.endTransparencyLayer();
    EXPECT_NEAR (layered.centroid(), large.centroid(), 0.05);
}

TEST (ZRRenderer, TurnedSqueezedAndHugeTextIsDrawnByTheToolkit)
{
    const auto check =
        [] (const char* what, const juce::AffineTransform& transform, float squeeze, float height)
    {
        Canvas canvas (200, 200);
        canvas.g.addTransform (transform);
        canvas.g.setFont (TestFont::withHeight (height).withHorizontalScale (squeeze));
        canvas.g.drawSingleLineText ("Waltz", 20, 110);
        auto colours = 0;
        for (int x = 0; x < 200; ++x)
            for (int y = 0; y < 200; ++y)
                colours += canvas.at (x, y).getSaturation() > 0.05f ? 1 : 0;
        EXPECT_EQ (colours, 0) << what;
        EXPECT_GT (canvas.ink(), 20000) << what;
    };
    check ("turned", juce::AffineTransform::rotation (0.5f, 100.0f, 100.0f), 1.0f, 16.0f);
    check ("sheared", juce::AffineTransform::shear (0.3f, 0.0f), 1.0f, 16.0f);
    check ("squeezed", {}, 0.7f, 16.0f);
    check ("huge", {}, 1.0f, 110.0f);
}

TEST (ZRRenderer, ACharacterThatTheFontLacksComesFromAnother)
{
    constexpr auto four = 0x1d7e6; // the mathematicians' sans-serif 4: in the plain face of the family alone
    CachedFace face ("x", TestFont::data().getData(), TestFont::data().getSize(), 16, true, 0, 0);
    ASSERT_FALSE (face.hasGlyph (four));
    const Drawn fallback (four, 10.0f), box (0x10fffe, 10.0f);
    EXPECT_GT (fallback.ink(), 1000);
    EXPECT_GT (box.ink(), 1000);
    EXPECT_FALSE (samePixels (fallback.image, box.image));
    EXPECT_NEAR (fallback.centroid(), Drawn ('4', 10.0f).centroid(), 1.0);
    EXPECT_EQ (Drawn (0x200b, 10.0f).ink(), 0);
}
