#pragma once

#include <juce_core/juce_core.h>

class SongDatabase;

/** Brings one file into the library, with what its tags tell. The full path is what a song is known by, letter for
    letter. A file that TagLib can't read comes in too, under its name. A file that a deck loads from anywhere comes in by
    this as well. @param path   absolute
    @returns true if a new row was written, so that views show it. Any thread but the audio thread. */
bool importSong (SongDatabase&, const juce::String& path);

/** Counts the start of a file on a deck: if the library has it, it is played now, once more.
    @returns 1 if the library has it, 0 if not, below 0 where that is not known or not stored: see LibraryCode::ofCount() */
int markStarted (SongDatabase&, const juce::String& path);
