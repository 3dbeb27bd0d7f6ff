#include "deck/PXAudioSampleBuffer.h"

#include <sys/mman.h>

#include <initializer_list>
#include <new>

namespace
{
constexpr size_t bytes (size_t stride)
{
    return 2 * stride * sizeof (int16_t);
}
}

PXAudioSampleBuffer::PXAudioSampleBuffer()
{
    auto* memory = mmap (nullptr, bytes (channelStride), PROT_READ | PROT_WRITE,
                         MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
    if (memory == MAP_FAILED)
        throw std::bad_alloc();
    samples = static_cast<int16_t*> (memory);

    // A track is thousands of small pages, each of them an interruption of the loader when it is first written, so large
    // ones where the system has them. Each side begins on small pages: a large one takes too long to clear for the first
    // frames to wait for it. A refusal changes nothing but the time.
    constexpr size_t beginning = 1u << 20;
    for (auto* side : { left(), right() })
        madvise (side + beginning, (channelStride - beginning) * sizeof (int16_t), MADV_HUGEPAGE);
}

PXAudioSampleBuffer::~PXAudioSampleBuffer()
{
    munmap (samples, bytes (channelStride));
}
