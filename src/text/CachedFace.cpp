#include "text/CachedFace.h"

#include <algorithm>

namespace
{
constexpr uint32_t firstPrintable = 32;
}

CachedFace::CachedFace (juce::String nameToUse, const void* data, size_t size, int32_t height, bool hint,
                        double emboldenBy, double slantBy)
    : name (std::move (nameToUse)),
      pixelHeight (std::max (1, height)),
      hinted (hint),
      embolden (emboldenBy),
      slant (slantBy),
      fontData (data),
      fontDataSize (size),
      file (data, size)
{
    file.setHeight (pixelHeight);
}

const CachedGlyph& CachedFace::getGlyph (uint32_t code)
{
    code = std::max (code, firstPrintable);
    const juce::ScopedLock hold (lock);
    const auto found = std::find (glyphCodes.begin(), glyphCodes.end(), code);
    if (found != glyphCodes.end())
        return glyphs[static_cast<size_t> (found - glyphCodes.begin())];

    glyphCodes.push_back (code);
    return glyphs.emplace_back (CachedGlyph::render (file, code, getStyle()));
}

double CachedFace::getAdvance (uint32_t code)
{
    const juce::ScopedLock hold (lock);
    FT_Outline_* outline = nullptr;
    double advance = 0.0;
    if (!file.load (std::max (code, firstPrintable), {}, outline, advance))
        return 0.0;
    return advance + getEmboldenPixels();
}

juce::Path CachedFace::getOutline (uint32_t code)
{
    const juce::ScopedLock hold (lock);
    FT_Outline_* outline = nullptr;
    double advance = 0.0;
    if (!file.load (std::max (code, firstPrintable), getStyle(), outline, advance))
        return {};
    return FreeTypeFace::toPath (*outline, pixelHeight);
}

bool CachedFace::hasGlyph (uint32_t code) const
{
    const juce::ScopedLock hold (lock);
    return file.hasGlyph (std::max (code, firstPrintable));
}
