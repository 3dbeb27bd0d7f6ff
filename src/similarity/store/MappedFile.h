#pragma once

#include <cstddef>
#include <span>

/** A file in memory, for reading; pages come when they are looked at. */
class MappedFile
{
public:
    MappedFile() = default;

    /** Maps what an open file holds; nothing if that fails. */
    explicit MappedFile (int descriptor);
    ~MappedFile();
    MappedFile (MappedFile&&) noexcept;
    MappedFile& operator= (MappedFile&&) noexcept;

    std::span<const std::byte> bytes() const noexcept { return mapped; }

private:
    std::span<const std::byte> mapped;
};
