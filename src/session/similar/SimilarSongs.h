#pragma once

#include "library/database/SongDatabase.h"
#include "support/language/Translate.h"
#include "support/music/HarmonicFit.h"
#include "tracks/similar/SoundSession.h"

#include <functional>
#include <vector>

/** A song that fits another one, and why. */
struct SimilarSong
{
    int32_t songId = -1;
    juce::String path;
    SoundFacts facts;
    double closeness = 0.0; ///< 0 to 1, of sound
    Fit::TempoRelation tempo;
    juce::String keyRelation; ///< KeyText::relation()

    /** "+2.1 %", "-0.4 % x2": the change of tempo, behind it "x1/2" or "x2" where this song runs at half or double the
        tempo; nothing if a tempo is unknown. */
    juce::String tempoChange() const;

    /** "94 % alike, tempo +2.1 %, a fifth up". */
    juce::String reason() const;
};

namespace SimilarSongs
{
/** The shares of tempo and key in the order; the rest is sound. */
struct Weights
{
    double tempo = 0.0, key = 0.0;
};

/** The name of the preference that says what counts most, and its values. */
inline constexpr const char *preference = "similarBy", *byDefault = "balanced";

struct Priority
{
    const char *value, *text; ///< of the preference; in a menu
    Weights weights;
};

inline constexpr Priority priorities[] { { "sound", N_ ("By Sound"), { 0.0, 0.0 } },
                                         { "balanced", N_ ("By Sound, Tempo and Key"), { 0.25, 0.15 } },
                                         { "mix", N_ ("By Tempo and Key"), { 0.5, 0.35 } } };

/** @returns the weights of a preference's value; of "balanced" for an unknown one */
Weights weightsOf (const juce::String& value);

struct Options
{
    size_t limit = 20;
    Weights weights {};
    std::function<bool (const juce::String& path)>
        isLeftOut {}; ///< asked for each song; without it all may come
};

/** Finds the songs of the library that fit a track, best first. Other copies of the recording are left out: those that
    sound so, and those of the same title and artist.
    @returns none for a track that was not analysed. Any thread that may block */
std::vector<SimilarSong> find (SongDatabase&, SoundSession&, const juce::String& path, const Options&);
}
