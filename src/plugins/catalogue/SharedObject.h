#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

/** The head of a shared library, read without running any of it. */
struct SharedObject
{
    int width = 0;                         ///< 32 or 64 bits
    std::vector<std::string_view> exports; ///< names of functions, which lie in the bytes that were read
};

/** Reads an ELF library for x86 or ARM. Takes any bytes, which must live as long as the result.
    @returns nothing if they are none, or damaged */
std::optional<SharedObject> readSharedObject (std::span<const std::byte>);
