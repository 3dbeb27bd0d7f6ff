#include "Check.h"

#include "instruments/sampler/SamplerBank.h"

#include <algorithm>

/** Writes what was read of a bank, which is read again as the same, with a pad to each sample. */
extern "C" int LLVMFuzzerTestOneInput (const uint8_t* data, size_t size)
{
    const auto read =
        SamplerBank::read (XmlPullParser (std::make_unique<juce::MemoryInputStream> (data, size, false)));
    if (!read)
        return 0;
    for (const auto& sample : read->samples)
    {
        FUZZ_CHECK (sample.slot >= 0 && sample.slot < SamplerBank::padCount);
        FUZZ_CHECK (std::count_if (read->samples.begin(), read->samples.end(),
                                   [&] (const auto& other) { return other.slot == sample.slot; })
                    == 1);
    }
    const auto again = SamplerBank::read (XmlPullParser::ofText (read->toXml()));
    FUZZ_CHECK (again.has_value() && again->samples.size() == read->samples.size());
    return 0;
}
