#pragma once

#include "offline/OfflineHost.h"
#include "shared/TemporaryFolder.h"
#include "tracks/TrackIngest.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <memory>
#include <vector>

/** A track of clicks, one on each beat, with a grid that knows them. */
struct ClickTrack
{
    double bpm = 120.0;
    double rate = 44100.0;
    double swing = 0.0; ///< the local tempo swings by this part, over 64 beats
    double seconds = 120.0;
    double firstBeat = 0.3; ///< seconds

    double beatSeconds (double beat) const
    {
        const auto length = 60.0 / bpm;
        const auto turn = 2.0 * M_PI / 64.0;
        return firstBeat + length * (beat + swing / turn * std::sin (turn * beat));
    }
};

/** Decks that play clicks in an engine that renders offline, and the frames at which the clicks come out. */
struct ClickDecks
{
    explicit ClickDecks (bool hasTransport = false, int blockFrames = 512, double engineRate = 44100.0,
                         std::shared_ptr<AutomixSource> automixSource = {})
        : rate (engineRate)
    {
        OfflineHost::Options options;
        options.root = folder;
        options.sampleRate = rate;
        options.hasTransport = hasTransport;
        options.blockFrames = blockFrames;
        options.automixSource = std::move (automixSource);
        host = std::make_unique<OfflineHost> (options);
        host->sink = [this] (const float* const* channels, int frames)
        {
            for (int deck = 0; deck <= sampler; ++deck)
                listen (deck, channels[4 + 2 * deck], frames);
            listened += frames;
            return true;
        };
    }

    DeckPlayer& deck (int index) { return *host->engine().decks.deck (index); }

    void put (int index, const ClickTrack& track)
    {
        auto& player = deck (index);
        const auto frames = static_cast<int> (track.seconds * track.rate);
        std::vector<int16_t> samples (static_cast<size_t> (frames));
        player.resetTrack();
        player.track.sampleRate = track.rate;
        player.beats.clear();
        for (int half = 0;; ++half)
        {
            const auto at = track.beatSeconds (half / 2.0) * track.rate;
            if (at > frames - 1000)
                break;
            player.beats.push_back ({ static_cast<int32_t> (std::lround (at)), track.bpm });
            for (int i = 0; half % 2 == 0 && i < 400; ++i)
            {
                const auto t = i / track.rate * 44100.0;
                samples[static_cast<size_t> (std::lround (at) + i)] =
                    static_cast<int16_t> (26000.0 * std::exp (-t / 80.0) * std::cos (t * 0.4274));
            }
        }
        TrackIngest (player.trackTarget()).append (samples.data(), samples.data(), frames);
        player.track.numBeats = static_cast<int32_t> (player.beats.size());
        player.marks.downbeatPosition = player.beats.front().pos;
        player.marks.bpm = player.marks.bpmAverage = track.bpm;
        player.marks.fixedGrid = track.swing == 0.0;
    }

    void render (double seconds) { host->render (std::llround (seconds * rate)); }

    void syncLock (int index) { host->engine().transport.toggleSync (index, false); }
    void playPause (int index) { host->engine().transport.playPause (index); }

    /** The distance of a deck's clicks from those of the reference, in ms, from a frame on; positive when late.
        Those that have no partner within a quarter of a second are left out. */
    std::vector<double> distances (int of, const std::vector<double>& reference, int64_t from = 0) const
    {
        std::vector<double> found;
        for (const auto click : clicks[static_cast<size_t> (of)])
        {
            if (click < static_cast<double> (from))
                continue;
            const auto next = std::lower_bound (reference.begin(), reference.end(), click);
            auto distance = rate;
            if (next != reference.end())
                distance = click - *next;
            if (next != reference.begin() && click - next[-1] < std::abs (distance))
                distance = click - next[-1];
            if (std::abs (distance) < rate / 4.0)
                found.push_back (distance * 1000.0 / rate);
        }
        return found;
    }

    std::vector<double> distances (int of, int to, int64_t from = 0) const
    {
        return distances (of, clicks[static_cast<size_t> (to)], from);
    }

    static double largest (const std::vector<double>& values)
    {
        double most = 0.0;
        for (const auto value : values)
            most = std::max (most, std::abs (value));
        return most;
    }

    const double rate; ///< of the engine
    TemporaryFolder folder;
    static constexpr int sampler = deckCount;              ///< stands for its bus among the decks
    std::array<std::vector<double>, deckCount + 1> clicks; ///< frames of the run
    std::unique_ptr<OfflineHost> host;

private:
    void listen (int deck, const float* samples, int frames)
    {
        auto& last = lastLoud[static_cast<size_t> (deck)];
        for (int i = 0; i < frames; ++i)
            if (std::abs (samples[i]) > 0.15f)
            {
                if (static_cast<double> (listened + i - last) > 0.09 * rate)
                    clicks[static_cast<size_t> (deck)].push_back (static_cast<double> (listened + i));
                last = listened + i;
            }
    }

    int64_t listened = 0;
    std::array<int64_t, deckCount + 1> lastLoud { -10'000, -10'000, -10'000, -10'000, -10'000 };
};
