#pragma once

#include "demo/DemoTrack.h"
#include "demo/Drums.h"
#include "demo/Tones.h"

#include <array>
#include <span>

/** Place of a line's strokes in the mix. */
enum class Bus
{
    kick,
    hats,
    hits, ///< snares, claps, percussion
    bass,
    chords,
    lead,
    effects
};

inline constexpr size_t numBuses = 7;

/** A chord for one bar: the root's pitch class (0 = C) and four tones in semitones above it. */
struct Chord
{
    int root;
    std::array<int, 4> tones;
};

/** One instrument's part. It plays in the sections that name its layer; layer 'F' (fill) only in the last bar of
    a section that names it.

    A pattern has 16 characters a bar, one a sixteenth, and repeats:
        .      rest               -      the note before holds on
        X x o  a stroke: accented, normal, ghost; a tonal line strikes the bar's whole chord
        1..9   a tone of the bar's chord, from the root up; 5 is the root an octave above
        a..g   a degree of the scale from the tonic up, A..G an octave above */
struct DrumLine
{
    char layer;
    const DrumPatch& patch;
    Bus bus;
    double gainDb;
    double pan; ///< -1 left to 1 right
    const char* pattern;
};

struct ToneLine
{
    char layer;
    const TonePatch& patch;
    Bus bus;
    double gainDb;
    double pan;
    int lowNote; ///< MIDI note from which on roots, chords and the tonic are placed
    const char* pattern;
};

struct SongSection
{
    DemoSection::Kind kind;
    int bars;
    const char* layers;
    double sweepFromHz,
        sweepOctaves; ///< a low-pass filter over chords and lead that moves through the section
    int riserBars;    ///< noise that rises to the section's end
    bool crash;       ///< on the section's first beat
};

struct Song
{
    DemoTrack track;
    int32_t seed;
    int tonic;                ///< pitch class
    std::array<int, 7> scale; ///< semitones above the tonic
    double swing;             ///< delay of every second sixteenth, as a part of a sixteenth
    double duckDepth;         ///< how far the kick pushes the rest down, 0 to 1
    double duckBeats;         ///< until it is back
    int echoSteps;            ///< sixteenths between the lead's echoes
    double roomSeconds;       ///< reverberation time
    std::span<const Chord> chords;
    std::span<const DrumLine> drums;
    std::span<const ToneLine> tones;
    std::span<const SongSection> sections;
};

/** The table of all songs, one row each. */
std::span<const Song> songs() noexcept;
