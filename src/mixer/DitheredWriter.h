#pragma once

#include <juce_audio_formats/juce_audio_formats.h>

#include <atomic>
#include <memory>
#include <vector>

/** Rounds what is written to the depth of an integer file, with the dither of two random numbers (triangular, one step
    to either side) that makes the error a noise free of the signal. Seeded alike, so that two recordings of the same
    audio are the same. Any one thread. */
class DitheredWriter : public juce::AudioFormatWriter
{
public:
    /** @param target   of 8 to 24 bits a sample
        @param failed   becomes true when something can't be written, and outlives this: a ThreadedWriter passes over what
                        write() returns. May be null */
    explicit DitheredWriter (std::unique_ptr<juce::AudioFormatWriter> target,
                             std::atomic<bool>* failed = nullptr);

    /** @param channels   left-justified 32-bit samples, ended by a null pointer
        @returns false if the file can't be written. */
    bool write (const int** channels, int frames) override;
    bool flush() override { return seen (target->flush()); }

private:
    bool seen (bool isWritten);

    const std::unique_ptr<juce::AudioFormatWriter> target;
    std::atomic<bool>* const failed;
    std::vector<juce::Random> random; ///< one per channel, so that the portions that are written do not tell
    juce::HeapBlock<int> rounded;
    int capacity = 0;
};
