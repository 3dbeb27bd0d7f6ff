#include "Check.h"

#include "support/language/MessageCatalogue.h"

/** Takes any bytes; the rule of plurals gives a form that there is, of whatever number. */
extern "C" int LLVMFuzzerTestOneInput (const uint8_t* data, size_t size)
{
    const auto bytes = std::as_bytes (std::span (data, size));
    const auto texts = MessageCatalogue::read (bytes);
    const auto rule = PluralRule::read (std::string_view (reinterpret_cast<const char*> (data), size));
    for (uint64_t n : { uint64_t { 0 }, uint64_t { 1 }, uint64_t { 2 }, uint64_t { 5 }, uint64_t { 1000000 },
                        ~uint64_t { 0 } })
    {
        if (rule)
            FUZZ_CHECK (rule->formFor (n) >= 0 && rule->formFor (n) < rule->forms());
        if (texts)
            if (const auto* const found = texts->findPlural ("%1 song", n))
                FUZZ_CHECK (found->isNotEmpty());
    }
    return 0;
}
