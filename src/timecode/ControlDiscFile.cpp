#include "timecode/ControlDiscFile.h"

#include "support/language/Translate.h"
#include "timecode/ControlDisc.h"

#include <juce_audio_formats/juce_audio_formats.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

juce::String writeControlDisc (const juce::File& file, int frames, const std::function<bool (int)>& goesOn)
{
    constexpr auto framesAtOnce = controlDisc::sampleRate / controlDisc::samplesPerFrame;
    constexpr auto samplesAtOnce = static_cast<std::size_t> (framesAtOnce * controlDisc::samplesPerFrame);
    const auto fault = tr ("The control disc can't be written to %1.", file.getFullPathName());

    auto stream = std::make_unique<juce::FileOutputStream> (file);
    if (stream->failedToOpen() || !stream->setPosition (0) || stream->truncate().failed())
        return fault;
    std::unique_ptr<juce::AudioFormatWriter> writer (
        juce::WavAudioFormat().createWriterFor (stream.get(), controlDisc::sampleRate, 2, 16, {}, 0));
    if (writer == nullptr)
        return fault;
    stream.release(); // the writer has it

    std::array<std::vector<float>, 2> signal { std::vector<float> (samplesAtOnce),
                                               std::vector<float> (samplesAtOnce) };
    std::array<std::vector<int>, 2> rounded { std::vector<int> (samplesAtOnce),
                                              std::vector<int> (samplesAtOnce) };
    for (int done = 0; done < frames;)
    {
        const auto count = std::min (framesAtOnce, frames - done);
        for (int i = 0; i < count; ++i)
        {
            const auto at = static_cast<std::size_t> (i * controlDisc::samplesPerFrame);
            controlDisc::generateFrame (static_cast<unsigned> (done + i), &signal[0][at], &signal[1][at]);
        }
        for (std::size_t channel = 0; channel < 2; ++channel)
            std::ranges::transform (signal[channel], rounded[channel].begin(),
                                    [] (float sample)
                                    { return static_cast<int> (std::lround (sample * 32767.0f)) * 65536; });
        const std::array<const int*, 3> channels { rounded[0].data(), rounded[1].data(), nullptr };
        if (!writer->write (const_cast<const int**> (channels.data()), count * controlDisc::samplesPerFrame))
            return fault;
        done += count;
        if (!goesOn (done))
            break;
    }
    return writer->flush() ? juce::String() : fault;
}
