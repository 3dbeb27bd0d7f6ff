#pragma once

#include <juce_core/juce_core.h>

class SongDatabase;

enum class SongImport
{
    added,
    known,   ///< the path is in the library
    refused, ///< by the database
    locked   ///< refused, because another program writes to the database
};

/** Brings one file into the library, with what its tags tell. The full path is what a song is known by, letter for
    letter. A file that the tag library can't read comes in too, under its name. A file that a deck loads from anywhere
    comes in by this as well.
    @param path   absolute
    Any thread but the audio thread. */
SongImport tryImportSong (SongDatabase&, const juce::String& path);

/** The same. @returns true if a new row was written, so that views show it */
bool importSong (SongDatabase&, const juce::String& path);

/** A deck has started a file: if the library has it, it counts as played now, once more. @returns true if it has */
bool markStarted (SongDatabase&, const juce::String& path);
