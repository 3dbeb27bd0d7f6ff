#include "tracks/similar/SimilarityLibrary.h"

namespace
{
constexpr int32_t majorVersion = 1;
}

SimilarityLibrary::SimilarityLibrary (const juce::File& library, const juce::File& folder)
{
    if (!handle.open (library.getFullPathName()))
        return;
    if (const auto get = reinterpret_cast<GetCPPInterfaceFunction> (handle.getFunction ("GetCPPInterface")))
        entry.reset (get());
    const auto isOk = entry != nullptr && entry->version() >> 16 == majorVersion
                      && entry->setFolder (folder.getFullPathName().toRawUTF8()) == similarityOk
                      && entry->configureClassification ("cfg_classification.esc") == similarityOk
                      && entry->configureSession ("cfg_session_2002.esc") == similarityOk;
    if (!isOk)
        entry.reset();
}

SimilarityExtractor* SimilarityLibrary::newExtractor (double rate) const
{
    constexpr auto* configuration = "cfg_extraction_2002.esc";
    constexpr auto unknownTempo = 0.0;
    return isLoaded() ? entry->newExtractor (configuration, rate, unknownTempo) : nullptr;
}

SimilaritySession* SimilarityLibrary::newSession() const
{
    return isLoaded() ? entry->newSession() : nullptr;
}
