#include "Check.h"

#include "plugins/catalogue/PluginListFile.h"

/** Checks that every entry of a plug-in list has a file, and that a list is read again as it is written. */
extern "C" int LLVMFuzzerTestOneInput (const uint8_t* data, size_t size)
{
    const auto list = PluginListFile::read ({ reinterpret_cast<const char*> (data), size });
    if (!list)
        return 0;
    for (const auto& entry : *list)
        FUZZ_CHECK (entry.file.isNotEmpty() && entry.latency >= 0);
    const auto bytes = PluginListFile::write (*list);
    const auto again = PluginListFile::read (bytes);
    FUZZ_CHECK (again && again->size() == list->size());
    for (size_t i = 0; i < list->size(); ++i)
        FUZZ_CHECK ((*again)[i].description.uniqueId == (*list)[i].description.uniqueId
                    && (*again)[i].state == (*list)[i].state);
    return 0;
}
