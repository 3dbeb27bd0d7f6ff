#include "text/ZRTypeface.h"

#include "text/FaceFontCache.h"

namespace
{
constexpr int measuringHeight = 96; ///< in pixels; outlines are exact to a 6000th of it

bool fileIsBold (const ZRRendererFontManager::FontFile& file)
{
    return FreeTypeFace (file.data, file.size).isBold();
}
}

ZRTypeface::ZRTypeface (const ZRRendererFontManager::FontFile& fontFile, const juce::String& styleName,
                        bool bold, bool italic)
    : file (fontFile),
      embolden (bold && !fileIsBold (fontFile) ? 0.8 : 0.0),
      slant (italic ? 0.4 : 0.0),
      measures (file.name, file.data, file.size, measuringHeight, false, embolden, slant)
{
    setCharacteristics (file.name, styleName, static_cast<float> (measures.getAscent()), ' ');
}

float ZRTypeface::getHeightToPointsFactor() const
{
    return static_cast<float> (1.0 / measures.getHeightPerEm());
}

bool ZRTypeface::isIgnorable (uint32_t code) noexcept
{
    struct Range
    {
        uint32_t first, last;
    };
    static constexpr std::array ranges { Range { 0xad, 0xad },      Range { 0x200b, 0x200f },
                                         Range { 0x202a, 0x202e },  Range { 0x2060, 0x206f },
                                         Range { 0xfe00, 0xfe0f },  Range { 0xfeff, 0xfeff },
                                         Range { 0xe0000, 0xe0fff } };
    for (const auto& range : ranges)
        if (code >= range.first && code <= range.last)
            return true;
    return false;
}

double ZRTypeface::fallbackRatio (const FallbackFonts::File& other) const noexcept
{
    return other.heightPerEm / measures.getHeightPerEm();
}

std::shared_ptr<CachedFace> ZRTypeface::getFace (int pixelHeight) const
{
    return FaceFontCache::getInstance()->getFace (file.name, file.data, file.size, pixelHeight, true,
                                                  embolden, slant);
}

std::shared_ptr<CachedFace> ZRTypeface::openFallback (const FallbackFonts::File& other, int pixelHeight) const
{
    const auto height = juce::jmax (1, juce::roundToInt (pixelHeight * fallbackRatio (other)));
    return FaceFontCache::getInstance()->getFace (other.path, other.data, other.size, height, true, embolden,
                                                  slant);
}

std::shared_ptr<CachedFace> ZRTypeface::getFallbackFace (uint32_t code, int pixelHeight)
{
    const auto* const other =
        find (code).fallback; // one that is still searched for is drawn by ours meanwhile
    return other == nullptr ? nullptr : openFallback (*other, pixelHeight);
}

ZRTypeface::Entry ZRTypeface::find (uint32_t code)
{
    const juce::ScopedLock hold (lock);
    const auto known = entries.find (code);
    if (known != entries.end())
        return known->second;

    Entry entry;
    if (!isIgnorable (code))
    {
        entry.advance = measures.getAdvance (code) / measuringHeight;
        if (measures.isLoaded() && !measures.hasGlyph (code))
        {
            const auto found = FallbackFonts::getInstance().findFont (code);
            entry.fallback = found.file;
            entry.isFinal = found.isFinal;
        }
        if (entry.fallback != nullptr)
        {
            const auto& other = *entry.fallback;
            CachedFace face (other.path, other.data, other.size, measuringHeight, false, embolden, slant);
            entry.advance = face.getAdvance (code) / measuringHeight * fallbackRatio (other);
        }
    }
    if (entry.isFinal)
        entries.emplace (code, entry);
    return entry;
}

float ZRTypeface::getStringWidth (const juce::String& text)
{
    auto width = 0.0;
    for (auto at = text.getCharPointer(); !at.isEmpty();)
        width += find (static_cast<uint32_t> (at.getAndAdvance())).advance;
    return static_cast<float> (width);
}

void ZRTypeface::getGlyphPositions (const juce::String& text, juce::Array<int>& glyphs,
                                    juce::Array<float>& offsets)
{
    auto x = 0.0;
    offsets.add (0.0f);
    for (auto at = text.getCharPointer(); !at.isEmpty();)
    {
        const auto code = static_cast<uint32_t> (at.getAndAdvance());
        x += find (code).advance;
        glyphs.add (static_cast<int> (code));
        offsets.add (static_cast<float> (x));
    }
}

bool ZRTypeface::loadGlyphIfPossible (juce::juce_wchar character)
{
    const auto code = static_cast<uint32_t> (character);
    const auto entry = find (code);
    if (!entry.isFinal)
        return false;
    juce::Path outline;
    if (entry.fallback != nullptr)
    {
        const auto& other = *entry.fallback;
        outline = CachedFace (other.path, other.data, other.size, measuringHeight, false, embolden, slant)
                      .getOutline (code);
        outline.applyTransform (juce::AffineTransform::scale (static_cast<float> (fallbackRatio (other))));
    }
    else if (!isIgnorable (code))
        outline = measures.getOutline (code);
    addGlyph (character, outline, static_cast<float> (entry.advance));
    return true;
}
