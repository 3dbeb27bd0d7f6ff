#pragma once

#include "deck/DeckWorld.h"
#include "deck/edit/GridCommands.h"
#include "deck/edit/LoopCommands.h"
#include "deck/load/DeckLoader.h"
#include "deck/play/DeckBlock.h"
#include "deck/play/Transport.h"
#include "tracks/TrackIngest.h"

#include <cmath>
#include <functional>
#include <span>
#include <vector>

/** Four decks without an engine: tracks are put into their memory, blocks are rendered by hand, time stands still
    unless a test moves it. Standalone, at 44.1 kHz. */
struct DeckFixture
{
    static constexpr double rate = 44100.0;

    explicit DeckFixture (const juce::File& decoderLibrary = {})
    {
        RandGeneratorLCG random;
        world.noise.fill (random);
        world.isStandalone = 1;
        world.smoothing5ms = std::exp (-1.0 / (0.005 * rate));
        world.decay100ms = std::exp (-1.0 / (0.1 * rate));
        for (int d = 0; d < deckCount; ++d)
            world.decks[static_cast<size_t> (d)] = std::make_unique<DeckPlayer> (world, d);
        if (decoderLibrary != juce::File())
            loaders = std::make_unique<DeckLoaders> (world, decoderLibrary);
    }

    DeckPlayer& deck (int index = 0) { return *world.decks[static_cast<size_t> (index)]; }

    /** Puts a track into a deck; `value` gives the sample of a frame, -1 to 1, of the left side; the right one is its
        negative, so that swapped or mixed sides show. */
    void putTrack (int frames, const std::function<double (int)>& value, int index = 0,
                   double trackRate = rate)
    {
        std::vector<int16_t> left (static_cast<size_t> (frames)), right (left.size());
        for (int i = 0; i < frames; ++i)
        {
            left[static_cast<size_t> (i)] = static_cast<int16_t> (std::lround (value (i) * 32767.0));
            right[static_cast<size_t> (i)] = static_cast<int16_t> (-left[static_cast<size_t> (i)]);
        }
        deck (index).resetTrack();
        deck (index).track.sampleRate = trackRate;
        TrackIngest ingest (deck (index).trackTarget());
        ingest.append (left.data(), right.data(), frames);
    }

    struct Stereo
    {
        std::vector<float> left, right;
    };

    /** Renders a deck in blocks, time-outs included. */
    Stereo render (int frames, int index = 0, int block = 128)
    {
        Stereo out { std::vector<float> (static_cast<size_t> (frames)),
                     std::vector<float> (static_cast<size_t> (frames)) };
        for (int done = 0; done < frames; done += block)
        {
            const auto piece = std::min (block, frames - done);
            DeckBlock::releaseScratch (deck (index));
            DeckBlock::render (world, deck (index), out.left.data() + done, out.right.data() + done, piece);
            DeckBlock::checkTimeOuts (world, deck (index));
            deck (index).sync.resync = 0;
        }
        return out;
    }

    uint32_t now = 1000;
    juce::CriticalSection callbackLock;
    EngineSettings settings;
    ListenerList listeners;
    Pacing pacing { Pacing::Mode::offline };
    DeckWorld world { callbackLock, settings, listeners, pacing, [this] { return now; } };
    Transport transport { world };
    LoopCommands loops { world };
    GridCommands grids { world };
    std::unique_ptr<DeckLoaders> loaders; ///< with a decoder only
};
