#pragma once

#include "adec/BuiltDecoder.h"
#include "engine/CommandTable.h"
#include "offline/OfflineHost.h"
#include "shared/EncodedFiles.h"
#include "shared/Signals.h"
#include "shared/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>
#include <span>
#include <vector>

/** The largest change of a signal's slope, which a click makes and a low tone does not. */
inline double roughness (std::span<const float> signal)
{
    double most = 0.0;
    for (size_t i = 2; i < signal.size(); ++i)
        most = std::max (most,
                         std::abs (static_cast<double> (signal[i] - 2.0f * signal[i - 1] + signal[i - 2])));
    return most;
}

inline std::vector<float> toneFrom (double phase, double seconds, double hertz = 220.0, double rate = 44100.0)
{
    std::vector<float> made (static_cast<size_t> (std::lround (seconds * rate)));
    for (size_t i = 0; i < made.size(); ++i)
        made[i] = static_cast<float> (
            0.5 * std::sin (phase + 2.0 * std::numbers::pi * hertz / rate * static_cast<double> (i)));
    return made;
}

/** Puts a mono signal onto a slot as a loaded sample. */
inline void putSample (Sampler& sampler, int index, const std::vector<float>& signal, SampleFacts facts = {})
{
    auto& slot = *sampler.desk.find (index);
    sampler.desk.silence (slot);
    std::copy (signal.begin(), signal.end(), slot.buffer.left());
    std::copy (signal.begin(), signal.end(), slot.buffer.right());
    facts.lengthFrames = static_cast<int32_t> (signal.size());
    auto stretcher = sampler.desk.makeStretcher();
    sampler.desk.publish (slot, facts, stretcher);
}

/** An engine on its own that renders offline, with what its sampler's bus and its monitor gave. */
struct SamplerRun
{
    static constexpr double rate = 44100.0;

    explicit SamplerRun (int blockFrames = 128)
    {
        OfflineHost::Options options;
        options.root = folder;
        options.decoderLibrary = juce::File (builtDecoder());
        options.sampleRate = rate;
        options.blockFrames = blockFrames;
        host = std::make_unique<OfflineHost> (options);
        host->sink = [this] (const float* const* channels, int frames)
        {
            bus.insert (bus.end(), channels[12], channels[12] + frames);
            monitor.insert (monitor.end(), channels[2], channels[2] + frames);
            master.insert (master.end(), channels[0], channels[0] + frames);
            return true;
        };
    }

    Sampler& sampler() { return host->engine().sampler; }
    SamplerSlot& slot (int index) { return *sampler().desk.find (index); }
    bool plays (int index) { return slot (index).playing != 0; }
    void render (double seconds) { host->render (std::llround (seconds * rate)); }

    void set (const char* constant, float value = 1.0f)
    {
        host->engine().setParameter (CommandTable::numberOf (constant), value);
        host->engine().deliverMessages();
    }
    float get (const char* constant)
    {
        return host->engine().getParameter (CommandTable::numberOf (constant));
    }

    /** The bus since the last call. */
    std::vector<float> taken()
    {
        std::vector<float> all;
        all.swap (bus);
        return all;
    }

    TemporaryFolder folder;
    std::vector<float> bus, monitor, master; ///< their left channels
    std::unique_ptr<OfflineHost> host;       ///< last: its engine uses the folder
};
