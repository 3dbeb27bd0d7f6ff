#include "TestFont.h"

const juce::MemoryBlock& TestFont::data()
{
    static const auto block = []
    {
        juce::MemoryBlock read;
        juce::File (PX_TEST_FONT).loadFileAsData (read);
        return read;
    }();
    return block;
}

ZRRendererFontManager::FontFile TestFont::file()
{
    return { name, data().getData(), data().getSize() };
}

juce::Font TestFont::withHeight (float height)
{
    const juce::Typeface::Ptr typeface (*new ZRTypeface (file(), "Regular", false, false));
    return juce::Font (typeface).withHeight (height);
}

Canvas::Canvas (int width, int height, juce::Image::PixelFormat format, GlyphBlend::Pixels pixels)
    : image (format, width, height, true),
      context (createTextContext (image, {}, image.getBounds(), pixels)),
      g (*context)
{
    g.setColour (juce::Colours::white);
}

int Canvas::columnInk (int x) const
{
    auto sum = 0;
    for (int y = 0; y < image.getHeight(); ++y)
        sum += at (x, y).getRed() + at (x, y).getGreen() + at (x, y).getBlue();
    return sum;
}

int Canvas::ink() const
{
    auto sum = 0;
    for (int x = 0; x < image.getWidth(); ++x)
        sum += columnInk (x);
    return sum;
}

double Canvas::centroid() const
{
    auto weighted = 0.0;
    for (int x = 0; x < image.getWidth(); ++x)
        for (int y = 0; y < image.getHeight(); ++y)
            weighted += at (x, y).getRed() * (x + 1.0 / 6.0) + at (x, y).getGreen() * (x + 0.5)
                        + at (x, y).getBlue() * (x + 5.0 / 6.0);
    return weighted / ink();
}
