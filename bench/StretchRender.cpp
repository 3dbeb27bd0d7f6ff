#include "analysis/stretch/TimeStretcher.h"

#include <juce_audio_formats/juce_audio_formats.h>

#include <cstdio>
#include <memory>

// bench_stretch_render IN.wav OUT.wav STRETCH [PITCH]: a file through the stretcher of the decks, for listening and for
// programs that measure quality. The output is as long as the input times the stretch.

namespace
{
constexpr int blockSize = 128;

struct Destroy
{
    void operator() (CElastiqueProIf* instance) const { CElastiqueProIf::DestroyInstance (instance); }
};

juce::AudioBuffer<float> read (const juce::File& file, double& rate)
{
    const std::unique_ptr<juce::AudioFormatReader> reader (
        juce::WavAudioFormat().createReaderFor (file.createInputStream().release(), true));
    if (reader == nullptr)
        return {};
    juce::AudioBuffer<float> audio (static_cast<int> (reader->numChannels),
                                    static_cast<int> (reader->lengthInSamples));
    reader->read (&audio, 0, audio.getNumSamples(), 0, true, true);
    rate = reader->sampleRate;
    return audio;
}

bool write (const juce::File& file, const juce::AudioBuffer<float>& audio, double rate)
{
    file.deleteFile();
    auto stream = file.createOutputStream();
    const std::unique_ptr<juce::AudioFormatWriter> writer (juce::WavAudioFormat().createWriterFor (
        stream.get(), rate, static_cast<unsigned> (audio.getNumChannels()), 32, {}, 0));
    if (writer == nullptr)
        return false;
    stream.release();
    return writer->writeFromAudioSampleBuffer (audio, 0, audio.getNumSamples());
}

juce::AudioBuffer<float> stretched (const juce::AudioBuffer<float>& in, double rate, float stretch,
                                    float pitch)
{
    CElastiqueProIf* made = nullptr;
    if (CElastiqueProIf::CreateInstance (made, blockSize, in.getNumChannels(), static_cast<float> (rate), 2)
        != 0)
        return {};
    const std::unique_ptr<CElastiqueProIf, Destroy> stretcher (made);
    if (stretcher->setStretchAndPitch (stretch, &pitch, 0) != 0)
        return {};

    const auto length = static_cast<int> (in.getNumSamples() * static_cast<double> (stretch));
    juce::AudioBuffer<float> out (in.getNumChannels(), length + blockSize), given (in.getNumChannels(), 0);
    for (int done = 0, taken = 0; done < length; done += blockSize)
    {
        const auto count = stretcher->getFramesNeeded();
        given.setSize (in.getNumChannels(), count, false, true, true);
        given.clear();
        const auto present = std::max (0, std::min (count, in.getNumSamples() - taken));
        float* outputs[48];
        for (int c = 0; c < in.getNumChannels(); ++c)
        {
            given.copyFrom (c, 0, in, c, taken, present);
            outputs[c] = out.getWritePointer (c, done);
        }
        taken += present;
        if (stretcher->process (given.getArrayOfReadPointers(), count, outputs) != 0)
            return {};
    }
    out.setSize (in.getNumChannels(), length, true);
    return out;
}
}

int main (int argc, char** argv)
{
    if (argc < 4)
    {
        std::puts ("bench_stretch_render IN.wav OUT.wav STRETCH [PITCH]");
        return 1;
    }
    auto file = [] (const char* path)
    { return juce::File::getCurrentWorkingDirectory().getChildFile (juce::String::fromUTF8 (path)); };
    double rate = 44100.0;
    const auto in = read (file (argv[1]), rate);
    const auto out = stretched (in, rate, juce::String (argv[3]).getFloatValue(),
                                argc > 4 ? juce::String (argv[4]).getFloatValue() : 1.0f);
    if (out.getNumSamples() == 0 || !write (file (argv[2]), out, rate))
    {
        std::puts ("No input, no such factors, or no output.");
        return 1;
    }
    return 0;
}
