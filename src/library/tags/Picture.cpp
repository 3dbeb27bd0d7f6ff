#include "library/tags/Picture.h"

#include <algorithm>
#include <csetjmp>
#include <cstdio>

#include <jpeglib.h>
#include <png.h>

namespace
{
constexpr uint64_t mostPixels = 40'000'000;

/** The codec scales to a half, a quarter and an eighth. */
constexpr unsigned largestScale = 8;

bool isSensible (uint64_t width, uint64_t height)
{
    return width > 0 && height > 0 && width * height <= mostPixels;
}

juce::Image makeImage (juce::Image::PixelFormat format, uint64_t width, uint64_t height)
{
    return { format, static_cast<int> (width), static_cast<int> (height), true, juce::SoftwareImageType() };
}

void premultiply (const juce::Image::BitmapData& pixels)
{
    for (int y = 0; y < pixels.height; ++y)
        for (int x = 0; x < pixels.width; ++x)
            reinterpret_cast<juce::PixelARGB*> (pixels.getPixelPointer (x, y))->premultiply();
}

juce::Image decodePng (std::span<const uint8_t> bytes)
{
    png_image png {};
    png.version = PNG_IMAGE_VERSION;
    if (png_image_begin_read_from_memory (&png, bytes.data(), bytes.size()) == 0)
        return {};

    juce::Image image;
    auto isRead = false;
    if (isSensible (png.width, png.height))
    {
        const auto hasAlpha = (png.format & PNG_FORMAT_FLAG_ALPHA) != 0;
        image = makeImage (hasAlpha ? juce::Image::ARGB : juce::Image::RGB, png.width, png.height);
        const juce::Image::BitmapData pixels (image, juce::Image::BitmapData::readWrite);
        png.format = hasAlpha ? PNG_FORMAT_BGRA : PNG_FORMAT_BGR;
        isRead = png_image_finish_read (&png, nullptr, pixels.data, pixels.lineStride, nullptr) != 0;
        if (hasAlpha)
            premultiply (pixels);
    }
    png_image_free (&png);
    return isRead ? image : juce::Image();
}

/** The codec reports faults by a jump back into the function at hand: those hold nothing that needs a destructor. */
class JpegReader
{
public:
    JpegReader()
    {
        info.err = jpeg_std_error (&faults.base);
        faults.base.error_exit = [] (j_common_ptr jpeg)
        { std::longjmp (reinterpret_cast<Faults*> (jpeg->err)->back, 1); };
        faults.base.output_message = [] (j_common_ptr) {};
    }

    ~JpegReader() { jpeg_destroy_decompress (&info); }
    JpegReader (const JpegReader&) = delete;
    JpegReader& operator= (const JpegReader&) = delete;

    /** @param largestSide   as decodePicture() takes it; the output is not smaller, and less than twice as large as far as
                             the codec can scale */
    bool begin (const uint8_t* bytes, size_t size, unsigned largestSide)
    {
        if (setjmp (faults.back) != 0)
            return false;
        jpeg_create_decompress (&info);
        jpeg_mem_src (&info, bytes, static_cast<unsigned long> (size));
        jpeg_read_header (&info, TRUE);
        info.out_color_space = JCS_EXT_BGR;
        if (!isSensible (info.image_width, info.image_height))
            return false;
        const auto side = std::max (info.image_width, info.image_height);
        while (largestSide > 0 && info.scale_denom < largestScale
               && side / (2 * info.scale_denom) >= largestSide)
            info.scale_denom *= 2;
        jpeg_calc_output_dimensions (&info);
        return true;
    }

    bool read (uint8_t* pixels, int lineStride)
    {
        if (setjmp (faults.back) != 0)
            return false;
        jpeg_start_decompress (&info);
        while (info.output_scanline < info.output_height)
        {
            auto* row =
                pixels + static_cast<size_t> (info.output_scanline) * static_cast<size_t> (lineStride);
            jpeg_read_scanlines (&info, &row, 1);
        }
        return true;
    }

    uint64_t width() const { return info.output_width; }
    uint64_t height() const { return info.output_height; }

private:
    struct Faults
    {
        jpeg_error_mgr base;
        std::jmp_buf back;
    };

    jpeg_decompress_struct info {};
    Faults faults {};
};

juce::Image decodeJpeg (std::span<const uint8_t> bytes, unsigned largestSide)
{
    JpegReader reader;
    if (!reader.begin (bytes.data(), bytes.size(), largestSide))
        return {};
    auto image = makeImage (juce::Image::RGB, reader.width(), reader.height());
    const juce::Image::BitmapData pixels (image, juce::Image::BitmapData::writeOnly);
    return reader.read (pixels.data, pixels.lineStride) ? image : juce::Image();
}
}

juce::Image decodePicture (std::span<const uint8_t> bytes, int largestSide)
{
    if (bytes.size() < 4)
        return {};
    const auto image = bytes[0] == 0x89 ? decodePng (bytes)
                       : bytes[0] == 0xff
                           ? decodeJpeg (bytes, static_cast<unsigned> (std::max (0, largestSide)))
                           : juce::Image();
    const auto side = std::max (image.getWidth(), image.getHeight());
    if (largestSide <= 0 || side <= largestSide)
        return image;
    const auto scaled = [=] (int pixels) { return std::max (1, (pixels * largestSide + side / 2) / side); };
    return image.rescaled (scaled (image.getWidth()), scaled (image.getHeight()),
                           juce::Graphics::highResamplingQuality);
}
