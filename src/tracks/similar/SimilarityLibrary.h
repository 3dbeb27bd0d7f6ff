#pragma once

#include "similarity/similarity.h"

#include <juce_core/juce_core.h>

#include <memory>

/** Ends an object of the similarity library. */
struct ReleaseSimilarity
{
    template <typename Object>
    void operator() (Object* object) const
    {
        object->release();
    }
};

template <typename Object>
using SimilarityHandle = std::unique_ptr<Object, ReleaseSimilarity>;

/** The similarity library, found at run time. One that is missing or of another version is no error: nothing is described
    and nothing found then. */
class SimilarityLibrary
{
public:
    /** @param library   the file
        @param folder    of session files; made if need be */
    SimilarityLibrary (const juce::File& library, const juce::File& folder);

    bool isLoaded() const noexcept { return entry != nullptr; }

    /** @returns null without the library, or at a rate outside 8 to 400 kHz */
    SimilarityExtractor* newExtractor (double rate) const;
    SimilaritySession* newSession() const;

private:
    juce::DynamicLibrary handle;
    SimilarityHandle<SimilarityInterface> entry;
};
