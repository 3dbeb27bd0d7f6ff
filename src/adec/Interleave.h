#pragma once

#include <cstdint>

struct AVFrame;

namespace adec
{
/** Copies frames of decoded audio into one run of interleaved samples of the same size, whether the decoder keeps its
    channels apart or not.
    @param first   first frame to copy
    @param count   frames to copy; first + count lies within the decoded audio
    @param target  room for count * channels samples, aligned to a sample */
void interleave (const AVFrame& decoded, int first, int count, uint8_t* target);
}
