#include "instruments/sampler/sample/SampleFile.h"

#include "analysis/signal/Resample.h"
#include "support/files/ReplaceFile.h"

#include <juce_audio_formats/juce_audio_formats.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

namespace
{
constexpr int pieceFrames = 4096;

using Pair = std::array<std::vector<float>, 2>;

/** The pair at another rate, without the resampler's delay, and without what the new rate can't hold. */
Pair resampled (const float* left, const float* right, int frames, double ratio)
{
    std::unique_ptr<CResampleFloat> resampler;
    Pair made;
    if (CResampleFloat::create (resampler, 2, pieceFrames) != 0)
        return made;
    const auto wanted = static_cast<size_t> (std::lround (frames / ratio));
    const auto late = static_cast<size_t> (std::lround (resampler->latency() / ratio));
    Pair in { std::vector<float> (pieceFrames), std::vector<float> (pieceFrames) };
    Pair out { std::vector<float> (static_cast<size_t> (resampler->framesProduced (pieceFrames, ratio)) + 64),
               std::vector<float> (static_cast<size_t> (resampler->framesProduced (pieceFrames, ratio))
                                   + 64) };
    for (int done = 0; made[0].size() < wanted + late; done += pieceFrames)
    {
        const float* const source[] { left, right };
        for (size_t side = 0; side < 2; ++side)
        {
            const auto count = std::clamp (frames - done, 0, pieceFrames);
            std::fill (in[side].begin(), in[side].end(), 0.0f);
            std::copy_n (source[side] + std::min (done, frames), count, in[side].begin());
        }
        const float* const inputs[] { in[0].data(), in[1].data() };
        float* const outputs[] { out[0].data(), out[1].data() };
        const auto count = resampler->process (inputs, outputs, pieceFrames, ratio);
        if (count < 1)
            return {};
        for (size_t side = 0; side < 2; ++side)
            made[side].insert (made[side].end(), out[side].begin(), out[side].begin() + count);
    }
    for (auto& side : made)
    {
        side.erase (side.begin(), side.begin() + static_cast<std::ptrdiff_t> (late));
        side.resize (wanted);
    }
    return made;
}

juce::StringPairArray metadataOf (const SampleFacts& facts, double ratio)
{
    using Wav = juce::WavAudioFormat;
    juce::StringPairArray data;
    data.set (Wav::acidOneShot, facts.bpm > 0.0 ? "0" : "1");
    data.set (Wav::acidStretch, "1");
    data.set (Wav::acidizerFlag, "1");
    data.set (Wav::acidBeats, juce::String (juce::roundToInt (0.5 * facts.beats)));
    data.set (Wav::acidNumerator, "4");
    data.set (Wav::acidDenominator, "4");
    data.set (Wav::acidTempo, juce::String (facts.bpm));
    if (facts.beatEnd > facts.beatStart)
    {
        data.set ("NumSampleLoops", "1");
        data.set ("Loop0Type", "0");
        data.set ("Loop0Start", juce::String (std::lround (facts.beatStart / ratio)));
        data.set ("Loop0End", juce::String (std::lround (facts.beatEnd / ratio) - 1));
    }
    return data;
}

bool writeFrames (juce::AudioFormatWriter& writer, const float* left, const float* right, int frames)
{
    std::array<std::vector<int>, 2> rounded { std::vector<int> (pieceFrames),
                                              std::vector<int> (pieceFrames) };
    const float* const source[] { left, right };
    for (int done = 0; done < frames; done += pieceFrames)
    {
        const auto count = std::min (pieceFrames, frames - done);
        for (size_t side = 0; side < 2; ++side)
            for (int i = 0; i < count; ++i)
                rounded[side][static_cast<size_t> (i)] =
                    static_cast<int> (
                        std::lround (std::clamp (source[side][done + i] * 32768.0f, -32768.0f, 32767.0f)))
                    * 65536;
        const int* sides[] { rounded[0].data(), rounded[1].data(), nullptr };
        if (!writer.write (sides, count))
            return false;
    }
    return true;
}
}

bool SampleFile::write (const juce::File& file, const float* left, const float* right,
                        const SampleFacts& facts, double rate)
{
    auto frames = static_cast<int> (facts.lengthFrames);
    const auto ratio = rate > 0.0 ? facts.sampleRate / rate : 1.0;
    Pair other;
    if (ratio != 1.0)
    {
        other = resampled (left, right, frames, ratio);
        left = other[0].data();
        right = other[1].data();
        frames = static_cast<int> (other[0].size());
    }
    if (frames < 1)
        return false;

    juce::MemoryBlock bytes;
    auto* stream = new juce::MemoryOutputStream (bytes, false);
    std::unique_ptr<juce::AudioFormatWriter> writer (juce::WavAudioFormat().createWriterFor (
        stream, rate > 0.0 ? rate : facts.sampleRate, 2, 16, metadataOf (facts, ratio), 0));
    if (writer == nullptr)
    {
        delete stream;
        return false;
    }
    if (!writeFrames (*writer, left, right, frames))
        return false;
    writer.reset();
    return replaceFile (file, bytes.getData(), bytes.getSize());
}

juce::File SampleFile::nameFor (const juce::File& folder, const juce::String& name, juce::Time time)
{
    auto legal = juce::File::createLegalFileName (name).trim().substring (0, 80);
    if (legal.isEmpty() || legal.startsWithChar ('.'))
        legal = "Sample " + legal;
    return folder.getNonexistentChildFile (legal + time.formatted ("_%Y-%m-%d_(%Hh%Mm%Ss)"), ".wav", false);
}
