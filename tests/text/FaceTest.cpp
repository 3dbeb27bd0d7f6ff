#include "TestFont.h"

#include "text/FaceFontCache.h"
#include "text/ZRRendererLookAndFeel.h"

#include <gtest/gtest.h>

#include <numeric>

namespace
{
std::shared_ptr<CachedFace> getFace (int height, double embolden = 0.0, double slant = 0.0)
{
    return FaceFontCache::getInstance()->getFace (TestFont::name, TestFont::data().getData(),
                                                  TestFont::data().getSize(), height, true, embolden, slant);
}
}

TEST (FaceFontCache, TheThirtyFirstFaceTakesThePlaceOfTheFirst)
{
    const auto first = getFace (201);
    for (int height = 202; height <= 230; ++height)
        getFace (height);
    EXPECT_EQ (getFace (201), first);
    EXPECT_EQ (FaceFontCache::getInstance()->getNumFaces(), FaceFontCache::maxFaces);

    const auto second = getFace (202);
    getFace (231);
    EXPECT_EQ (FaceFontCache::getInstance()->getNumFaces(), FaceFontCache::maxFaces);
    EXPECT_EQ (getFace (202), second);
    EXPECT_GT (first->getGlyph ('A').width, 0) << "who holds a face may go on drawing with it";
    EXPECT_NE (getFace (201), first);
    EXPECT_NE (getFace (231, 0.8), getFace (231));
    EXPECT_NE (getFace (231, 0.0, 0.4), getFace (231));
}

TEST (CachedFace, ControlCodesAreBlanksAsWideAsASpace)
{
    auto face = getFace (16);
    for (const auto code : { 0u, 10u, 31u })
    {
        EXPECT_EQ (face->getGlyph (code).width, 0);
        EXPECT_GT (face->getGlyph (code).advance, 0.0);
        EXPECT_EQ (&face->getGlyph (code), &face->getGlyph (32));
    }
}

TEST (CachedFace, EmboldenWidensStrokesAndSlantLeansThem)
{
    const auto inkOf = [] (const CachedGlyph& glyph)
    { return std::accumulate (glyph.block.begin(), glyph.block.end(), 0.0) / (255.0 * 18.0); };
    const auto plain = getFace (24), bold = getFace (24, 0.8), oblique = getFace (24, 0.0, 0.4);
    // A stem of the letter's height, 0.8 pixels wider.
    const auto stem = plain->getGlyph ('l').height;
    EXPECT_NEAR (inkOf (bold->getGlyph ('l')) - inkOf (plain->getGlyph ('l')), 0.8 * stem, 0.05 * stem);
    EXPECT_NEAR (bold->getAdvance ('l') - plain->getAdvance ('l'), 0.8, 1.0e-6);
    EXPECT_NEAR (oblique->getGlyph ('l').width - plain->getGlyph ('l').width, 0.4 * stem, 1.01);
    EXPECT_NEAR (inkOf (oblique->getGlyph ('l')), inkOf (plain->getGlyph ('l')), 0.05 * stem);
}

TEST (CachedFace, NothingIsCutOff)
{
    // Letters that reach out of their cell: to the left, below, above, wider than the line is high.
    auto face = getFace (13);
    for (const auto code : { uint32_t { 'j' }, uint32_t { 'W' }, uint32_t { '@' }, 0xc5u, 0x1c4u, 0x2014u })
    {
        const auto& glyph = face->getGlyph (code);
        auto inks = std::array<double, CachedGlyph::numPhases> {};
        for (size_t phase = 0; phase < inks.size(); ++phase)
            for (int i = 0; i < glyph.rowBytes * glyph.height; ++i)
                inks[phase] += glyph.phases[phase][i];
        ASSERT_GT (inks[0], 0.0);
        for (const auto ink : inks)
            EXPECT_NEAR (ink / inks[0], 1.0, 0.02) << "code " << code;
    }
}

