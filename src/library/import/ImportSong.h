#pragma once

#include <juce_core/juce_core.h>

class SongDatabase;

/** Brings one file into the library, with what its tags tell. The full path is what a song is known by, letter for
    letter. A file that the tag library can't read comes in too, under its name. A file that a deck loads from anywhere
    comes in by this as well.
    @param path   absolute
    @returns true if a new row was written; false if the path was there, or the database refused. Any thread but the
             audio thread. */
bool importSong (SongDatabase&, const juce::String& path);

/** A deck has started a file: if the library has it, it counts as played now, once more. @returns true if it has */
bool markStarted (SongDatabase&, const juce::String& path);
