#include "analysis/stretch/TimeStretcher.h"

#include "analysis/AnalysisError.h"
#include "analysis/stretch/CelastiqueClassic.h"

#include <new>

int CElastiqueProIf::CreateInstance (CElastiqueProIf*& out, int blockSize, int channels, float sampleRate,
                                     int mode)
{
    out = nullptr;
    if (blockSize < 1 || blockSize > largestBlock)
        return AnalysisError::badArgument;
    if (!(sampleRate >= 8000.0f && sampleRate <= 384000.0f))
        return AnalysisError::badSampleRate;
    if (channels < 1 || channels > 48)
        return AnalysisError::badChannelCount;
    if (mode != 2 && mode != 3)
        return AnalysisError::badArgument;

    // Nothing throws across a folder's border, and memory is what this can lack.
    try
    {
        std::unique_ptr<CElastiqueMC> engine;
        if (const auto error = CElastiqueMC::create (engine, blockSize, channels, sampleRate))
            return error;
        out = new CelastiqueClassic (std::move (engine));
        return AnalysisError::none;
    }
    catch (const std::bad_alloc&)
    {
        return AnalysisError::noMemory;
    }
}

void CElastiqueProIf::DestroyInstance (CElastiqueProIf* instance)
{
    delete instance;
}
