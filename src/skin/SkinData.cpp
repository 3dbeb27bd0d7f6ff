#include "skin/Skin.h"

// Laid down by the assembler file that px_skin_maker writes: all files one after another, and where each begins, counted
// from the first, with the end of the last.
extern "C"
{
    extern const std::byte px_skin_files[];
    extern const std::uint32_t px_skin_places[];
    extern const std::byte px_skin_font[];
    extern const std::uint32_t px_skin_font_size;
}

namespace skin
{
std::span<const std::byte> pngOf (std::size_t row, std::size_t scaleIndex)
{
    const auto file = scaleIndex * table.size() + row;
    return { px_skin_files + px_skin_places[file], px_skin_files + px_skin_places[file + 1] };
}

std::span<const std::byte> fontData()
{
    return { px_skin_font, px_skin_font_size };
}
}
