#include "cli/Verbs.h"

#include "cli/TerminalOutput.h"
#include "cli/VerbOptions.h"
#include "support/language/Translate.h"
#include "timecode/TimecodeDecoder.h"

#include <juce_audio_formats/juce_audio_formats.h>

#include <array>
#include <cstdio>

namespace
{
constexpr std::array options {
    VerbOption { "--medium", "NAME", N_ ("the record or disc that was played (cd)") },
    VerbOption { "--list", nullptr, N_ ("the names of all media") },
    VerbOption { "--help", nullptr, N_ ("this text") },
};

void listMedia()
{
    for (const auto& medium : controlMedia())
        printLine (juce::String (medium.id.data(), medium.id.size()).paddedRight (' ', 16)
                   + juce::String (medium.name.data(), medium.name.size()));
}

void decode (juce::AudioFormatReader& reader, const ControlMedium& medium)
{
    constexpr int blockSize = 4096;
    const auto decoder = std::make_unique<TimecodeDecoder>();
    decoder->prepare (medium, codeOf (medium), reader.sampleRate);
    juce::AudioBuffer<float> block (2, blockSize);
    auto nextLine = 0.0;
    for (juce::int64 first = 0; first < reader.lengthInSamples; first += blockSize)
    {
        const auto count =
            static_cast<int> (std::min<juce::int64> (blockSize, reader.lengthInSamples - first));
        reader.read (&block, 0, count, first, true, true);
        for (int i = 0; i < count; ++i)
        {
            decoder->process (block.getSample (0, i), block.getSample (1, i));
            const auto now = static_cast<double> (first + i + 1) / reader.sampleRate;
            if (now < nextLine)
                continue;
            nextLine += 0.001;
            std::printf ("%.6f %.6f %.7f\n", now, decoder->speed(), decoder->position().value_or (-1.0));
        }
    }
}
}

int runTimecode (const juce::StringArray& arguments)
{
    const VerbOptions given (options, arguments);
    if (given.error().isNotEmpty())
        return failWith (given.error());
    if (given.has ("--help"))
    {
        printLine (helpText ("timecode FILE.wav --medium NAME",
                             N_ ("Decodes a recorded control signal: a line each millisecond with time, "
                                 "speed (1 is nominal) and\n"
                                 "position in seconds of the medium, -1 while it is unknown."),
                             options));
        return ExitCode::success;
    }
    if (given.has ("--list"))
    {
        listMedia();
        return ExitCode::success;
    }
    if (given.positional.size() != 1)
        return failWith (tr ("timecode needs one WAV file."));
    const auto name = given.has ("--medium") ? given.valueOf ("--medium") : juce::String ("cd");
    const auto* medium = findControlMedium (name.toStdString());
    if (medium == nullptr)
        return failWith (tr ("There is no medium %1; timecode --list names them.", name.quoted()));

    const auto file = juce::File::getCurrentWorkingDirectory().getChildFile (given.positional[0]);
    if (!file.existsAsFile())
        return failWith (tr ("There is no file %1.", file.getFullPathName()));
    const std::unique_ptr<juce::AudioFormatReader> reader (
        juce::WavAudioFormat().createReaderFor (file.createInputStream().release(), true));
    if (reader == nullptr || reader->numChannels < 2 || reader->sampleRate < 8000
        || reader->sampleRate > 384000)
        return failWith (tr ("%1 is no stereo WAV file of 8 to 384 kHz.", file.getFullPathName()));
    decode (*reader, *medium);
    return ExitCode::success;
}
