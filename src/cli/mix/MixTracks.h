#pragma once

#include "cli/TerminalProgress.h"
#include "tracks/AdecSharedLibrary.h"

#include <juce_core/juce_core.h>

#include <vector>

/** The tracks of a mix and what is known of them. */
namespace MixTracks
{
struct Track
{
    juce::File file;
    juce::File analysis; ///< where it is kept
    double tempo = 0.0;  ///< BPM; 0 if none was found
};

/** The audio files that the arguments name: files, folders with all below them, and the entries of playlists (.m3u).
    What can't be found is reported, left out and counted. */
juce::StringArray find (const juce::StringArray& arguments, int& skipped);

/** Analyses what has no analysis yet. What can't be analysed is reported, left out and counted.
    @param beatmarks   the folder of the analyses
    @returns those until the user broke off */
std::vector<Track> analyse (const juce::StringArray& paths, const juce::File& beatmarks, int tempoRangeIndex,
                            const AdecSharedLibrary&, TerminalProgress&, int& skipped);

/** From slow to fast; tracks without a tempo are last. */
void sortByTempo (std::vector<Track>&);
}
