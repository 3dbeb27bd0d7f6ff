#pragma once

#include "text/CachedGlyph.h"

#include <deque>

/** A font at one size and style with all the glyphs that were drawn of it. Any thread: it has a lock of its own, and a
    glyph stays where it is as long as the face. */
class CachedFace
{
public:
    /** @param data          the font file; must stay as long as this
        @param pixelHeight   from ascender to descender, 1 or more
        @param hinted        whether horizontal strokes are moved to whole pixels
        @param embolden      what is added to the strokes' width, in pixels of a line 24 pixels high: 0 or 0.8
        @param slant         of an oblique: 0 or 0.4
        A file that can't be read gives empty glyphs of no width. */
    CachedFace (juce::String name, const void* data, size_t size, int32_t pixelHeight, bool hinted,
                double embolden, double slant);

    /** The glyph of a code point, rendered on first use. Codes below 32 count as 32; one that the file
        lacks has the file's shape for missing glyphs. */
    const CachedGlyph& getGlyph (uint32_t code);

    /** From a glyph's place to the next one's, in pixels, embolden included. Renders nothing. */
    double getAdvance (uint32_t code);

    /** A glyph's outline on a baseline at 0, y downwards, the line's height being 1.0. */
    juce::Path getOutline (uint32_t code);

    bool hasGlyph (uint32_t code) const;

    bool isLoaded() const noexcept { return file.isLoaded(); }
    bool isBold() const noexcept { return file.isBold(); }
    double getAscent() const noexcept { return file.getAscent(); }
    double getHeightPerEm() const noexcept { return file.getHeightPerEm(); }

    /** Embolden at this size, in pixels. */
    double getEmboldenPixels() const noexcept { return embolden * pixelHeight / 24.0; }

    const juce::String name;
    const int32_t pixelHeight;
    const bool hinted;
    const double embolden, slant;
    const void* const fontData;
    const size_t fontDataSize;

private:
    FreeTypeFace::Style getStyle() const noexcept { return { hinted, getEmboldenPixels(), slant }; }

    juce::CriticalSection lock;
    FreeTypeFace file;
    std::vector<uint32_t> glyphCodes;
    std::deque<CachedGlyph> glyphs; ///< in the same order
};
