#pragma once

#include <juce_audio_formats/juce_audio_formats.h>

#include <memory>
#include <mutex>

class AdecSharedLibrary;

/** The decoder library as one of JUCE's formats, behind JUCE's own: M4A and WMA above all. A reader goes forwards at the
    decoder's pace, and to a place before by beginning anew. A file's length is the one that its headers state. Any thread
    that may block. */
class AdecAudioFormat : public juce::AudioFormat
{
public:
    /** @param decoderLibrary   its file, which is loaded at the first use; a missing one reads nothing */
    explicit AdecAudioFormat (const juce::File& decoderLibrary);

    juce::Array<int> getPossibleSampleRates() override { return {}; }
    juce::Array<int> getPossibleBitDepths() override { return {}; }
    bool canDoStereo() override { return true; }
    bool canDoMono() override { return true; }

    /** @param stream   of a file; what has no path is not read */
    juce::AudioFormatReader* createReaderFor (juce::InputStream* stream,
                                              bool deleteStreamIfOpeningFails) override;

    juce::AudioFormatWriter* createWriterFor (juce::OutputStream*, double, unsigned int, int,
                                              const juce::StringPairArray&, int) override
    {
        return nullptr;
    }
    using AudioFormat::createWriterFor;

private:
    std::shared_ptr<const AdecSharedLibrary> library();

    const juce::File libraryFile;
    std::mutex lock; ///< of the one below
    std::shared_ptr<const AdecSharedLibrary> loaded;
};
