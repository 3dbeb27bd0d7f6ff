#pragma once

#include "text/CachedFace.h"
#include "text/FallbackFonts.h"
#include "text/ZRRendererFontManager.h"

#include <unordered_map>

/** A registered font as JUCE asks for it: measures for a line 1.0 high, glyph numbers that are code points.
    Widths are the font's own, unrounded, so a string is as wide at every scale as it is drawn. Any thread, but for
    the outlines, which are the message thread's. */
class ZRTypeface : public juce::CustomTypeface
{
public:
    /** @param bold     emboldens, unless the file is bold by itself
        @param italic   slants */
    ZRTypeface (const ZRRendererFontManager::FontFile&, const juce::String& style, bool bold, bool italic);

    float getHeightToPointsFactor() const override;
    float getStringWidth (const juce::String&) override;
    void getGlyphPositions (const juce::String&, juce::Array<int>& glyphs,
                            juce::Array<float>& offsets) override;

    /** The face of the cache that this typeface is drawn with. @param pixelHeight   on the screen */
    std::shared_ptr<CachedFace> getFace (int pixelHeight) const;

    /** The same for one code: that of another font of the machine, as large as ours, where ours lacks the character.
        @returns null for a character that is never drawn, or that `getFace` draws */
    std::shared_ptr<CachedFace> getFallbackFace (uint32_t code, int pixelHeight);

    /** True if a code leaves no mark and takes no room: joiners, marks of direction, selectors of variants. */
    static bool isIgnorable (uint32_t code) noexcept;

private:
    /** A code's measure and font. */
    struct Entry
    {
        double advance = 0.0;                          ///< for a line 1.0 high
        const FallbackFonts::File* fallback = nullptr; ///< null for our own font
        bool isFinal = true;                           ///< false while a font is still searched for
    };

    Entry find (uint32_t code);
    double fallbackRatio (const FallbackFonts::File&) const noexcept;
    std::shared_ptr<CachedFace> openFallback (const FallbackFonts::File&, int pixelHeight) const;
    bool loadGlyphIfPossible (juce::juce_wchar) override;

    const ZRRendererFontManager::FontFile file;
    const double embolden, slant;
    CachedFace measures; ///< large and unhinted
    juce::CriticalSection lock;
    std::unordered_map<uint32_t, Entry> entries; ///< the final ones
};
