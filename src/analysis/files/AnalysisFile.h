#pragma once

#include "analysis/files/TrackAnalysis.h"

#include <juce_core/juce_core.h>

#include <functional>

/** The files that hold analyses, one a track. Any thread but the audio thread, several at once. */
namespace AnalysisFile
{
/** The file that keeps the analysis of a track: under the track's name without extension, "_", its size in bytes and ".xml". So
    a track that is moved keeps its analysis, and one that is renamed or encoded anew loses it.
    @returns the track itself if it does not exist or is a folder: no reader finds an analysis in there, and nothing may
             be written to it */
juce::File forTrack (const juce::File& folder, const juce::File& track);

/** @returns nothing if there is no such file, or it can't be read: the track is then to be analysed */
std::optional<TrackAnalysis> read (const juce::File&);

/** Replaces the file, in one step, and makes its folder. A file that says the same already is left alone.
    @returns false if the file could not be written; nobody needs to be told */
bool write (const juce::File&, const TrackAnalysis&);

/** Changes the file in one step that no other thread or process comes between.
    @param change   is given the file's content, or nothing if there is none; gives the new content, or nothing to leave
                    the file alone. A file that is damaged counts as none and is kept beside the new one, as ".bad".
    @returns false if the file could not be written, or is there and can't be opened: `change` isn't called then */
bool update (const juce::File&,
             const std::function<std::optional<TrackAnalysis> (const std::optional<TrackAnalysis>&)>& change);

/** Writes a new analysis of a track over an older one, of which the hand-made work stays (mergeFresh).
    @param isWritten   false afterwards if the file could not be written
    @returns both as one */
TrackAnalysis writeFresh (const juce::File&, TrackAnalysis fresh, bool& isWritten);
}
