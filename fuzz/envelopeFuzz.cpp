#include "Check.h"

#include "instruments/envelope/Envelope.h"

#include <cmath>

/** A blob without fault is read, gives levels at every time and comes back byte for byte once it is written; a blob with
    one may be read, and does no harm. The same bytes are taken as text. */
extern "C" int LLVMFuzzerTestOneInput (const uint8_t* data, size_t size)
{
    const std::span bytes (data, size);
    Envelope envelope;
    const auto fault = envelope.faultIn (bytes);
    const auto isRead = envelope.read (bytes);
    FUZZ_CHECK (isRead || fault != EnvelopeFault::none);
    EnvelopeCursor cursor;
    for (double time = -1.0; time <= envelope.absoluteTime (Envelope::maxPoints) + 1.0 && time < 8.0;
         time += 1.0 / 16.0)
    {
        const auto level = envelope.evaluate (time, cursor);
        FUZZ_CHECK (std::isnan (level) == std::isnan (envelope.evaluate (time)));
        FUZZ_CHECK (fault != EnvelopeFault::none || time < 0.0 || std::isfinite (level));
    }

    Envelope again;
    FUZZ_CHECK (again.read (envelope.blob()));
    const auto written = envelope.blob(), writtenAgain = again.blob();
    FUZZ_CHECK (written == writtenAgain);

    Envelope fromText;
    const auto isText =
        fromText.fromText ({ reinterpret_cast<const char*> (data), size }) == EnvelopeFault::none;
    FUZZ_CHECK (isText || fromText.isSameCurve (Envelope()));
    return 0;
}
