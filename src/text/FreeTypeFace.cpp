#include "text/FreeTypeFace.h"

#include <ft2build.h>
#include FT_FREETYPE_H
#include FT_OUTLINE_H

#include <cmath>

namespace
{
/** 26.6 and 16.16 fixed point. */
FT_Pos toFixed6 (double value)
{
    return std::lround (value * 64.0);
}

FT_Fixed toFixed16 (double value)
{
    return std::lround (value * 65536.0);
}

/** Receives an outline's pieces as FreeType walks it. */
struct PathWriter
{
    juce::Path path;
    double scale;

    juce::Point<float> at (const FT_Vector& point) const
    {
        return { static_cast<float> (static_cast<double> (point.x) * scale),
                 static_cast<float> (static_cast<double> (point.y) * -scale) };
    }

    static PathWriter& of (void* user) { return *static_cast<PathWriter*> (user); }

    static int moveTo (const FT_Vector* to, void* user)
    {
        auto& writer = of (user);
        writer.path.closeSubPath();
        writer.path.startNewSubPath (writer.at (*to));
        return 0;
    }
    static int lineTo (const FT_Vector* to, void* user)
    {
        of (user).path.lineTo (of (user).at (*to));
        return 0;
    }
    static int conicTo (const FT_Vector* control, const FT_Vector* to, void* user)
    {
        of (user).path.quadraticTo (of (user).at (*control), of (user).at (*to));
        return 0;
    }
    static int cubicTo (const FT_Vector* first, const FT_Vector* second, const FT_Vector* to, void* user)
    {
        auto& writer = of (user);
        writer.path.cubicTo (writer.at (*first), writer.at (*second), writer.at (*to));
        return 0;
    }
};
}

void FreeTypeFace::CloseLibrary::operator() (FT_LibraryRec_* open) const noexcept
{
    FT_Done_FreeType (open);
}

void FreeTypeFace::CloseFace::operator() (FT_FaceRec_* open) const noexcept
{
    FT_Done_Face (open);
}

FreeTypeFace::FreeTypeFace (const void* data, size_t size)
{
    FT_Library openedLibrary = nullptr;
    if (data == nullptr || size == 0 || FT_Init_FreeType (&openedLibrary) != 0)
        return;
    library.reset (openedLibrary);

    FT_Face opened = nullptr;
    if (FT_New_Memory_Face (library.get(), static_cast<const FT_Byte*> (data), static_cast<FT_Long> (size), 0,
                            &opened)
        != 0)
        return;
    std::unique_ptr<FT_FaceRec_, CloseFace> candidate (opened);
    if (FT_IS_SCALABLE (opened) && opened->units_per_EM > 0 && opened->ascender > opened->descender
        && FT_Select_Charmap (opened, FT_ENCODING_UNICODE) == 0)
        face = std::move (candidate);
}

FreeTypeFace::~FreeTypeFace() = default;

bool FreeTypeFace::isBold() const noexcept
{
    return face != nullptr && (face->style_flags & FT_STYLE_FLAG_BOLD) != 0;
}

double FreeTypeFace::getAscent() const noexcept
{
    return face == nullptr
               ? 1.0
               : juce::jlimit (0.0, 1.0,
                               static_cast<double> (face->ascender) / (face->ascender - face->descender));
}

double FreeTypeFace::getHeightPerEm() const noexcept
{
    return face == nullptr ? 1.0
                           : static_cast<double> (face->ascender - face->descender) / face->units_per_EM;
}

bool FreeTypeFace::hasGlyph (uint32_t code) const noexcept
{
    return face != nullptr && FT_Get_Char_Index (face.get(), code) != 0;
}

void FreeTypeFace::setHeight (int pixels)
{
    if (face == nullptr || pixels == pixelHeight)
        return;
    const auto em = toFixed6 (pixels / getHeightPerEm());
    if (FT_Set_Char_Size (face.get(), 0, em, 0, 0) == 0)
        pixelHeight = pixels;
}

bool FreeTypeFace::load (uint32_t code, const Style& style, FT_Outline_*& outline, double& advance)
{
    outline = nullptr;
    advance = 0.0;
    // The light hinter moves points up and down only, so a glyph's width and its place between pixels stay the font's.
    const auto flags = FT_LOAD_NO_BITMAP | (style.hinted ? FT_LOAD_TARGET_LIGHT : FT_LOAD_NO_HINTING);
    if (pixelHeight == 0 || FT_Load_Char (face.get(), code, flags) != 0
        || face->glyph->format != FT_GLYPH_FORMAT_OUTLINE)
        return false;

    const auto limit = 8.0 * pixelHeight; // what a damaged file claims stays drawable
    advance = juce::jlimit (0.0, limit, static_cast<double> (face->glyph->linearHoriAdvance) / 65536.0);
    outline = &face->glyph->outline;
    if (style.embolden > 0.0)
        FT_Outline_EmboldenXY (outline, toFixed6 (style.embolden), 0);
    if (style.slant != 0.0)
    {
        const FT_Matrix shear { toFixed16 (1.0), toFixed16 (style.slant), 0, toFixed16 (1.0) };
        FT_Outline_Transform (outline, &shear);
    }
    return true;
}

juce::Path FreeTypeFace::toPath (FT_Outline_& outline, double unit)
{
    PathWriter writer { {}, 1.0 / (64.0 * unit) };
    FT_Outline_Funcs walk {};
    walk.move_to = PathWriter::moveTo;
    walk.line_to = PathWriter::lineTo;
    walk.conic_to = PathWriter::conicTo;
    walk.cubic_to = PathWriter::cubicTo;
    if (FT_Outline_Decompose (&outline, &walk, &writer) != 0)
        return {};
    writer.path.closeSubPath();
    return writer.path;
}

bool FreeTypeFace::rasterise (FT_Outline_& outline, uint8_t* pixels, int width, int height)
{
    FT_Bitmap bitmap {};
    bitmap.rows = static_cast<unsigned> (height);
    bitmap.width = static_cast<unsigned> (width);
    bitmap.pitch = width;
    bitmap.buffer = pixels;
    bitmap.num_grays = 256;
    bitmap.pixel_mode = FT_PIXEL_MODE_GRAY;
    return FT_Outline_Get_Bitmap (library.get(), &outline, &bitmap) == 0;
}
