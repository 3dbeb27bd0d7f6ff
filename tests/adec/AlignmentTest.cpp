#include "AdecLibrary.h"

#include <cmath>

namespace
{
constexpr int sourceFrames = 3 * 44100 + 777; // ends within a packet of every codec

/** Frames by which the sound of the decoded file is later than the source's. */
int offsetOf (const juce::AudioBuffer<float>& source, const std::vector<float>& decoded)
{
    constexpr int window = 4096, farthest = 3000, start = 30000;
    double best = -1.0;
    int bestOffset = INT_MAX;
    for (int offset = -farthest; offset <= farthest; ++offset)
    {
        if (start + offset + window > static_cast<int> (decoded.size()))
            break;
        const auto* const a = source.getReadPointer (0) + start;
        const auto* const b = decoded.data() + start + offset;
        float sum = 0.0f;
        for (int i = 0; i < window; ++i)
            sum += a[i] * b[i];
        if (sum > best)
        {
            best = sum;
            bestOffset = offset;
        }
    }
    return bestOffset;
}

/** Signal to error in dB of what both have, the decoded file taken back by `offset`. */
double signalToError (const float* source, int frames, const std::vector<float>& decoded, int offset)
{
    double signal = 0.0, error = 1e-12;
    for (int i = std::max (0, -offset); i < std::min (frames, static_cast<int> (decoded.size()) - offset);
         ++i)
    {
        const auto difference = decoded[static_cast<size_t> (i + offset)] - source[i];
        signal += static_cast<double> (source[i]) * source[i];
        error += static_cast<double> (difference) * difference;
    }
    return 10.0 * std::log10 (signal / error);
}

constexpr int unstated = INT_MAX;

struct Row
{
    const char* name;
    int channels;
    int sampleRate;
    const char* options;
    int32_t sampleFormat;
    double leastDb;
    int offset = 0;
    int extraFrames = 0; /**< decoded beyond the source; `unstated` where the file doesn't say its end */
};

// 1105 frames are the encoder's 576 and the decoder's 529, in files that don't state them. The WMA decoder takes
// off the two blocks that common encoders put in front; ffmpeg's puts one there.
const Row rows[] = {
    { "cbr.mp3", 2, 44100, "-c:a libmp3lame -b:a 320k", adecSampleFloat, 14 },
    { "mono.mp3", 1, 44100, "-c:a libmp3lame -b:a 160k", adecSampleFloat, 14 },
    { "48k.mp3", 2, 48000, "-c:a libmp3lame -b:a 320k", adecSampleFloat, 14 },
    { "vbr.mp3", 2, 44100, "-c:a libmp3lame -q:a 0", adecSampleFloat, 14 },
    { "vbr48k.mp3", 1, 48000, "-c:a libmp3lame -q:a 0", adecSampleFloat, 14 },
    { "abr.mp3", 2, 44100, "-c:a libmp3lame -abr 1 -b:a 256k", adecSampleFloat, 14 },
    { "bare.mp3", 2, 44100, "-c:a libmp3lame -b:a 320k -write_xing 0", adecSampleFloat, 14, 1105, unstated },
    { "bare48k.mp3", 2, 48000, "-c:a libmp3lame -b:a 320k -write_xing 0", adecSampleFloat, 14, 1105,
      unstated },
    { "stereo.m4a", 2, 44100, "-c:a aac -b:a 256k", adecSampleFloat, 14 },
    { "mono48k.m4a", 1, 48000, "-c:a aac -b:a 160k", adecSampleFloat, 14 },
    { "fineclock.m4a", 2, 44100, "-c:a aac -b:a 256k -movie_timescale 44100", adecSampleFloat, 14 },
    { "front.m4a", 2, 44100, "-c:a aac -b:a 256k -movflags +faststart", adecSampleFloat, 14 },
    { "noedits.m4a", 2, 44100, "-c:a aac -b:a 256k -use_editlist 0", adecSampleFloat, 14, 1024, 1024 },
    { "fragments.m4a", 2, 44100, "-c:a aac -b:a 256k -movflags +frag_keyframe+delay_moov", adecSampleFloat,
      20, 0, unstated },
    { "alac.m4a", 2, 44100, "-c:a alac", adecSampleS16, 70 },
    { "stereo.ogg", 2, 44100, "-c:a libvorbis -q:a 9", adecSampleFloat, 14 },
    { "mono48k.ogg", 1, 48000, "-c:a libvorbis -q:a 9", adecSampleFloat, 14 },
    { "opus.ogg", 2, 48000, "-c:a libopus -b:a 320k", adecSampleFloat, 14 },
    { "stereo.flac", 2, 44100, "-c:a flac", adecSampleS16, 70 },
    { "24bit.flac", 1, 48000, "-c:a flac -sample_fmt s32", adecSampleS32, 70 },
    { "stereo.wma", 2, 44100, "-c:a wmav2 -b:a 192k", adecSampleFloat, 10, -2048, unstated },
    { "mono48k.wma", 1, 48000, "-c:a wmav2 -b:a 128k", adecSampleFloat, 10, -2048, unstated },
    { "stereo.aiff", 2, 44100, "", adecSampleS16, 70 },
    { "24bit.aif", 1, 44100, "-c:a pcm_s24be", adecSampleS32, 70 },
    { "u8.wav", 2, 44100, "-c:a pcm_u8", adecSampleU8, 25 },
    { "s16.wav", 2, 44100, "-c:a pcm_s16le", adecSampleS16, 70 },
    { "s24.wav", 1, 48000, "-c:a pcm_s24le", adecSampleS32, 70 },
    { "s32.wav", 2, 96000, "-c:a pcm_s32le", adecSampleS32, 70 },
    { "f32.wav", 2, 44100, "-c:a pcm_f32le", adecSampleFloat, 70 },
    { "f64.wav", 1, 44100, "-c:a pcm_f64le", adecSampleDouble, 70 },
};

class Alignment : public AdecTest, public testing::WithParamInterface<Row>
{
};
}

TEST_P (Alignment, DecodesToTheFramesOfTheSource)
{
    const auto& row = GetParam();
    const auto source = EncodedFiles::makeNoise (row.channels, sourceFrames, row.sampleRate);
    const auto wav = EncodedFiles::writeWav (source, row.sampleRate, folder.file ("source.wav"));
    const auto decoded = library.decode (EncodedFiles::encode (
        wav, folder.file (row.name), juce::StringArray::fromTokens (row.options, false)));

    ASSERT_TRUE (decoded.isDecoding);
    EXPECT_EQ (decoded.record.channels, row.channels);
    EXPECT_EQ (decoded.record.sampleRate, static_cast<uint32_t> (row.sampleRate));
    EXPECT_EQ (decoded.record.sampleFormat, row.sampleFormat);
    EXPECT_EQ (decoded.lostPackets, 0);

    if (row.extraFrames != unstated)
    {
        EXPECT_EQ (decoded.frames() - sourceFrames, row.extraFrames);
    }
    EXPECT_GE (decoded.frames(), sourceFrames + row.offset);

    const auto offset = offsetOf (source, decoded.channel (0));
    EXPECT_EQ (offset, row.offset);
    for (int channel = 0; channel < row.channels; ++channel)
    {
        const auto samples = decoded.channel (channel);
        EXPECT_GE (signalToError (source.getReadPointer (channel), sourceFrames, samples, offset),
                   row.leastDb);
    }
}

INSTANTIATE_TEST_SUITE_P (Formats, Alignment, testing::ValuesIn (rows),
                          [] (const auto& info)
                          { return juce::String (info.param.name).removeCharacters (".").toStdString(); });
