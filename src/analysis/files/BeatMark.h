#pragma once

#include <cstdint>

/** One entry of a beat table. The layout is that of the stored form: 32 bits of position, 32 of padding, a double. */
struct BeatMark
{
    int32_t pos = 0;  ///< frames of the file
    double bpm = 0.0; ///< local tempo

    bool operator== (const BeatMark&) const = default;
};

static_assert (sizeof (BeatMark) == 16);
