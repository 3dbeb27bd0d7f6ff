#include "analysis/beats/Takt.h"

#include "analysis/AnalysisError.h"
#include "analysis/beats/CaufTakt.h"
#include "analysis/beats/CaufTakt3.h"

int CaufTAKT_If::CreateInstance (CaufTAKT_If** out, int sampleRate, int channels, int engine)
{
    if (out == nullptr)
        return AnalysisError::badArgument;
    *out = nullptr;
    std::unique_ptr<TaktEngine> made;
    if (engine == 1)
        made = std::make_unique<CaufTAKT3>();
    else if (engine == 0)
        made = std::make_unique<CaufTAKT>();
    else
        return AnalysisError::none;
    const auto error = made->init (sampleRate, channels);
    if (error == AnalysisError::none)
        *out = made.release();
    return error;
}

int CaufTAKT_If::DestroyInstance (CaufTAKT_If** instance)
{
    if (instance == nullptr || *instance == nullptr)
        return AnalysisError::badArgument;
    delete *instance;
    *instance = nullptr;
    return AnalysisError::none;
}
