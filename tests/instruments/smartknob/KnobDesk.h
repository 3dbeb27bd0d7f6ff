#pragma once

#include "instruments/smartknob/SmartKnobs.h"
#include "mixer/ChannelParameters.h"
#include "support/OnePole.h"

#include <functional>
#include <memory>
#include <vector>

/** Four channels with their SmartKnobs, without decks that play: the sound is put into a channel by hand. Every deck says
    that it holds a track. At 44.1 kHz and 120 BPM. */
struct KnobDesk
{
    static constexpr double rate = 44100.0, bpm = 120.0;
    static constexpr int block = 256;

    KnobDesk()
    {
        for (int d = 0; d < deckCount; ++d)
        {
            world.decks[static_cast<size_t> (d)] = std::make_unique<DeckPlayer> (world, d);
            world.decks[static_cast<size_t> (d)]->track.loadedFrames = 1000;
            channels[static_cast<size_t> (d)].setSampleRate (rate);
        }
    }

    double get (ChannelParameter id, int deck = 0)
    {
        return ChannelParameters::row (id).get (channels[static_cast<size_t> (deck)]);
    }

    /** As a command does it. */
    void moveByHand (ChannelParameter id, double value, int deck = 0)
    {
        const juce::ScopedLock lock (callbackLock);
        ChannelParameters::row (id).set (channels[static_cast<size_t> (deck)], value);
        knobs.handMoved (deck, id);
    }

    struct Sound
    {
        std::vector<float> left, right;
    };

    /** Sends a sound through deck A's channel. @param beforeBlock   called with the frame of each block's start */
    Sound play (
        Sound sound, const std::function<void (int)>& beforeBlock = [] (int) {})
    {
        auto& channel = channels[0];
        const auto smoothing = OnePole::coefficient (0.005, rate);
        const auto frames = static_cast<int> (sound.left.size());
        for (int done = 0; done < frames; done += block)
        {
            beforeBlock (done);
            const juce::ScopedLock lock (callbackLock);
            knobs.run (0);
            const ChannelPair pair { sound.left.data() + done, sound.right.data() + done,
                                     std::min (block, frames - done) };
            channel.equalise (pair, rate);
            channel.runEffects (pair, bpm);
            settings.crossfader = 0.0; // deck A stands on the left
            channel.applyFader (pair, channel.targetGain (settings, 0), smoothing);
        }
        return sound;
    }

    /** Runs the knobs of all decks, as a block of silence would. */
    void runBlock()
    {
        const juce::ScopedLock lock (callbackLock);
        for (int d = 0; d < deckCount; ++d)
            knobs.run (d);
    }

    juce::CriticalSection callbackLock;
    EngineSettings settings;
    ListenerList listeners;
    Pacing pacing { Pacing::Mode::offline };
    DeckWorld world { callbackLock, settings, listeners, pacing, [] { return 0u; } };
    Channels channels;
    SmartKnobs knobs { world, channels };
};
