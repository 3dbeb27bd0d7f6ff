#pragma once

#include "analysis/files/TrackAnalysis.h"
#include "deck/state/DeckNumbers.h"

#include <juce_core/juce_core.h>

#include <array>
#include <optional>

class CPlatterdex;
class PXAudioSampleBuffer;
struct TrackOverview;

/** The places of a deck that views mark. Frames of the file. */
struct TrackPlaces
{
    struct Loop
    {
        double in = 0.0, out = 0.0;
        bool running = false;
        bool operator== (const Loop&) const = default;
    };

    std::array<double, cueSlotCount> cues {}; ///< emptyCue or less where there is none
    int currentCue = 0;
    std::optional<double> startPoint, loopIn, loopOut;
    std::optional<Loop> loop; ///< the one that runs, else the one that is set

    bool operator== (const TrackPlaces&) const = default;

    bool hasCue (int slot) const noexcept { return cues[static_cast<size_t> (slot)] > emptyCue; }
};

/** The numbers of a deck's grid; its table is read by DeckWatch::readBeats(). */
struct GridNumbers
{
    int32_t beats = 0;           ///< entries of the table
    int32_t downbeatIndex = 0;   ///< in the table
    int32_t downbeatFrame = 0;   ///< of a fixed grid
    bool fixed = false;          ///< equal beats from the downbeat's frame on, without a table
    double bpm = 120.0;          ///< of the track at its own speed
    int32_t framesOfFixed = 0;   ///< that a fixed grid covers so far
    double sampleRate = 44100.0; ///< of the file
    double tableStep = 1.0;      ///< in which the table is read
    int confidence = -1;         ///< 0 to 100; -1 if nobody knows
    bool operator== (const GridNumbers&) const = default;

    /** True if anybody knows how fast the music is. */
    bool isKnown() const noexcept { return beats > 0 || fixed; }

    /** True for found beats that should be listened to before they are trusted. */
    bool isDoubtful() const noexcept
    {
        return beats > 0 && !fixed && confidence >= 0 && confidence < doubtfulBelow;
    }
};

/** The state of a deck that views show, as it stood at one look: a plain value to compare with the one before. */
struct DeckView
{
    // The track
    juce::String title, artist, album, filePath;
    int32_t loadedFrames = 0; ///< decoded so far; 0 without a track
    int32_t trackFrames = 0; ///< that the track has, or is said to have while it loads: at least loadedFrames
    int key = -1;            ///< 0 to 11: C to B major, 12 to 23: C to B minor; -1 if nobody knows
    bool loading = false;
    GridNumbers grid;
    bool canUndo = false, canRedo = false; ///< an edit of cues or grid

    // The transport
    double position = 0.0; ///< that is heard, frames of the file
    bool playing = false, reverse = false, scratching = false;
    TrackPlaces places;

    // Tempo and key
    double tempo = 1.0;      ///< speed factor of the last block
    double beatRatio = 1.0;  ///< see SyncState::beatRatio
    double pitchShare = 0.0; ///< added to the speed by the pitch fader
    double pitchRange = 0.0; ///< from end to end of the fader
    double semitones = 0.0;  ///< of the key's tuning

    // The sound that pictures are drawn from: lives as long as the engine, and grows while a track loads
    const TrackOverview* overview = nullptr;
    const PXAudioSampleBuffer* samples = nullptr;

    bool operator== (const DeckView&) const = default;

    /** The tempo that is heard, in BPM. */
    double bpm() const noexcept { return grid.bpm * tempo; }
};
