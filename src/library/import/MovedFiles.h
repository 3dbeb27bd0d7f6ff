#pragma once

#include "library/import/ImportProgress.h"

#include <juce_core/juce_core.h>

#include <vector>

class SongDatabase;

/** A song whose file is not where the library has it. */
struct MissingSong
{
    int32_t id = -1;
    juce::String path, title, artist;
    int64_t bytes = 0;
    int seconds = 0;
};

/** Looks for the files of all songs. Any thread but the audio thread. @param missing   replaced
    @returns a code as SongDatabase gives it */
int findMissingSongs (SongDatabase&, ImportProgress&, std::vector<MissingSong>& missing);

/** The outcome of relocateSongs(). */
struct RelocateResult
{
    int missing = 0; ///< songs without their file, before
    int found = 0;   ///< of these, those whose new path is stored

    /** Songs that could be several files, which is left to a hand: "PATH: sentence". */
    juce::StringArray doubtful {};
    bool isCancelled = false;
    int code = 0; ///< of the fault that ended it
};

/** Finds moved and renamed files again below some folders: the file of a missing song has its name and size, else its size
    and tags, else its name and tags. A song keeps its number, so that all lists have it again; a file that another song has is
    never taken. Any thread but the audio thread. */
RelocateResult relocateSongs (SongDatabase&, const juce::StringArray& folders, ImportProgress&);
