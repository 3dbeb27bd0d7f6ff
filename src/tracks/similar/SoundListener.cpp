#include "tracks/similar/SoundListener.h"

#include "tracks/similar/SimilarityLibrary.h"

void SoundListener::Release::operator() (SimilarityExtractor* made) const
{
    made->release();
}

void SoundListener::add (const float* left, const float* right, int frames)
{
    extractor->addAudio (left, right, frames);
}

void SoundListener::add (const int16_t* left, const int16_t* right, int frames)
{
    constexpr auto scale = 1.0f / 32768.0f;
    const auto size = static_cast<size_t> (frames);
    leftBlock.resize (size);
    rightBlock.resize (size);
    for (size_t i = 0; i < size; ++i)
    {
        leftBlock[i] = static_cast<float> (left[i]) * scale;
        rightBlock[i] = static_cast<float> (right[i]) * scale;
    }
    add (leftBlock.data(), rightBlock.data(), frames);
}
