#pragma once

#include "adec/BuiltDecoder.h"
#include "offline/SetPerformance.h"
#include "shared/EncodedFiles.h"
#include "shared/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

inline constexpr int runRate = 44100;

/** Ten seconds of two slowly swept tones, which look nowhere as they do elsewhere. */
inline juce::File writeSweep (const juce::File& file)
{
    constexpr int frames = 10 * runRate;
    juce::AudioBuffer<float> audio (2, frames);
    for (int i = 0; i < frames; ++i)
    {
        const auto t = static_cast<double> (i) / runRate;
        audio.setSample (0, i, static_cast<float> (0.5 * std::sin (t * (1000.0 + 300.0 * t))));
        audio.setSample (1, i, static_cast<float> (0.4 * std::cos (t * (2500.0 - 70.0 * t))));
    }
    return EncodedFiles::writeWav (audio, runRate, file);
}

/** One set that is played in a fresh engine, and what came of it. */
struct OfflineRun
{
    explicit OfflineRun (int blockFrames = 512, bool hasTransport = false)
    {
        writeSweep (folder.file ("sweep.wav"));
        OfflineHost::Options options;
        options.root = folder.file ("root");
        options.decoderLibrary = juce::File (builtDecoder());
        options.sampleRate = runRate;
        options.blockFrames = blockFrames;
        options.hasTransport = hasTransport;
        host = std::make_unique<OfflineHost> (options);
        host->sink = [this] (const float* const* channels, int frames)
        {
            master.insert (master.end(), channels[0], channels[0] + frames);
            return true;
        };
    }

    OfflineRun& play (const std::string& text)
    {
        const auto parsed = parseSetScript (text);
        if (const auto* error = std::get_if<SetScriptError> (&parsed))
            ADD_FAILURE() << error->line << ": " << error->sentence;
        else
            finished =
                performSet (std::get<SetScript> (parsed), *host,
                            { folder, [this] (const auto& line) { printed.push_back (line.toStdString()); },
                              [this] (const auto& line) { reported.push_back (line.toStdString()); } });
        return *this;
    }

    TemporaryFolder folder;
    std::vector<float> master; ///< its left channel
    std::vector<std::string> printed, reported;
    bool finished = false;
    std::unique_ptr<OfflineHost> host; ///< last: its engine uses the folder
};
