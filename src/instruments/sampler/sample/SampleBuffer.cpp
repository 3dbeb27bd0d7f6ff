#include "instruments/sampler/sample/SampleBuffer.h"

#include <sys/mman.h>

#include <cstddef>
#include <new>

namespace
{
constexpr size_t bytes (int32_t stride)
{
    return 2 * static_cast<size_t> (stride) * sizeof (float);
}
}

SampleBuffer::SampleBuffer()
{
    auto* memory = mmap (nullptr, bytes (channelStride), PROT_READ | PROT_WRITE,
                         MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
    if (memory == MAP_FAILED)
        throw std::bad_alloc();
    samples = static_cast<float*> (memory);
}

SampleBuffer::~SampleBuffer()
{
    munmap (samples, bytes (channelStride));
}

void SampleBuffer::release() noexcept
{
    madvise (samples, bytes (channelStride), MADV_DONTNEED);
}
