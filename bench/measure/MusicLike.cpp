#include "measure/MusicLike.h"

#include "support/RandGeneratorLCG.h"

#include <juce_audio_formats/juce_audio_formats.h>

#include <array>
#include <cmath>
#include <cstdio>

namespace
{
constexpr double bpm = 126.0;
constexpr double bassHz[] { 55.0, 55.0, 65.41, 49.0 };
constexpr double chordRatios[] { 4.0, 4.757, 5.993, 8.0 };
constexpr double encodedSeconds = 300.0, encodedRate = 44100.0;

/** One side's voices, sample by sample. */
class Voices
{
public:
    Voices (double r, int seed, double spread) : rate (r), random (seed), detune (spread) {}

    float next (int frame)
    {
        const auto beat = frame / rate * bpm / 60.0;
        const auto sinceKick = (beat - std::floor (beat)) * 60.0 / bpm;
        const auto sinceHat = sinceKick < 30.0 / bpm ? sinceKick : sinceKick - 30.0 / bpm;
        const auto root = bassHz[static_cast<size_t> (beat / 4.0) % std::size (bassHz)] * detune;

        kickPhase =
            sinceKick < 1.0 / rate ? 0.0 : kickPhase + (45.0 + 120.0 * std::exp (-40.0 * sinceKick)) / rate;
        const auto kick =
            std::sin (juce::MathConstants<double>::twoPi * kickPhase) * std::exp (-9.0 * sinceKick);

        const auto white = random.nextDouble() * 2.0 - 1.0;
        const auto bright = white - lastWhite;
        lastWhite = white;
        const auto hat = bright * std::exp (-45.0 * sinceHat);

        const auto bass = saw (bassPhase, root);
        bassLow += 0.05 * (bass - bassLow);
        auto chord = 0.0;
        for (size_t i = 0; i < chordPhases.size(); ++i)
            chord += saw (chordPhases[i], root * chordRatios[i]);

        return static_cast<float> (0.4 * kick + 0.08 * hat + 0.3 * bassLow + 0.04 * chord + 0.02 * white);
    }

private:
    double saw (double& phase, double hz) const
    {
        phase += hz / rate;
        phase -= std::floor (phase);
        return 2.0 * phase - 1.0;
    }

    const double rate;
    RandGeneratorLCG random;
    const double detune;
    double kickPhase = 0.0, lastWhite = 0.0, bassPhase = 0.0, bassLow = 0.0;
    std::array<double, std::size (chordRatios)> chordPhases {};
};

juce::StringArray codecOptions (const juce::String& extension)
{
    if (extension == "mp3")
        return { "-c:a", "libmp3lame", "-b:a", "320k" };
    if (extension == "ogg")
        return { "-c:a", "libvorbis", "-q:a", "6" };
    if (extension == "m4a")
        return { "-c:a", "aac", "-b:a", "256k" };
    return { "-c:a", "flac" };
}

bool writeWav (const juce::AudioBuffer<float>& audio, const juce::File& target)
{
    auto stream = target.createOutputStream();
    if (stream == nullptr)
        return false;
    const std::unique_ptr<juce::AudioFormatWriter> writer (
        juce::WavAudioFormat().createWriterFor (stream.get(), encodedRate, 2, 16, {}, 0));
    if (writer == nullptr)
        return false;
    stream.release(); // the writer owns it now
    return writer->writeFromAudioSampleBuffer (audio, 0, audio.getNumSamples());
}

bool runFfmpeg (const juce::File& source, const juce::StringArray& options, const juce::File& target)
{
    juce::StringArray line { "ffmpeg", "-nostdin", "-v", "error", "-y", "-i", source.getFullPathName() };
    line.addArray (options);
    line.add (target.getFullPathName());
    juce::ChildProcess process;
    const auto started = process.start (line);
    const auto words = started ? process.readAllProcessOutput() : juce::String ("ffmpeg can't be run");
    if (started && process.waitForProcessToFinish (60'000) && process.getExitCode() == 0)
        return true;
    std::printf ("%s\n%s\n", line.joinIntoString (" ").toRawUTF8(), words.toRawUTF8());
    return false;
}
}

juce::AudioBuffer<float> MusicLike::make (double seconds, double rate, int seed)
{
    juce::AudioBuffer<float> audio (2, static_cast<int> (seconds * rate));
    for (int side = 0; side < 2; ++side)
    {
        Voices voices (rate, 2 * seed + side, side == 0 ? 1.0 : 1.003);
        auto* const samples = audio.getWritePointer (side);
        for (int i = 0; i < audio.getNumSamples(); ++i)
            samples[i] = juce::jlimit (-1.0f, 1.0f, voices.next (i));
    }
    return audio;
}

juce::File MusicLike::encoded (const juce::String& extension, const juce::File& folder)
{
    const auto target = folder.getChildFile ("music." + extension);
    if (target.existsAsFile())
        return target;

    const auto wav = folder.getChildFile ("music.wav");
    if (!wav.existsAsFile()
        && (!folder.createDirectory() || !writeWav (make (encodedSeconds, encodedRate), wav)))
    {
        std::printf ("Can't write %s\n", wav.getFullPathName().toRawUTF8());
        return target;
    }
    // Under another name first: an interrupted run leaves no half file behind.
    const auto part = folder.getChildFile ("part." + extension);
    if (runFfmpeg (wav, codecOptions (extension), part))
        juce::ignoreUnused (part.moveFileTo (target)); // the caller finds that it is not there
    return target;
}
