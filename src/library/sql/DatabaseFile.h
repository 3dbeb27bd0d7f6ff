#pragma once

#include "library/sql/SqlConnection.h"

/** Checks, copies and moves whole database files. Codes are SQLite's. */
namespace DatabaseFile
{
enum class Health
{
    sound,

    /** No database, or one whose pages contradict each other. */
    damaged,

    /** Another program holds it, it may not be read, or reading fails: nothing is known. */
    unknown
};

/** Reads the whole file with "PRAGMA quick_check", after taking back what a killed program had begun. */
Health check (const juce::File&);

/** True if another connection, of any program, is at work in the file, as far as can be told from its locks; true too if
    the file can't be opened. */
bool isLocked (const juce::File&);

/** The files that SQLite keeps beside a database while it is open, and after a program was killed: those that are there. */
juce::Array<juce::File> sideFilesOf (const juce::File&);

/** Moves a database that nobody has open, with its side files. A file that is missing may still have some.
    @returns false if something could not be moved */
bool move (const juce::File& from, const juce::File& to);

/** Copies a database as it stands, with others writing to it; the target is replaced as a whole or not at all. */
int copy (SqlConnection& from, const juce::File& to);
int copy (const juce::File& from, const juce::File& to);
}
