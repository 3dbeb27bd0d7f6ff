#pragma once

#include "DeckFixture.h"

inline constexpr double millisecond = 44.1;
inline constexpr int trackFrames = 3'000'000;

/** Deck A plays its stretcher unless it is bypassed; the pitch fader reaches far. */
struct LoopDeck : DeckFixture
{
    explicit LoopDeck (
        const std::function<double (int)>& value = [] (int) { return 0.0; }, double bpm = 120.0)
    {
        world.pitchRange = 1.0;
        deck().makeStretcher (rate);
        putTrack (trackFrames, value);
        deck().marks.bpm = deck().marks.bpmAverage = bpm;
    }

    void setTempo (double tempo) { deck().tempo.pitch = tempo - 0.5; }

    /** A table of beats at the deck's tempo, `phase` frames into the track. */
    void giveTable (int phase = 0)
    {
        auto& marks = deck().beats;
        for (auto at = static_cast<double> (phase); at < trackFrames; at += deck().beatFrames() / 2.0)
            marks.push_back ({ static_cast<int32_t> (std::lround (at)), 120.0 });
        deck().track.numBeats = static_cast<int32_t> (marks.size());
        settings.deckSetup[0].snap = 1;
    }

    /** Plays until the place that is heard has come to `frame`, to a sample. */
    void playTo (double frame, int block = 64)
    {
        while (deck().heardPosition() + 2.0 * block < frame)
            render (block, 0, block);
        while (deck().heardPosition() < frame)
            render (1, 0, 1);
    }

    void playFrom (double frame)
    {
        transport.seekFrames (0, frame);
        transport.playPause (0);
        render (4096);
    }
};

inline auto sine (double frequency, double amplitude = 0.5)
{
    return [=] (int frame)
    { return amplitude * std::sin (frame * frequency * 2.0 * M_PI / DeckFixture::rate); };
}
