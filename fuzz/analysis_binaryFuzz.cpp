#include "AnalysisChecks.h"

#include "analysis/files/AnalysisBinary.h"

/** Whatever is read of a track's analysis can be used. */
extern "C" int LLVMFuzzerTestOneInput (const uint8_t* data, size_t size)
{
    if (const auto analysis = AnalysisBinary::read (std::as_bytes (std::span (data, size))))
        checkAnalysis (*analysis, size);
    return 0;
}
