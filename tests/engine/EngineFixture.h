#pragma once

#include "adec/BuiltDecoder.h"
#include "engine/CPlatterdex.h"
#include "engine/CommandTable.h"
#include "shared/EncodedFiles.h"
#include "shared/TemporaryFolder.h"

#include <atomic>
#include <memory>
#include <span>

/** A whole engine in a temporary folder, without a message loop; time is the audio that was rendered. */
struct EngineFixture
{
    static constexpr double rate = 44100.0;

    /** Live, as on stage, the preview and the recorder have threads of their own; offline they serve the block. */
    explicit EngineFixture (Pacing::Mode mode = Pacing::Mode::offline) : pacing (mode) { makeEngine(); }

    void makeEngine (bool standalone = true)
    {
        engine.reset();
        EngineWorld world;
        world.folders.root = folder;
        world.folders.music = folder.file ("no music");
        world.decoderLibrary = juce::File (builtDecoder());
        world.clock = [this] { return static_cast<uint32_t> (renderedFrames * 1000 / 44100); };
        world.wallClock = [] { return juce::Time (2024, 11, 31, 23, 59, 7); };
        world.pacing = pacing;
        world.seed = 1;
        world.prompts = prompts;
        engine = std::make_unique<CPlatterdex> (std::move (world));
        engine->setRateAndBufferSizeDetails (rate, 512);
        if (standalone)
            engine->setParameter (CPlatterdex::standaloneCall, CPlatterdex::standaloneValue);
    }

    /** One block; `buffer` holds the inputs before and the outputs after it. */
    void process (juce::AudioBuffer<float>& buffer)
    {
        juce::MidiBuffer noMidi;
        const juce::ScopedLock sl (engine->getCallbackLock());
        engine->processBlock (buffer, noMidi);
        renderedFrames += buffer.getNumSamples();
    }

    /** Renders in blocks without input. */
    juce::AudioBuffer<float> render (int frames, int block = 512)
    {
        juce::AudioBuffer<float> out (CPlatterdex::outputChannels, frames);
        out.clear();
        for (int done = 0; done < frames; done += block)
        {
            juce::AudioBuffer<float> piece (out.getArrayOfWritePointers(), CPlatterdex::outputChannels, done,
                                            std::min (block, frames - done));
            process (piece);
        }
        return out;
    }

    static std::span<const float> channel (const juce::AudioBuffer<float>& audio, int index)
    {
        return { audio.getReadPointer (index), static_cast<size_t> (audio.getNumSamples()) };
    }

    void set (const char* constant, float value = 1.0f)
    {
        const auto number = CommandTable::numberOf (constant);
        jassert (number != 0);
        engine->setParameter (number, value);
        engine->deliverMessages();
    }

    float get (const char* constant) { return engine->getParameter (CommandTable::numberOf (constant)); }

    DeckPlayer& deck (int index = 0) { return *engine->decks.deck (index); }

    void load (const juce::File& file, int index)
    {
        engine->loadTrack (file, index);
        engine->loaders.waitUntilIdle (index);
        engine->deliverMessages();
    }

    /** Loads noise of some seconds into a deck. */
    void loadNoise (int index, int seconds = 5) { load (noiseFile (seconds), index); }

    juce::File noiseFile (int seconds)
    {
        const auto file = folder.file ("noise" + juce::String (seconds) + ".wav");
        if (!file.existsAsFile())
            EncodedFiles::writeWav (EncodedFiles::makeNoise (2, static_cast<int> (seconds * rate), rate),
                                    rate, file);
        return file;
    }

    const Pacing::Mode pacing;
    std::shared_ptr<Prompts> prompts; ///< of the engines made from now on
    const TemporaryFolder folder;
    std::atomic<int64_t> renderedFrames { 0 };
    std::unique_ptr<CPlatterdex> engine;
};
