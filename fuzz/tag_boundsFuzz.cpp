#include "Check.h"

#include "library/tags/TagBounds.h"

#include <fileref.h>
#include <tbytevectorstream.h>

namespace
{
/** Bytes under a name, by whose ending TagLib chooses how it reads them. */
class NamedBytes : public TagLib::ByteVectorStream
{
public:
    NamedBytes (const TagLib::ByteVector& bytes, const char* n) : ByteVectorStream (bytes), called (n) {}

    TagLib::FileName name() const override { return called; }

private:
    const char* called;
};
}

/** Files within the bounds are read by TagLib in the memory and on the stack that a thread has. */
extern "C" int LLVMFuzzerTestOneInput (const uint8_t* data, size_t size)
{
    const TagLib::ByteVector bytes (reinterpret_cast<const char*> (data), static_cast<unsigned> (size));
    for (const auto* name : { "a.mp3", "a.m4a", "a.wav" })
    {
        NamedBytes stream (bytes, name);
        const auto isWithin = TagBounds::hold (stream);
        FUZZ_CHECK (stream.tell() == 0);
        if (isWithin)
            const TagLib::FileRef read (&stream, true);
    }
    return 0;
}
