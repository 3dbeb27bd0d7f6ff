#include "similarity/store/MappedFile.h"

#include <sys/mman.h>
#include <sys/stat.h>

#include <utility>

MappedFile::MappedFile (int descriptor)
{
    struct stat status
    {
    };
    if (fstat (descriptor, &status) != 0 || status.st_size <= 0)
        return;
    const auto size = static_cast<size_t> (status.st_size);
    void* const at = mmap (nullptr, size, PROT_READ, MAP_SHARED, descriptor, 0);
    if (at != MAP_FAILED)
        mapped = { static_cast<const std::byte*> (at), size };
}

MappedFile::~MappedFile()
{
    if (!mapped.empty())
        munmap (const_cast<std::byte*> (mapped.data()), mapped.size());
}

MappedFile::MappedFile (MappedFile&& other) noexcept : mapped (std::exchange (other.mapped, {})) {}

MappedFile& MappedFile::operator= (MappedFile&& other) noexcept
{
    std::swap (mapped, other.mapped);
    return *this;
}
