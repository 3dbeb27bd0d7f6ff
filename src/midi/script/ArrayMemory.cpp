#include "midi/script/ArrayMemory.h"

#include <angelscript.h>
#include <angelscript/scriptarray.h>

#include <atomic>
#include <cstdlib>
#include <malloc.h>

namespace ArrayMemory
{
namespace
{
std::atomic<size_t> taken { 0 };

void* allocate (size_t bytes)
{
    if (bytes > mostPerArray || taken + bytes > mostTogether)
        return nullptr;
    auto* const memory = std::malloc (bytes);
    taken += malloc_usable_size (memory);
    return memory;
}

void release (void* memory)
{
    taken -= malloc_usable_size (memory);
    std::free (memory);
}
}

void limit()
{
    static const auto done = []
    {
        AngelScript::CScriptArray::SetMemoryFunctions (allocate, release);
        return true;
    }();
    static_cast<void> (done);
}
}
