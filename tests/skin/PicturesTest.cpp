#include "skin/Palette.h"
#include "skin/Skin.h"

#include <gtest/gtest.h>

#include <set>

namespace
{
using skin::table;

juce::Image frameOf (const skin::Strip& strip, int frame)
{
    return strip.image.getClippedImage (strip.pixels (frame));
}

/** The mean distance of two pictures of one size, 0 to 1, over the pixels that either has. */
double distance (const juce::Image& first, const juce::Image& second)
{
    double sum = 0;
    int count = 0;
    for (int y = 0; y < first.getHeight(); ++y)
        for (int x = 0; x < first.getWidth(); ++x)
        {
            const auto one = first.getPixelAt (x, y), two = second.getPixelAt (x, y);
            if (one.getAlpha() == 0 && two.getAlpha() == 0)
                continue;
            auto seen = [] (juce::Colour colour) { return palette::panel.overlaidWith (colour); };
            const auto a = seen (one), b = seen (two);
            sum += (std::abs (a.getFloatRed() - b.getFloatRed())
                    + std::abs (a.getFloatGreen() - b.getFloatGreen())
                    + std::abs (a.getFloatBlue() - b.getFloatBlue()))
                   / 3;
            ++count;
        }
    return count == 0 ? 0 : sum / count;
}

bool samePixels (const juce::Image& first, const juce::Image& second)
{
    for (int y = 0; y < first.getHeight(); ++y)
        for (int x = 0; x < first.getWidth(); ++x)
            if (first.getPixelAt (x, y) != second.getPixelAt (x, y))
                return false;
    return first.getBounds() == second.getBounds();
}
}

TEST (SkinPictures, EveryRowHasItsPictureAtEveryScale)
{
    std::set<std::string_view> names;
    for (const auto& row : table)
    {
        EXPECT_TRUE (names.insert (row.name()).second) << row.name() << " is there twice";
        for (const float scale : skin::scales)
        {
            const auto strip = skin::strip (row.name(), scale);
            ASSERT_TRUE (strip.isValid()) << row.name() << " at " << scale;
            EXPECT_EQ (strip.scale, scale);
            EXPECT_EQ (strip.image.getWidth(), skin::scaled (row.width, scale)) << row.name();
            EXPECT_EQ (strip.image.getHeight(), skin::scaled (row.height, scale) * row.frames) << row.name();
            // No frame is empty, but for windows' and corners' nothing at rest.
            for (int frame = 0; frame < row.frames; frame += juce::jmax (1, row.frames / 8))
            {
                const juce::Image blank (juce::Image::ARGB, skin::scaled (row.width, scale),
                                         skin::scaled (row.height, scale), true);
                EXPECT_GT (distance (frameOf (strip, frame), blank), 0.004) << row.name() << " " << frame;
            }
        }
    }
}

TEST (SkinPictures, StatesOfAControlDifferAtArmsLength)
{
    for (const auto& row : table)
    {
        using skin::Material;
        const bool hasStates = row.frames == skin::buttonFrames || row.material == Material::uprightCap
                               || row.material == Material::levelCap
                               || row.material == Material::windowButton;
        if (!hasStates)
            continue;
        const auto strip = skin::strip (row.name(), 1);
        for (int one = 0; one < row.frames; ++one)
            for (int two = one + 1; two < row.frames; ++two)
                EXPECT_GT (distance (frameOf (strip, one), frameOf (strip, two)), 0.02)
                    << row.name() << " " << one << " " << two;
        if (row.material == Material::button || row.material == Material::signButton)
        {
            EXPECT_GT (distance (frameOf (strip, skin::normalOff), frameOf (strip, skin::normalOn)), 0.2)
                << row.name();
        }
    }
}

TEST (SkinStrip, CopiesPixelsAtAMatchingScaleWhereverItStands)
{
    for (const float scale : skin::scales)
        for (const auto at : { juce::Point<int> (0, 0), juce::Point<int> (5, 55), juce::Point<int> (3, 1) })
        {
            juce::Image canvas (juce::Image::ARGB, 400, 400, true, juce::SoftwareImageType());
            juce::Graphics g (canvas);
            g.addTransform (juce::AffineTransform::scale (scale));
            const auto strip = skin::strip ("knob_40_b", g);
            ASSERT_EQ (strip.scale, scale);
            strip.draw (g, { at.x, at.y, 40, 40 }, 60);
            const auto frame = frameOf (strip, 60);
            const auto place =
                frame.getBounds().withPosition (skin::scaled (at.x, scale), skin::scaled (at.y, scale));
            EXPECT_TRUE (samePixels (canvas.getClippedImage (place), frame))
                << scale << " at " << at.toString();
        }
}

