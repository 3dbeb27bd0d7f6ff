#pragma once

#include <cstdint>
#include <memory>
#include <vector>

class SimilarityExtractor;

/** Hears one track for the similarity library, beside the analysis that hears it too. One thread, never the audio
    thread. */
class SoundListener
{
public:
    explicit SoundListener (SimilarityExtractor& made) : extractor (&made) {}

    /** The next frames; full scale is 1. */
    void add (const float* left, const float* right, int frames);

    /** The same from 16 bits. */
    void add (const int16_t* left, const int16_t* right, int frames);

private:
    friend class SoundSession;

    struct Release
    {
        void operator() (SimilarityExtractor*) const;
    };

    const std::unique_ptr<SimilarityExtractor, Release> extractor;
    std::vector<float> leftBlock, rightBlock;
};
