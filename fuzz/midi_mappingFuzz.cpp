#include "Check.h"

#include "midi/mapping/MidiMappingFile.h"

namespace
{
std::unique_ptr<juce::InputStream> streamOf (const void* data, size_t size)
{
    return std::make_unique<juce::MemoryInputStream> (data, size, false);
}
}

/** Checks that a mapping's rows lie in their ranges, and are read again as they are written. */
extern "C" int LLVMFuzzerTestOneInput (const uint8_t* data, size_t size)
{
    const auto file = parseMidiMapping (streamOf (data, size));
    if (!file)
        return 0;
    MidiMapping mapping;
    for (const auto& [id, row] : file->rows)
    {
        FUZZ_CHECK (MidiMapping::isCommand (id));
        FUZZ_CHECK (row.status >= 0 && row.status < 256 && row.data >= 0 && row.data < 256);
        FUZZ_CHECK (row.controlType >= 0 && row.controlType < 4 && row.spare == 0);
        mapping.setRow (id, row);
        FUZZ_CHECK (mapping.row (id) == row);
    }
    mapping.showsLamps = file->showsLamps.value_or (false);

    const auto text = mappingText (mapping);
    const auto again = parseMidiMapping (streamOf (text.toRawUTF8(), text.getNumBytesAsUTF8()));
    FUZZ_CHECK (again && again->showsLamps.value_or (false) == mapping.showsLamps);
    FUZZ_CHECK (again->rows.size() == static_cast<size_t> (MidiMapping::rowCount - 1));
    for (const auto& [id, row] : again->rows)
        FUZZ_CHECK (mapping.row (id) == row);
    return 0;
}