TEST (SkinStrip, AnotherScaleTakesTheNextLargerSet)
{
    for (const auto& [asked, given] : { std::pair (0.5f, 1.0f),
                                        { 1.1f, 1.25f },
                                        { 1.3f, 1.5f },
                                        { 1.6f, 1.75f },
                                        { 1.8f, 2.0f },
                                        { 3.0f, 2.0f } })
    {
        EXPECT_EQ (skin::strip ("fader_cap", asked).scale, given);
        juce::Image canvas (juce::Image::ARGB, 200, 200, true, juce::SoftwareImageType());
        juce::Graphics g (canvas);
        g.addTransform (juce::AffineTransform::scale (asked));
        skin::strip ("button_24_b", g).draw (g, { 0, 0, 64, 24 }, skin::normalOn);
        const int x = juce::roundToInt (32 * asked), y = juce::roundToInt (12 * asked);
        EXPECT_EQ (canvas.getPixelAt (x, y), palette::decks[1]) << asked;
        EXPECT_EQ (canvas.getPixelAt (x, juce::roundToInt (24 * asked) + 2).getAlpha(), 0) << asked;
    }
}

TEST (SkinStrip, PiecesFillAnyTargetWithoutSeams)
{
    for (const float scale : skin::scales)
        for (const int width : { 20, 37, 64, 101, 333 })
        {
            juce::Image canvas (juce::Image::ARGB, 800, 600, true, juce::SoftwareImageType());
            juce::Graphics g (canvas);
            g.addTransform (juce::AffineTransform::scale (scale));
            skin::strip ("button_24", g).drawWide (g, { 3, 4, width, 24 }, skin::normalOn);
            skin::strip ("panel", g).drawArea (g, { 3, 41, width, 201 });
            skin::strip ("deck_strip", g).drawWide (g, { 0, 260, width, 239 }, 0, 50);
            for (int x = skin::scaled (3, scale); x < skin::scaled (3 + width, scale) && x < 800; ++x)
            {
                EXPECT_EQ (canvas.getPixelAt (x, skin::scaled (16, scale)), palette::quiet)
                    << scale << " " << x;
                EXPECT_EQ (canvas.getPixelAt (x, skin::scaled (141, scale)), palette::panel)
                    << scale << " " << x;
            }
        }
}

TEST (SkinStrip, WhatIsSeenThroughShowsNoPieces)
{
    for (const float scale : skin::scales)
    {
        juce::Image canvas (juce::Image::ARGB, 500, 100, true, juce::SoftwareImageType());
        juce::Graphics g (canvas);
        g.addTransform (juce::AffineTransform::scale (scale));
        skin::strip ("button_24", g)
            .drawWide (g, { 3, 4, 200, 24 }, skin::normalOn, 8, palette::disabledAlpha);
        for (int x = skin::scaled (3, scale); x < skin::scaled (203, scale); ++x)
            EXPECT_NEAR (canvas.getPixelAt (x, skin::scaled (16, scale)).getAlpha(), 102, 1)
                << scale << " " << x;
    }
}

TEST (SkinPalette, TextStandsOutOnItsGround)
{
    using namespace palette;
    std::vector<std::pair<juce::Colour, juce::Colour>> pairs {
        { value, line },       { label, raised },        { label, well },     { accent, ground },
        { tableText, raised }, { anchorNumber, ground }, { selected, ground }
    };
    for (const auto filled : { accent, selected, danger })
        pairs.emplace_back (textOn (filled), filled);
    for (const auto& hue : decks)
    {
        pairs.emplace_back (textOn (hue), hue);
        pairs.emplace_back (hue, raised);
    }
    for (const auto& cue : cues)
        pairs.emplace_back (ink, cue);
    for (const auto& [text, ground] : pairs)
        EXPECT_GE (contrast (text, ground), 4.5) << text.toString() << " on " << ground.toString();
}

TEST (SkinFont, FiguresHaveOneWidth)
{
    const juce::Font font (juce::Font (skin::typeface()).withHeight (22));
    ASSERT_GT (skin::fontData().size(), 10000u);
    EXPECT_NE (skin::typeface()->getName(), juce::Font::getDefaultSansSerifFontName());
    for (const char figure : { '1', '2', '3', '4', '5', '6', '7', '8', '9' })
        EXPECT_FLOAT_EQ (
            font.getStringWidthFloat (juce::String::charToString (static_cast<juce::juce_wchar> (figure))),
            font.getStringWidthFloat ("0"));
}
