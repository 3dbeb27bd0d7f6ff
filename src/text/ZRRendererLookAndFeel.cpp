#include "text/ZRRendererLookAndFeel.h"

#include "text/ZRRenderer.h"

namespace
{
/** True if an image's pixels lie in memory. On Linux a window's own images do too, and call themselves native. */
bool isInMemory (const juce::Image& image)
{
    const auto data = image.getPixelData();
    if (data == nullptr)
        return false;
    const auto kind = data->createType()->getTypeID();
#if JUCE_LINUX || JUCE_BSD
    if (kind == juce::NativeImageType().getTypeID())
        return true;
#endif
    return kind == juce::SoftwareImageType().getTypeID();
}
}

void ZRRendererLookAndFeel::setDefaultFontName (const juce::String& registeredName)
{
    defaultFontName = registeredName;
    juce::Typeface::clearTypefaceCache();
}

std::unique_ptr<juce::LowLevelGraphicsContext>
ZRRendererLookAndFeel::createGraphicsContext (const juce::Image& image, juce::Point<int> origin,
                                              const juce::RectangleList<int>& initialClip)
{
    if (isInMemory (image))
        return createTextContext (image, origin, initialClip, textPixels);
    return LookAndFeel_V4::createGraphicsContext (image, origin, initialClip);
}

juce::Typeface::Ptr ZRRendererLookAndFeel::getTypefaceForFont (const juce::Font& font)
{
    auto name = font.getTypefaceName();
    if (name == juce::Font::getDefaultSansSerifFontName() && defaultFontName.isNotEmpty())
        name = defaultFontName;
    if (const auto file = ZRRendererFontManager::getInstance().findFont (name))
        return *new ZRTypeface (*file, font.getTypefaceStyle(), font.isBold(), font.isItalic());
    return LookAndFeel_V4::getTypefaceForFont (font);
}
