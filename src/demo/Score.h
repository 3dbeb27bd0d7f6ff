#pragma once

#include "demo/Song.h"
#include "support/RandGeneratorLCG.h"

#include <cstdint>
#include <map>
#include <tuple>
#include <vector>

/** A song's tables worked out into strokes on the time line. */
class Score
{
public:
    struct Stroke
    {
        int64_t frame; ///< of the file
        const Shot* shot;
        Bus bus;
        float left, right; ///< gains
    };

    explicit Score (const Song&);
    Score (const Score&) = delete;
    Score& operator= (const Score&) = delete;

    /** In the order of their frames. */
    std::span<const Stroke> strokes() const noexcept { return all; }

private:
    void playSection (const SongSection&, int firstBar);
    void playBar (const SongSection&, int barInSection, int bar);
    void playDrums (const DrumLine&, int barInSection, int bar);
    void playTones (const ToneLine&, int barInSection, int bar);
    void playEffects (const SongSection&, int firstBar);

    const Shot& drumShot (const DrumLine&);
    const Shot& toneShot (const TonePatch&, int note, int gateFrames);
    void add (int64_t frame, const Shot&, Bus, double gain, double pan);
    int64_t stepFrame (int bar, int step) const noexcept;

    const Song& song;
    RandGeneratorLCG random;
    std::map<std::tuple<const void*, int, int>, Shot> shots; ///< by patch, note or variation, gate
    std::vector<Stroke> all;
};
