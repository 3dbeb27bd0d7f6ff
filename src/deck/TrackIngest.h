#pragma once

#include "analysis/signal/Fft.h"
#include "deck/DeckPlayer.h"

#include <array>
#include <memory>

/** Writes decoded frames into a deck's memory and, on the way, the waveform data that views draw.
    One per job of the deck's loader, on its thread. */
class TrackIngest
{
public:
    /** Goes on where the deck's frames end, which is the start of an entry: a job begins with an emptied deck. */
    explicit TrackIngest (DeckPlayer&);

    /** Appends frames and publishes them to the audio thread. Frames beyond the deck's memory are dropped.
        @returns frames written */
    int append (const int16_t* left, const int16_t* right, int frames);

private:
    /** The three band colours of one entry, smoothed from entry to entry. */
    struct Colours
    {
        uint8_t low = 0, mid = 0, high = 0;
    };

    void accumulate (const int16_t* left, const int16_t* right, int frames);
    void closeLevel();
    void closeEntry();

    DeckPlayer& deck;
    int32_t written;

    // The entry that is being filled
    int entryFrames = 0;
    int greatest = 0, smallest = 0;
    std::array<float, framesPerOverviewEntry> mono;

    // The level runs over 511 frames, so it drifts against the entries.
    int levelFrames = 0;
    int64_t levelSum = 0;

    std::unique_ptr<CFFT> fft;
    std::array<float, framesPerOverviewEntry> spectrum;
    Colours colours;
};
