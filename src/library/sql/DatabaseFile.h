#pragma once

#include "library/sql/SqlConnection.h"

/** What can be asked of and done with a whole database file. Codes are SQLite's. */
namespace DatabaseFile
{
enum class Health
{
    sound,

    /** Not a database, or one whose pages contradict each other. */
    damaged,

    /** Another program holds it, it may not be read, or reading fails: nothing is known. */
    unknown
};

/** Reads the whole file with "PRAGMA quick_check", after taking back what a killed program had begun. */
Health check (const juce::File&);

/** True if another program is at work in the file, as far as can be told from its locks. Only while this program has the
    file not open: looking would let go of its locks. */
bool isLocked (const juce::File&);

/** Copies a database as it stands, with others writing to it; the target is replaced as a whole or not at all. */
int copy (SqlConnection& from, const juce::File& to);
int copy (const juce::File& from, const juce::File& to);
}
