#pragma once

#include <cstdint>
#include <span>

/** The number of pixels that the header of a PNG, JPEG or GIF states, or 0 if there is none. Known before anything is
    decoded, so that a few bytes can't ask for gigabytes. */
uint64_t statedPixels (std::span<const uint8_t> picture);
