#pragma once

#include "deck/state/ReadHead.h"
#include "deck/voice/DeckReader.h"

#include <array>

/** Reads a track away from the deck's own place, where a pattern leads.

    A step of the place that is longer than 2 ms is a jump: the old sound goes on at the deck's speed and fades out along
    FadeCurve while the new one comes in. Several old sounds fade at a time where jumps follow each other closely. A
    shorter step is made up for by a glide. Where the reading stands still its sound is faded out.

    Audio thread. */
class PatternVoice
{
public:
    static constexpr int longestPiece = 64;

    /** The constants of a block. */
    struct Setting
    {
        int fadeFrames = 132; ///< output frames in which the old sound of a jump fades out
        double smoothing5ms = 0.0;
        double floor = 0.0; ///< nothing is read before it
    };

    /** Goes on from where a head has read last, with the old audio that it fades out. */
    PX_AUDIO_THREAD void begin (const ReadHead&) noexcept;

    /** Reads a piece. @param own       the deck's own place of each frame
        @param offsets   from there to what is read; null for none
        @param ownRate   of the deck, in frames of the file per output frame */
    PX_AUDIO_THREAD void read (const ReadSource&, const Setting&, const double* own, const double* offsets,
                               double ownRate, NoiseTable&, float* left, float* right, int frames) noexcept;

    /** Goes on at the deck's speed from where it has read last: the sound that a jump leaves. */
    PX_AUDIO_THREAD void readOn (const ReadSource&, const Setting&, double ownRate, NoiseTable&, float* left,
                                 float* right, int frames) noexcept;

    /** The place that was read last, in frames of the file. */
    double lastPlace() const noexcept { return place; }

    /** From begin() until the deck's own place alone is heard again. */
    bool isSounding() const noexcept { return sounding; }
    PX_AUDIO_THREAD void end() noexcept { sounding = false; }

private:
    static constexpr int mostFading = 8;

    /** A sound that was jumped away from. */
    struct Fading
    {
        double place = 0.0; ///< of its next frame
        double level = 1.0; ///< as it was left
        int left = 0;       ///< output frames until the sound after it has taken its place
        int begin = 0;      ///< frame of the piece from which on it fades
    };

    using Frames = std::array<float, longestPiece>;

    /** The way of a piece's sound through the track. */
    struct Way
    {
        std::array<double, longestPiece> places;
        Frames levels;
        double fastest = 0.0;
    };

    PX_AUDIO_THREAD void trace (Way&, const Setting&, const double* own, const double* offsets,
                                double ownRate, double fileRate, double end, int frames) noexcept;
    PX_AUDIO_THREAD double speedOf (double step, int frame, double ownRate, double fileRate,
                                    int fadeFrames) noexcept;
    PX_AUDIO_THREAD void mixFading (const TrackSamples&, const Setting&, double ownRate, double end,
                                    float* left, float* right, int frames) noexcept;
    PX_AUDIO_THREAD double dullingOf (double speed) noexcept;

    bool sounding = false;
    double place = 0.0, motion = 0.0, lastStep = 0.0;
    double glide = 0.0; ///< what a small step is still to be made up for
    double level = 0.0; ///< of the sound: signed with the deck's direction, near 0 where the reading stands
    double dullingStep = 0.0, dulling = 0.0;  ///< kept while the step holds
    std::array<Fading, mostFading> fading {}; ///< the oldest first
    int fadingCount = 0;
};
