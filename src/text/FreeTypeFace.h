#pragma once

#include <juce_graphics/juce_graphics.h>

#include <cstdint>
#include <memory>

struct FT_FaceRec_;
struct FT_LibraryRec_;
struct FT_Outline_;

/** A font file in memory as FreeType sees it: its measures, and its glyphs' outlines at one size. Each has a library of
    its own and so shares nothing with another one. One thread at a time.

    A height is that of JUCE: from the ascender's top to the descender's bottom. */
class FreeTypeFace
{
public:
    /** Changes to the outlines on loading them. */
    struct Style
    {
        bool hinted = false; ///< snaps heights to whole pixels; widths stay as drawn
        double embolden = 0; ///< in pixels, across only, so that what is snapped stays so
        double slant = 0;    ///< pixels to the right for each pixel above the baseline
    };

    /** Opens the first face of a file. @param data   must stay as long as this; not copied */
    FreeTypeFace (const void* data, size_t size);
    ~FreeTypeFace();

    /** True if the file could be read and holds outlines; nothing else has a meaning where it doesn't. */
    bool isLoaded() const noexcept { return face != nullptr; }
    bool isBold() const noexcept;

    /** The part of the height that is above the baseline, 0 to 1. */
    double getAscent() const noexcept;
    double getHeightPerEm() const noexcept;

    bool hasGlyph (uint32_t code) const noexcept;

    /** @param pixels   the height of all that is loaded from now on, 1 or more */
    void setHeight (int pixels);

    /** A glyph at the set height.
        @param outline   receives the outline in 1/64 pixels, y upwards, valid until the next call; empty for a blank
        @param advance   receives the unrounded advance in pixels, without what `style` adds
        @returns false where the file is not loaded or its glyph is damaged
        A code that the file lacks gives its shape for missing glyphs. */
    bool load (uint32_t code, const Style& style, FT_Outline_*& outline, double& advance);

    /** An outline of `load` as a path, y downwards. @param unit   pixels that become 1.0 */
    static juce::Path toPath (FT_Outline_& outline, double unit);

    /** Fills a picture of one byte a pixel, 0 to 255, with an outline's coverage.
        @param outline   already moved so that its ink lies within the picture */
    bool rasterise (FT_Outline_& outline, uint8_t* pixels, int width, int height);

private:
    struct CloseLibrary
    {
        void operator() (FT_LibraryRec_*) const noexcept;
    };
    struct CloseFace
    {
        void operator() (FT_FaceRec_*) const noexcept;
    };

    std::unique_ptr<FT_LibraryRec_, CloseLibrary> library;
    std::unique_ptr<FT_FaceRec_, CloseFace> face;
    int pixelHeight = 0;

    JUCE_DECLARE_NON_COPYABLE (FreeTypeFace)
};
