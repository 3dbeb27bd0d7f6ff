#include "text/ZRRenderer.h"
#include "text/ZRRendererLookAndFeel.h"

#include "measure/Machine.h"
#include "measure/Timing.h"

#include <cstdio>
#include <memory>

// bench_text: what a page of 500 strings costs, as a part of what JUCE's own text costs, in processor time.
// bench_text FILE: writes a sample of the text at four sizes as a PNG instead. [scale] [grey]

namespace
{
constexpr int width = 1200, height = 900;
constexpr const char* fontName = "PX-Bold";

using MakeContext = std::unique_ptr<juce::LowLevelGraphicsContext> (*) (const juce::Image&);

std::unique_ptr<juce::LowLevelGraphicsContext> sharp (const juce::Image& image)
{
    return createTextContext (image, {}, image.getBounds());
}

std::unique_ptr<juce::LowLevelGraphicsContext> plain (const juce::Image& image)
{
    return std::make_unique<juce::LowLevelGraphicsSoftwareRenderer> (image);
}

/** Strings as a browser and four decks show them. */
std::vector<juce::GlyphArrangement> makePage (const juce::Font& font)
{
    std::vector<juce::GlyphArrangement> page (500);
    for (int i = 0; i < 500; ++i)
    {
        const auto text = juce::String (100 + i) + "  Midnight Express (Extended Mix)  "
                          + juce::String (120 + i % 16) + ".25";
        page[static_cast<size_t> (i)].addLineOfText (font, text, static_cast<float> (10 + 290 * (i % 4)),
                                                     static_cast<float> (15 + 7 * (i / 4)));
    }
    return page;
}

/** Processor time of ten pages, in nanoseconds. */
double tenPagesCost (const std::vector<juce::GlyphArrangement>& page, float scale, MakeContext make)
{
    // As a window's image is on Linux.
    juce::Image image (juce::Image::ARGB, juce::roundToInt (width * scale), juce::roundToInt (height * scale),
                       true);
    const auto context = make (image);
    juce::Graphics g (*context);
    g.addTransform (juce::AffineTransform::scale (scale));
    g.setColour (juce::Colour (0xffe4e6e8));
    const auto before = Timing::processorNanoseconds (Timing::Threads::own);
    for (int i = 0; i < 10; ++i)
        for (const auto& line : page)
            line.draw (g);
    return static_cast<double> (Timing::processorNanoseconds (Timing::Threads::own) - before);
}

void printRow (const juce::Font& ours, const juce::Font& toolkits, float scale)
{
    const auto ourPage = makePage (ours), theirPage = makePage (toolkits);
    tenPagesCost (ourPage, scale, sharp); // renders the glyphs
    tenPagesCost (theirPage, scale, plain);
    auto ourCost = 0.0, theirCost = 0.0;
    constexpr int rounds = 12; // in turns, so that the machine's other work falls on both
    for (int i = 0; i < rounds; ++i)
    {
        ourCost += tenPagesCost (ourPage, scale, sharp);
        theirCost += tenPagesCost (theirPage, scale, plain);
    }
    std::printf ("%8.0f %8.0f %14.2f %14.2f %8.2f\n", static_cast<double> (ours.getHeight()),
                 static_cast<double> (scale), ourCost * 0.1e-6 / rounds, theirCost * 0.1e-6 / rounds,
                 ourCost / theirCost);
}

int writeSample (const juce::File& file, float scale, GlyphBlend::Pixels pixels)
{
    juce::Image image (juce::Image::RGB, juce::roundToInt (420 * scale), juce::roundToInt (150 * scale),
                       true);
    const auto context = createTextContext (image, {}, image.getBounds(), pixels);
    juce::Graphics g (*context);
    g.fillAll (juce::Colour (0xff16181a));
    g.addTransform (juce::AffineTransform::scale (scale));
    auto y = 8.0f;
    for (const auto size : { 11.0f, 13.0f, 16.0f, 22.0f })
    {
        const auto capitals = juce::approximatelyEqual (size, 11.0f);
        g.setColour (juce::Colour (capitals ? 0xffa0a1a3 : 0xffe4e6e8));
        g.setFont (
            juce::Font (fontName, size, juce::Font::plain).withExtraKerningFactor (capitals ? 0.04f : 0.0f));
        for (const auto* text :
             { "GAIN HIGH MID LOW FILTER CUE SYNC KEY LOOP WAVE j",
               "Illicit Waltz 128.00 -01:23.4 \xc3\x84pfel \xe2\x99\xab \xf0\x9d\x9f\xa6 \xe3\x82\xab" })
        {
            g.drawSingleLineText (juce::String::fromUTF8 (text), 8, juce::roundToInt (y + 0.8f * size));
            y += size + 3.0f;
        }
    }
    juce::FileOutputStream out (file);
    out.setPosition (0);
    out.truncate();
    return juce::PNGImageFormat().writeImageToStream (image, out) ? 0 : 1;
}
}

int main (int count, char** arguments)
{
    const juce::ScopedJuceInitialiser_GUI toolkit;
    ZRRendererLookAndFeel look;
    juce::LookAndFeel::setDefaultLookAndFeel (&look);
    juce::MemoryBlock font;
    juce::File (PX_TEST_FONT).loadFileAsData (font);
    ZRRendererFontManager::getInstance().addFont (fontName, font.getData(), font.getSize());

    auto result = 0;
    if (count > 1)
        result = writeSample (juce::File::getCurrentWorkingDirectory().getChildFile (arguments[1]),
                              count > 2 ? juce::String (arguments[2]).getFloatValue() : 1.0f,
                              count > 3 ? GlyphBlend::Pixels::grey : GlyphBlend::Pixels::lcd);
    else
    {
        Machine::print();
        std::printf ("%8s %8s %14s %14s %8s\n", "height", "scale", "ours, ms", "toolkit, ms", "part");
        const juce::Font toolkits (juce::Typeface::createSystemTypefaceFor (font.getData(), font.getSize()));
        for (const auto size : { 11.0f, 13.0f, 22.0f })
            for (const auto scale : { 1.0f, 2.0f })
                printRow ({ fontName, size, juce::Font::plain }, toolkits.withHeight (size), scale);
    }
    juce::LookAndFeel::setDefaultLookAndFeel (nullptr);
    return result;
}
