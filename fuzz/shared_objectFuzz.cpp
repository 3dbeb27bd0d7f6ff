#include "Check.h"

#include "plugins/catalogue/SharedObject.h"

/** Checks that names of a library's functions lie within its bytes. */
extern "C" int LLVMFuzzerTestOneInput (const uint8_t* data, size_t size)
{
    const auto* const begin = reinterpret_cast<const char*> (data);
    const auto object = readSharedObject ({ reinterpret_cast<const std::byte*> (data), size });
    if (!object)
        return 0;
    FUZZ_CHECK (object->width == 32 || object->width == 64);
    for (const auto name : object->exports)
        FUZZ_CHECK (name.empty() || (name.data() >= begin && name.data() + name.size() <= begin + size));
    return 0;
}