TEST (ZRTypeface, AStringIsAsWideAsItsLastPosition)
{
    const auto font = TestFont::withHeight (13.0f);
    const auto text = juce::String::fromUTF8 ("-01:23.4 \xc3\x84pfel \xf0\x9d\x9f\xa6\xe2\x80\x8b!");
    juce::Array<int> glyphs;
    juce::Array<float> positions;
    font.getGlyphPositions (text, glyphs, positions);
    ASSERT_EQ (positions.size(), text.length() + 1);
    EXPECT_NEAR (positions.getLast(), font.getStringWidthFloat (text), 1.0e-3f);
    EXPECT_GT (positions.getLast(), 60.0f);
    for (const auto* figures : { "1111", "0000", "8274" })
        EXPECT_FLOAT_EQ (font.getStringWidthFloat (figures), font.getStringWidthFloat ("9999"));
}

TEST (ZRTypeface, AFileThatIsNoFontHasEmptyGlyphsOfNoWidth)
{
    const juce::String noFont ("This is no font file.");
    const ZRRendererFontManager::FontFile file { "None", noFont.toRawUTF8(), noFont.getNumBytesAsUTF8() };
    EXPECT_FALSE (ZRRendererFontManager::getInstance().addFont (file.name, file.data, file.size));
    EXPECT_FALSE (ZRRendererFontManager::getInstance().findFont (file.name));
    const juce::Typeface::Ptr typeface (*new ZRTypeface (file, "Regular", false, false));
    EXPECT_EQ (typeface->getStringWidth ("Text"), 0.0f);
    Canvas canvas (60, 20);
    canvas.g.setFont (juce::Font (typeface).withHeight (13.0f));
    canvas.g.drawSingleLineText ("Text", 5, 15);
    EXPECT_EQ (canvas.ink(), 0);
}

TEST (FreeTypeFace, DamagedFilesAreDrawnOrRefusedButNeverMore)
{
    juce::Random random (7);
    auto drawn = 0;
    for (int round = 0; round < 150; ++round)
    {
        auto bytes = TestFont::data();
        const auto header = random.nextBool();
        for (int change = 0; change < 12; ++change)
            bytes[header ? random.nextInt (400) : random.nextInt (static_cast<int> (bytes.getSize()))] =
                static_cast<char> (random.nextInt (256));
        if (round % 5 == 0)
            bytes.setSize (static_cast<size_t> (random.nextInt (static_cast<int> (bytes.getSize()))));
        CachedFace face ("Damaged", bytes.getData(), bytes.getSize(), 13, true, 0.8, 0.4);
        for (const auto code : { uint32_t { 'A' }, uint32_t { 'g' }, uint32_t { '8' }, 0xe4u, 0x30abu })
        {
            const auto& glyph = face.getGlyph (code);
            EXPECT_EQ (glyph.block.size(), static_cast<size_t> (18 * glyph.width * glyph.height));
            EXPECT_TRUE (face.getAdvance (code) >= 0.0 && face.getAdvance (code) <= 8.0 * 13.0 + 1.0);
            face.getOutline (code);
            drawn += glyph.width > 0 ? 1 : 0;
        }
    }
    EXPECT_GT (drawn, 100);
}

TEST (ZRRendererLookAndFeel, GivesOurTypefaceToItsNamesAndTheToolkitsToOthers)
{
    ZRRendererFontManager::getInstance().addFont (TestFont::name, TestFont::data().getData(),
                                                  TestFont::data().getSize());
    ZRRendererLookAndFeel look;
    const auto isOurs = [&] (const juce::String& name)
    {
        const auto typeface = look.getTypefaceForFont ({ name, 13.0f, juce::Font::plain });
        return dynamic_cast<ZRTypeface*> (typeface.get()) != nullptr;
    };
    EXPECT_TRUE (isOurs (TestFont::name));
    EXPECT_FALSE (isOurs (juce::Font::getDefaultSansSerifFontName()));
    look.setDefaultFontName (TestFont::name);
    EXPECT_TRUE (isOurs (juce::Font::getDefaultSansSerifFontName()));
    EXPECT_FALSE (isOurs (juce::Font::getDefaultSerifFontName()));
    const juce::Image image (juce::Image::RGB, 8, 8, true);
    EXPECT_NE (dynamic_cast<ZRRenderer*> (look.createGraphicsContext (image, {}, image.getBounds()).get()),
               nullptr);
}
