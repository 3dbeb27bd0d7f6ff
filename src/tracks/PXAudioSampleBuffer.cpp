#include "tracks/PXAudioSampleBuffer.h"

#include <sys/mman.h>

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
}

PXAudioSampleBuffer::~PXAudioSampleBuffer()
{
    munmap (samples, bytes (channelStride));
}
