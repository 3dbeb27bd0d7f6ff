#pragma once

#include <array>
#include <cstdint>

/** The phase picture of a control signal: left against right, fading. A good signal draws a closed ellipse. */
class ScopeImage
{
public:
    static constexpr int side = 125, centre = 62;
    static constexpr std::uint8_t fresh = 0xfb, leastSeen = 38;

    /** Plots one frame; full scale reaches the edges. What lies outside, or is no number, leaves no point. */
    constexpr void plot (float left, float right) noexcept
    {
        if (isNear (left) && isNear (right))
        {
            const auto x = centre + static_cast<int> (left * reach),
                       y = centre - static_cast<int> (right * reach);
            if (x >= 1 && x < side && y >= 1 && y < side)
                pixels[static_cast<std::size_t> (y * side + x)] = fresh;
        }
        if (++plotted % framesPerFade == 0)
            for (auto& pixel : pixels)
                pixel = static_cast<std::uint8_t> (pixel * 7 / 8);
    }

    constexpr std::uint8_t at (int x, int y) const noexcept
    {
        return pixels[static_cast<std::size_t> (y * side + x)];
    }

    bool operator== (const ScopeImage&) const = default;

private:
    /** Can be turned into a whole number of pixels. */
    static constexpr bool isNear (float sample) noexcept { return sample > -2.0f && sample < 2.0f; }

    static constexpr float reach = 61.0f;
    static constexpr std::uint32_t framesPerFade = 512;

    std::array<std::uint8_t, side * side> pixels {};
    std::uint32_t plotted = 0;
};
