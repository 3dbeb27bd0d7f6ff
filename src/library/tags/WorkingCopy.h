#pragma once

#include <juce_core/juce_core.h>

#include <filesystem>

/** A copy of a file, of the same kind and beside it, which goes unless it takes the file's place. Any thread but the audio
    thread. */
class WorkingCopy
{
public:
    explicit WorkingCopy (const std::filesystem::path& file);
    ~WorkingCopy();
    WorkingCopy (const WorkingCopy&) = delete;
    WorkingCopy& operator= (const WorkingCopy&) = delete;

    bool isMade() const { return made; }
    juce::String path() const { return juce::String::fromUTF8 (copy.c_str()); }

    /** Puts the copy in the file's place, in one step. Where the file has more names than one, or belongs to somebody whose
        the copy can't be, it overwrites the file's bytes; should that break off, the copy stays.
        @returns false if that failed */
    bool takePlace();

private:
    bool overwriteOriginal();

    const std::filesystem::path original, copy;
    bool made = false;
    bool isKept = false; ///< the only whole one
};
